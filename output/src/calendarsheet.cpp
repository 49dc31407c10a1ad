// The calendar's month grids, drawn once for every surface: the window and
// the PNG through a QPainter, the PDF through PdfBox so that its texts stay
// searchable. One layout serves the drawing and the finding of a day under
// a point.
#include "ranvel/output/calendarsheet.h"

#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "ranvel/data/themes.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/gui/pdfbox.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

const char* const kMonthNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                   "July",    "August",   "September", "October", "November", "December"};
const char* const kWeekHeads[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

QString Q(const std::string& s) { return QString::fromStdString(s); }

// The layout in cells: a month is 7 cells wide, a caption row, a row of
// weekday heads and six weeks; months stand in columns with half a cell
// between them, and the legend follows below.
constexpr double kCaption = 1.0;
constexpr double kHeads = 0.7;
constexpr double kMonthHeight = kCaption + kHeads + 6;
constexpr double kGap = 0.5;
constexpr double kLegend = 1.2;

struct Layout {
    std::vector<DateTime> months;
    int columns = 3;
    double cell = 26;
    double left = 0, top = 0;

    int Rows() const { return static_cast<int>((months.size() + static_cast<std::size_t>(columns) - 1) / columns); }
    QRectF MonthBox(std::size_t i) const
    {
        const int col = static_cast<int>(i) % columns;
        const int row = static_cast<int>(i) / columns;
        return {left + col * (7 + kGap) * cell, top + row * (kMonthHeight + kGap) * cell, 7 * cell,
                kMonthHeight * cell};
    }
    // The cell of a day of the month at index i.
    QRectF DayBox(std::size_t i, int day) const
    {
        const QRectF box = MonthBox(i);
        const int first = months[i].WeekDay() - 1;  // 0 Sunday
        const int slot = first + day - 1;
        return {box.left() + (slot % 7) * cell, box.top() + (kCaption + kHeads + slot / 7) * cell, cell, cell};
    }
    double GridsHeight() const { return Rows() == 0 ? 0 : (Rows() * (kMonthHeight + kGap) - kGap) * cell; }
    double Width() const { return (columns * (7 + kGap) - kGap) * cell; }
    QRectF LegendBox() const { return {left, top + GridsHeight() + kGap * cell, Width(), kLegend * cell}; }
};

int DaysInMonth(const DateTime& first) { return static_cast<int>(DateTime::DiffDays(first, first.AddMonths(1))); }

// What the grids are drawn on.
class Canvas {
public:
    virtual ~Canvas() = default;
    virtual void Fill(const QRectF& r, const QColor& c) = 0;
    virtual void Frame(const QRectF& r, const QColor& c, double width) = 0;
    // Text in a box; size as a share of the cell; align 0 left, 2 centre.
    virtual void Text(const QRectF& r, const QString& text, const QColor& c, double size, bool bold, int align) = 0;
};

class PainterCanvas : public Canvas {
public:
    PainterCanvas(QPainter& p, double cell) : p_(p), cell_(cell) {}
    void Fill(const QRectF& r, const QColor& c) override { p_.fillRect(r, c); }
    void Frame(const QRectF& r, const QColor& c, double width) override
    {
        p_.setPen(QPen(c, width));
        p_.setBrush(Qt::NoBrush);
        const double h = width / 2;
        p_.drawRect(r.adjusted(h, h, -h, -h));
    }
    void Text(const QRectF& r, const QString& text, const QColor& c, double size, bool bold, int align) override
    {
        QFont f("Liberation Sans");
        f.setPixelSize(std::max(6, static_cast<int>(std::lround(size * cell_))));
        f.setBold(bold);
        p_.setFont(f);
        p_.setPen(c);
        p_.drawText(r, (align == 2 ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter, text);
    }

private:
    QPainter& p_;
    double cell_;
};

// PdfBox draws in tenths of a millimetre and sizes its fonts in points.
class PdfCanvas : public Canvas {
public:
    PdfCanvas(PdfBox& pdf, double cell) : pdf_(pdf), cell_(cell) {}
    void Fill(const QRectF& r, const QColor& c) override
    {
        pdf_.FillColor(c);
        pdf_.PenColor(c);
        pdf_.LineWidth(1);
        pdf_.Rectangle(r.left(), r.top(), r.width(), r.height(), true);
    }
    void Frame(const QRectF& r, const QColor& c, double width) override
    {
        pdf_.PenColor(c);
        pdf_.LineWidth(width);
        pdf_.Rectangle(r.left(), r.top(), r.width(), r.height(), false);
    }
    void Text(const QRectF& r, const QString& text, const QColor& c, double size, bool bold, int align) override
    {
        pdf_.FontName("Arial");
        pdf_.FontSize(size * cell_ / 3.528);  // a point is 3.528 tenths of a millimetre
        pdf_.FontBold(bold);
        pdf_.FontColor(c);
        pdf_.TextBox(r.left(), r.top(), r.width(), r.height(), text, align, true);
    }

private:
    PdfBox& pdf_;
    double cell_;
};

QColor Mix(const QColor& a, const QColor& b, double t)
{
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * t, a.greenF() + (b.greenF() - a.greenF()) * t,
                            a.blueF() + (b.blueF() - a.blueF()) * t);
}

double Luminance(const QColor& c) { return 0.299 * c.redF() + 0.587 * c.greenF() + 0.114 * c.blueF(); }

void Draw(Canvas& canvas, const Layout& l, const MuhurthaCalendar& cal, const CalendarColours& colours,
          const CalendarDay* selected, std::size_t firstMonth, std::size_t lastMonth, bool legend)
{
    for (std::size_t i = firstMonth; i < lastMonth; ++i) {
        const DateTime& month = l.months[i];
        const QRectF box = l.MonthBox(i - firstMonth);
        const double c = l.cell;
        canvas.Text({box.left(), box.top(), box.width(), kCaption * c},
                    QString("%1 %2").arg(kMonthNames[month.Month() - 1]).arg(month.Year()), colours.Heading, 0.45,
                    true, 2);
        for (int w = 0; w < 7; ++w)
            canvas.Text({box.left() + w * c, box.top() + kCaption * c, c, kHeads * c}, kWeekHeads[w], colours.Text,
                        0.3, false, 2);
        for (int d = 1, n = DaysInMonth(month); d <= n; ++d) {
            QRectF cellBox = l.DayBox(i - firstMonth, d);
            // DayBox counts from the month in the layout's list.
            const QRectF r = cellBox;
            const DateTime date = DateTime::FromParts(month.Year(), month.Month(), d);
            const CalendarDay* day = cal.DayOf(date);
            const QRectF number(r.left() + 0.08 * c, r.top() + 0.02 * c, r.width() - 0.16 * c, 0.4 * c);
            const QRectF value(r.left(), r.top() + 0.42 * c, r.width(), 0.5 * c);
            if (!day) {
                // Outside the range: greyed.
                canvas.Fill(r, colours.Paper);
                canvas.Text(number, QString::number(d), colours.Outside, 0.3, false, 0);
                continue;
            }
            if (!day->Tested) {
                canvas.Fill(r, colours.Paper);
                canvas.Frame(r, Mix(colours.Paper, colours.Text, 0.25), 1);
                canvas.Text(number, QString::number(d), colours.Text, 0.3, false, 0);
                canvas.Text(value, QString::fromUtf8("\u2013"), colours.Text, 0.34, false, 2);
                continue;
            }
            const QColor fill = colours.Band(day->Band);
            const QColor ink = colours.TextOn(day->Band);
            canvas.Fill(r, fill);
            canvas.Frame(r, colours.Paper, 1);
            canvas.Text(number, QString::number(d), ink, 0.3, false, 0);
            canvas.Text(value, Q(vb::Format(day->Percent, "0")), ink, 0.36, true, 2);
            if (day->EngineBest) {
                // The best Muhurtha of the range: a mark in the corner.
                canvas.Fill({r.right() - 0.3 * c, r.top() + 0.08 * c, 0.22 * c, 0.22 * c}, ink);
            }
            if (selected == day) canvas.Frame(r.adjusted(1, 1, -1, -1), colours.Heading, std::max(2.0, c / 12));
        }
    }
    if (!legend) return;
    const QRectF lb = l.LegendBox();
    const double c = l.cell;
    canvas.Text({lb.left(), lb.top(), 2.4 * c, c}, "Band", colours.Text, 0.32, true, 0);
    for (int b = 10; b <= 100; b += 10) {
        const QRectF sw(lb.left() + (2.4 + (b / 10 - 1) * 0.9) * c, lb.top() + 0.1 * c, 0.85 * c, 0.8 * c);
        canvas.Fill(sw, colours.Band(b));
        canvas.Text(sw, QString::number(b), colours.TextOn(b), 0.3, false, 2);
    }
    const double after = lb.left() + (2.4 + 10 * 0.9 + 0.4) * c;
    canvas.Fill({after, lb.top() + 0.39 * c, 0.22 * c, 0.22 * c}, colours.Text);
    canvas.Text({after + 0.35 * c, lb.top(), std::max(0.0, lb.right() - after - 0.35 * c), c},
                "best Muhurtha; the number is the percent", colours.Text, 0.3, false, 0);
}

Layout LayoutOf(const MuhurthaCalendar& cal, int columns, double cell, double left, double top)
{
    Layout l;
    l.months = CalendarMonths(cal);
    l.columns = std::max(1, columns);
    l.cell = cell;
    l.left = left;
    l.top = top;
    return l;
}

// A work file beside the target, moved over it once complete.
std::string WorkFileFor(const std::string& path)
{
    const std::filesystem::path target(path);
    return (target.parent_path() / ("." + target.filename().string() + ".work")).string();
}

std::string RangeLine(const MuhurthaCalendar& cal)
{
    std::string line = cal.Place.empty() ? std::string() : cal.Place + ": ";
    return line + cal.StartDate.ToDayFirstText() + " to " + cal.EndDate.ToDayFirstText() + ", " +
           vb::Format(cal.TimeStart, "00.00") + " to " + vb::Format(cal.TimeEnd, "00.00");
}

}  // namespace

