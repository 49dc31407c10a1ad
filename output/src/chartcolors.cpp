#include "ranvel/output/chartcolors.h"

#include "ranvel/output/Kundali.h"
#include "ranvel/output/controls.h"

namespace ranvel {

void ApplyChartColors(Kundali& chart) { ApplyChartColors(chart, ActiveChartColors()); }

void ApplyChartColors(Kundali& chart, const ChartColors& c)
{
    chart.BorderColor(ColorFromSetting(c.KunBorderColor));
    chart.BackColor(ColorFromSetting(c.KunBackColor));
    chart.LineColor(ColorFromSetting(c.KunLineColor));
    chart.NumberColor(ColorFromSetting(c.KunNumColor));
    chart.TextColor(ColorFromSetting(c.KunTxtColor));
    chart.LineWidth(static_cast<std::int16_t>(c.KunLineWidth));
    chart.BorderWidth(static_cast<std::int16_t>(c.KunBorderWidth));
}

}  // namespace ranvel
