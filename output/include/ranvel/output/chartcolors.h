// The chart's colours and line widths from the active set (or any other
// set, for a chart that shows a set before it is saved).
#pragma once

#include "ranvel/data/themes.h"

namespace ranvel {

class Kundali;

// Sets BorderColor, BackColor, LineColor, NumberColor, TextColor,
// LineWidth and BorderWidth, in this order, from the active values.
void ApplyChartColors(Kundali& chart);
void ApplyChartColors(Kundali& chart, const ChartColors& colors);

}  // namespace ranvel
