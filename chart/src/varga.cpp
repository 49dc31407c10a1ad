// The divisional tables: for the Lagna and each of the twelve bodies, the
// sign the point holds in seventeen divisions of a sign. The scratch row is
// kept from one point to the next and from one calculation to the next, and
// that shows wherever a rule leaves an entry as it stood.
#include <cmath>
#include <initializer_list>

#include "ranvel/chart/planets.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {
std::int16_t Wrapped(double v) { return static_cast<std::int16_t>(vb::CInt(Hour12(v))); }
std::int16_t Plain(double v) { return static_cast<std::int16_t>(vb::CInt(v)); }
bool OneOf(double x, std::initializer_list<int> set)
{
    for (int v : set)
        if (x == v) return true;
    return false;
}
}  // namespace

void clsPlanets::VargaRowOf(double L)
{
    auto& row = vargaRow_;
    const double base = vb::Int(L / 30.0);
    const double s = base + 1;
    const double d = Norm30(L);
    const double f = FractionOf(L / 30.0);
    const bool baseEven = std::fmod(base, 2.0) == 0;
    const bool sOdd = std::fmod(s, 2.0) != 0;

    row[1] = Plain(s);
    row[2] = sOdd ? (d <= 15 ? 5 : 4) : (d <= 15 ? 4 : 5);
    // On a new chart this fills the row with 12; afterwards it finds nothing.
    for (std::size_t i = 1; i <= 16; ++i)
        if (row[i] == 0) row[i] = 12;

    if (d <= 10) row[3] = Plain(s);
    else if (d <= 20) row[3] = Wrapped(s + 4);
    else row[3] = Wrapped(s + 8);

    // At the quarter bounds themselves the entry keeps its last value.
    if (d > 0 && d < 7.5) row[4] = Wrapped(s);
    else if (d > 7.5 && d < 15) row[4] = Wrapped(s + 3);
    else if (d > 15 && d < 22.5) row[4] = Wrapped(s + 6);
    else if (d > 22.5 && d < 30) row[4] = Wrapped(s + 9);

    row[5] = Wrapped(vb::Int(7 * L / 30 + 1));
    row[6] = Wrapped(vb::Int(9 * L / 30 + 1));
    row[7] = Wrapped(vb::Int(f * 10) + base + (baseEven ? 1 : 9));
    row[8] = Wrapped(vb::Int(f * 12) + base + 1);
    row[9] = Wrapped(vb::Int(16 * L / 30 + 1));

    double add10 = OneOf(s, {1, 4, 7, 10}) ? 1 : OneOf(s, {2, 5, 8, 11}) ? 9 : OneOf(s, {3, 6, 9, 12}) ? 5 : 0;
    row[10] = Wrapped(vb::Int(d / 1.5) + add10);
    row[11] = Wrapped(vb::Int(d / 1.25) + (baseEven ? 5 : 4));
    double add12 = OneOf(base, {0, 4, 8}) ? 1 : OneOf(base, {1, 5, 9}) ? 4 : OneOf(base, {2, 6, 10}) ? 7
                 : OneOf(base, {3, 7, 11}) ? 10 : 0;
    row[12] = Wrapped(vb::Int(d / (30.0 / 27.0)) + add12);

    if (baseEven) {
        if (d <= 5) row[13] = 1;
        else if (d <= 10) row[13] = 11;
        else if (d <= 18) row[13] = 9;
        else if (d <= 25) row[13] = 3;
        else if (d <= 30) row[13] = 7;
    } else {
        if (d <= 5) row[13] = 2;
        else if (d <= 12) row[13] = 6;
        else if (d <= 20) row[13] = 12;
        else if (d <= 25) row[13] = 10;
        else if (d <= 30) row[13] = 8;
    }

    row[14] = Wrapped(vb::Int(d / (30.0 / 40.0)) + (baseEven ? 1 : 7));
    double add15 = OneOf(base, {0, 3, 6, 9}) ? 1 : OneOf(base, {1, 4, 7, 10}) ? 5 : OneOf(base, {2, 5, 8, 11}) ? 9 : 0;
    row[15] = Wrapped(vb::Int(d / (30.0 / 45.0)) + add15);
    row[16] = Wrapped(s + vb::Int(2 * ModReal(d, 6)));
    double n = vb::Int(d / (30.0 / 11.0)) + 1;
    if (n >= 1 && n <= 11) row[17] = Wrapped(s - n);
}

void clsPlanets::FillVargaTable()
{
    EnsureBodies();
    if (!skipped_.empty() && !ReplayRows()) {
        // Calculations whose bodies were never read came between, and the
        // row they would have left is not at hand. It matters only where a
        // rule keeps an entry as it stood: fill once from the row as it
        // is and once from a row of nothing any rule writes; where both
        // agree the history made no difference.
        FillRows();
        const auto table = vargaTable_;
        const auto row = vargaRow_;
        vargaRow_.fill(99);
        FillRows();
        if (vargaTable_ == table) {
            if (vargaRow_ == row) skipped_.clear();
            else skipped_.push_back(pending_);  // the row still owes its past
            vargaRow_ = row;
            return;
        }
    }
    // It did (or it is asked to): the skipped rows are worked out in their
    // order first.
    if (!skipped_.empty()) ReplaySkippedRows();
    FillRows();
}

void clsPlanets::FillRows()
{
    VargaRowOf(BhavMid(0));
    for (std::size_t v = 1; v <= 17; ++v) vargaTable_[0][v] = vargaRow_[v];
    for (int p = 1; p <= 12; ++p) {
        VargaRowOf(lysPlnt_[static_cast<std::size_t>(p)]);
        for (std::size_t v = 1; v <= 17; ++v) vargaTable_[static_cast<std::size_t>(p)][v] = vargaRow_[v];
    }
}

int clsPlanets::PrediVarga(int p, int v) const
{
    CheckIndex(p, 0, 13);
    CheckIndex(v, 0, 17);
    EnsureBodies();
    return vargaTable_[static_cast<std::size_t>(p)][static_cast<std::size_t>(v)];
}

}  // namespace ranvel