CalendarColours CalendarColours::FromActive()
{
    const PageColors& page = ActivePageColors();
    CalendarColours c;
    c.Paper = ColorFromSetting(page.TableBackCol);
    c.Text = ColorFromSetting(page.NormTextCol);
    c.Heading = ColorFromSetting(page.HeadingCol);
    // The strongest band takes the headings' colour; where that is too near
    // the paper to make ten steps, the table header's, else the text's.
    c.Strong = c.Heading;
    if (std::fabs(Luminance(c.Strong) - Luminance(c.Paper)) < 0.35) c.Strong = ColorFromSetting(page.TableHeadCol);
    if (std::fabs(Luminance(c.Strong) - Luminance(c.Paper)) < 0.35) c.Strong = c.Text;
    c.Outside = Mix(c.Paper, c.Text, 0.3);
    return c;
}

QColor CalendarColours::Band(int band) const
{
    const double t = 0.12 + 0.78 * std::clamp(band, 10, 100) / 100.0;
    return Mix(Paper, Strong, t);
}

QColor CalendarColours::TextOn(int band) const
{
    const QColor fill = Band(band);
    const QColor dark = Luminance(Text) < Luminance(Paper) ? Text : Paper;
    const QColor light = Luminance(Text) < Luminance(Paper) ? Paper : Text;
    return Luminance(fill) > 0.55 ? dark : light;
}

