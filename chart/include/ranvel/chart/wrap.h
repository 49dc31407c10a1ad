// The wrapping functions of the chart core. They wrap by repeated addition
// and subtraction, not by a modulus, and a value equal to the upper bound
// stays as it is: every computation that wraps goes through these.
#pragma once

#include <string>

namespace ranvel {

double Norm360(double x);
double Norm30(double x);
double Norm27(double x);
double Norm24(double x);
double Norm7(double x);
// As the others, but 0 is also lifted: the result lies above 0 and up to 9.
double Norm9(double x);
// A 24-hour hour on a 12-hour clock: wrapped by 12, and 0 becomes 12.
double Hour12(double x);
// x minus x cut towards zero.
double FractionOf(double x);
// Into the range above 0 and up to b: a multiple of b, 0 included, gives b.
double ModReal(double a, double b);
// n as text, with a leading zero below 10.
std::string TwoDigits(double n);

}  // namespace ranvel
