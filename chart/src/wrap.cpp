#include "ranvel/chart/wrap.h"

#include <cmath>

#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {
// Above the bound: subtract until at or below it. Below the floor (or at it
// when lift is set): add until above 0.
double Wrap(double x, double bound, bool liftZero)
{
    if (!std::isfinite(x)) return x;
    if (x > bound) {
        while (x > bound) {
            double next = x - bound;
            if (next == x) break;  // too large to move by one bound
            x = next;
        }
    } else if (x < 0 || (liftZero && x == 0)) {
        do {
            double next = x + bound;
            if (next == x) break;
            x = next;
        } while (x <= 0);
    }
    return x;
}
}  // namespace

double Norm360(double x) { return Wrap(x, 360.0, false); }
double Norm30(double x) { return Wrap(x, 30.0, false); }
double Norm27(double x) { return Wrap(x, 27.0, false); }
double Norm24(double x) { return Wrap(x, 24.0, false); }
double Norm7(double x) { return Wrap(x, 7.0, false); }
double Norm9(double x) { return Wrap(x, 9.0, true); }

double Hour12(double x)
{
    double r = Wrap(x, 12.0, false);
    return r == 0 ? 12.0 : r;
}

double FractionOf(double x) { return x - vb::Fix(x); }

double ModReal(double a, double b)
{
    if (!(b > 0)) return a;
    return Wrap(a, b, true);
}

std::string TwoDigits(double n)
{
    std::string s = vb::CStr(n);
    return n < 10 ? "0" + s : s;
}

}  // namespace ranvel