std::vector<DateTime> CalendarMonths(const MuhurthaCalendar& Calendar)
{
    std::vector<DateTime> out;
    if (Calendar.Days.empty()) return out;
    DateTime m = DateTime::FromParts(Calendar.Days.front().Day.Year(), Calendar.Days.front().Day.Month(), 1);
    const DateTime last = DateTime::FromParts(Calendar.Days.back().Day.Year(), Calendar.Days.back().Day.Month(), 1);
    for (; m <= last; m = m.AddMonths(1)) out.push_back(m);
    return out;
}

QSize CalendarGridsSize(const MuhurthaCalendar& Calendar, int Columns, int Cell)
{
    const Layout l = LayoutOf(Calendar, Columns, Cell, 0, 0);
    const QRectF legend = l.LegendBox();
    return {static_cast<int>(std::ceil(l.Width())), static_cast<int>(std::ceil(legend.bottom()))};
}

void PaintCalendarGrids(QPainter& Painter, const QRect& Area, const MuhurthaCalendar& Calendar,
                        const CalendarColours& Colours, int Columns, int Cell, const CalendarDay* Selected)
{
    const Layout l = LayoutOf(Calendar, Columns, Cell, Area.left(), Area.top());
    Painter.save();
    Painter.setRenderHint(QPainter::Antialiasing, false);
    PainterCanvas canvas(Painter, Cell);
    Draw(canvas, l, Calendar, Colours, Selected, 0, l.months.size(), true);
    Painter.restore();
}

const CalendarDay* CalendarDayAt(const QPoint& Point, const QRect& Area, const MuhurthaCalendar& Calendar, int Columns,
                                 int Cell)
{
    const Layout l = LayoutOf(Calendar, Columns, Cell, Area.left(), Area.top());
    for (std::size_t i = 0; i < l.months.size(); ++i) {
        if (!l.MonthBox(i).contains(Point)) continue;
        for (int d = 1, n = DaysInMonth(l.months[i]); d <= n; ++d)
            if (l.DayBox(i, d).contains(Point))
                return Calendar.DayOf(DateTime::FromParts(l.months[i].Year(), l.months[i].Month(), d));
        return nullptr;
    }
    return nullptr;
}

void SaveCalendarPng(const MuhurthaCalendar& Calendar, const std::string& Path)
{
    constexpr int kColumns = 4, kCell = 40, kMargin = 24, kTitle = 56;
    const QSize grids = CalendarGridsSize(Calendar, kColumns, kCell);
    QImage image(grids.width() + 2 * kMargin, grids.height() + 2 * kMargin + kTitle, QImage::Format_RGB32);
    const CalendarColours colours = CalendarColours::FromActive();
    image.fill(colours.Paper);
    {
        QPainter p(&image);
        QFont f("Liberation Sans");
        f.setPixelSize(20);
        f.setBold(true);
        p.setFont(f);
        p.setPen(colours.Heading);
        p.drawText(QRect(kMargin, kMargin, grids.width(), 28), Qt::AlignLeft | Qt::AlignVCenter,
                   "Muhurtha Calendar: " + Q(Calendar.MuhuName));
        f.setPixelSize(15);
        f.setBold(false);
        p.setFont(f);
        p.setPen(colours.Text);
        p.drawText(QRect(kMargin, kMargin + 28, grids.width(), 22), Qt::AlignLeft | Qt::AlignVCenter,
                   Q(RangeLine(Calendar)));
        PaintCalendarGrids(p, QRect(kMargin, kMargin + kTitle, grids.width(), grids.height()), Calendar, colours,
                           kColumns, kCell, nullptr);
    }
    const std::string work = WorkFileFor(Path);
    std::error_code ec;
    if (!image.save(QString::fromStdString(work), "PNG")) {
        std::filesystem::remove(work, ec);
        throw std::runtime_error("Cannot write '" + Path + "': the picture could not be written there.");
    }
    std::filesystem::rename(work, Path, ec);
    if (ec) {
        std::filesystem::remove(work, ec);
        throw std::runtime_error("Cannot write '" + Path + "': " + ec.message() + ".");
    }
}

void SaveCalendarPdf(const MuhurthaCalendar& Calendar, const std::vector<std::size_t>& Listed, const std::string& Path)
{
    constexpr double kMarginX = 150, kTop = 180, kBottom = 2794 - 180;
    const double width = PdfBox::kPageWidth - 2 * kMarginX;
    const CalendarColours colours = CalendarColours::FromActive();
    PdfBox pdf;
    pdf.FileName(Path);
    pdf.WorkName(PdfBox::WorkNameFor(Path));
    pdf.Author("Ranvel");
    pdf.Title("Muhurtha Calendar: " + Calendar.MuhuName);
    pdf.Keywords("Muhurtha, calendar, " + Calendar.MuhuName);
    try {
        pdf.BeginDoc();
        double y = kTop;
        auto heading = [&](const std::string& text, double size, bool bold, const QColor& c) {
            pdf.FontName("Arial");
            pdf.FontSize(size);
            pdf.FontBold(bold);
            pdf.FontColor(c);
            pdf.TextBox(kMarginX, y, width, pdf.LineHeight() * 1.2, Q(text), 0);
            y += pdf.LineHeight() * 1.3;
        };
        heading("Muhurtha Calendar: " + Calendar.MuhuName, 16, true, colours.Heading);
        heading(RangeLine(Calendar), 10, false, colours.Text);
        y += 40;

        // The grids, three months a row, as many rows a page as fit.
        const double cell = width / (3 * (7 + kGap) - kGap);
        Layout all = LayoutOf(Calendar, 3, cell, kMarginX, y);
        const std::size_t months = all.months.size();
        std::size_t first = 0;
        while (first < months) {
            const int rowsFit = std::max(1, static_cast<int>((kBottom - y - (kGap + kLegend) * cell) /
                                                             ((kMonthHeight + kGap) * cell)));
            const std::size_t last = std::min(months, first + static_cast<std::size_t>(rowsFit) * 3);
            Layout page = all;
            page.months.assign(all.months.begin() + static_cast<long>(first), all.months.begin() + static_cast<long>(last));
            page.top = y;
            PdfCanvas canvas(pdf, cell);
            Draw(canvas, page, Calendar, colours, nullptr, 0, page.months.size(), last == months);
            first = last;
            if (first < months) {
                pdf.NewPage();
                y = kTop;
            }
        }

        // The ranked days.
        pdf.NewPage();
        y = kTop;
        heading("The days ranked", 14, true, colours.Heading);
        const double cols[] = {0, 110, 420, 560, 760, 940, 1160, 1330};
        const char* heads[] = {"Rank", "Date", "Day", "Moment", "Score", "Percent", "Band", "Lagna span"};
        auto row = [&](const std::vector<QString>& cells, bool bold) {
            pdf.FontName("Arial");
            pdf.FontSize(9.5);
            pdf.FontBold(bold);
            pdf.FontColor(colours.Text);
            for (std::size_t k = 0; k < cells.size(); ++k) {
                const double right = k + 1 < cells.size() ? cols[k + 1] : width;
                pdf.TextBox(kMarginX + cols[k], y, right - cols[k] - 10, pdf.LineHeight(), cells[k], 0);
            }
            y += pdf.LineHeight() * 1.15;
        };
        row({heads[0], heads[1], heads[2], heads[3], heads[4], heads[5], heads[6], heads[7]}, true);
        pdf.PenColor(colours.Text);
        pdf.LineWidth(3);
        pdf.CurrentX(kMarginX);
        pdf.CurrentY(y);
        pdf.LineTo(kMarginX + width, y);
        y += 15;
        int rank = 0;
        for (std::size_t i : Listed) {
            const CalendarDay& d = Calendar.Days[i];
            pdf.FontSize(8.5);
            auto list = [](const std::vector<CalendarElement>& es) {
                std::string out;
                for (const CalendarElement& e : es) out += (out.empty() ? "" : ", ") + (e.Heading.empty() ? e.Code : e.Heading) +
                                                           " (" + std::to_string(e.Score) + ")";
                return out.empty() ? std::string("none") : out;
            };
            const QString held = "Held: " + Q(list(d.Held));
            const QString defects = "Defects: " + Q(list(d.Defects));
            const double need = pdf.LineHeight() * 5;
            if (y + need > kBottom) {
                pdf.NewPage();
                y = kTop;
                row({heads[0], heads[1], heads[2], heads[3], heads[4], heads[5], heads[6], heads[7]}, true);
            }
            ++rank;
            row({QString::number(rank) + (d.EngineBest ? " *" : ""), Q(d.Day.ToDayFirstText()),
                 kWeekHeads[d.Day.WeekDay() - 1], Q(d.Best.Time), Q(vb::CStr(d.Score)) + " of " + QString::number(d.MaxScore),
                 Q(vb::Format(d.Percent, "0.00")), QString::number(d.Band),
                 Q(d.LagnaStartText) + " to " + Q(d.LagnaEndText)},
                false);
            pdf.FontSize(8.5);
            pdf.FontBold(false);
            for (const QString& line : {held, defects}) {
                const double h = pdf.LineHeight() * (1 + std::floor(pdf.TextWidth(line) / (width - cols[1])));
                pdf.TextBox(kMarginX + cols[1], y, width - cols[1], h, line, 0);
                y += h;
            }
            y += 20;
        }
        if (Listed.empty()) row({"No day reaches the band asked for."}, false);
        pdf.FontSize(8.5);
        pdf.FontBold(false);
        pdf.TextBox(kMarginX, std::min(y + 30, kBottom), width, pdf.LineHeight() * 2,
                    "* the best Muhurtha of the range. Times are the place's clock; the lagna span is the window in "
                    "which the day's best moment's lagna holds.",
                    0);
        pdf.EndDoc();
    } catch (const std::exception& e) {
        pdf.AbortDoc();
        throw std::runtime_error(e.what());
    }
}

}  // namespace ranvel
