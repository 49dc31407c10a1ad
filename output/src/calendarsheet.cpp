// The calendar's month grids, drawn once for every surface: the window and
// the PNG through a QPainter, the PDF through PdfBox so that its texts stay
// searchable. One layout serves the drawing, the size and the finding of a
// day under a point, so the three can never disagree.
#include "ranvel/output/calendarsheet.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <stdexcept>

#include "ranvel/data/themes.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/gui/pdfbox.h"
#include "ranvel/platform/vbmath.h"
#include "ranvel/platform/wholefile.h"

namespace ranvel {

namespace {

const char* const kMonthNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                   "July",    "August",   "September", "October", "November", "December"};
const char* const kWeekHeads[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

QString Q(const std::string& s) { return QString::fromStdString(s); }

QString MonthCaption(const DateTime& month)
{
    return QString("%1 %2").arg(kMonthNames[month.Month() - 1]).arg(month.Year());
}

int DaysInMonth(const DateTime& first) { return static_cast<int>(DateTime::DiffDays(first, first.AddMonths(1))); }

// ---- colours ----

// Colours are kept in whole 8-bit steps, as they are painted, so that a
// colour read back from a picture is the colour asked for.
QColor Mix(const QColor& a, const QColor& b, double t)
{
    auto mix = [t](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * t)); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

// The relative luminance of the screen's sRGB, and the contrast of two
// colours by it: 1 for the same, 21 for black on white.
double Luminance(const QColor& c)
{
    auto lin = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * lin(c.redF()) + 0.7152 * lin(c.greenF()) + 0.0722 * lin(c.blueF());
}

double Contrast(const QColor& a, const QColor& b)
{
    const double la = Luminance(a), lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor BlackOrWhiteOn(const QColor& fill)
{
    return Contrast(fill, Qt::black) >= Contrast(fill, Qt::white) ? QColor(Qt::black) : QColor(Qt::white);
}

// A page colour kept where it reads on the paper, else black or white.
QColor Readable(long setting, const QColor& paper)
{
    const QColor c = ColorFromSetting(setting);
    return Contrast(c, paper) >= 3 ? c : BlackOrWhiteOn(paper);
}

// A colour that can carry ten steps from the paper: a real hue (black and
// greys would make the bands a grey ramp like the greyed days) that stands
// well off the paper.
bool CanBeStrong(const QColor& c, const QColor& paper)
{
    const double chroma = std::max({c.redF(), c.greenF(), c.blueF()}) - std::min({c.redF(), c.greenF(), c.blueF()});
    return chroma >= 0.15 && Contrast(c, paper) >= 3;
}

CalendarColours ColoursOf(const PageColors& page, std::optional<QColor> paper)
{
    CalendarColours c;
    c.Paper = paper ? *paper : ColorFromSetting(page.TableBackCol);
    const bool darkPaper = Luminance(c.Paper) < 0.18;
    c.Text = Readable(page.NormTextCol, c.Paper);
    c.Heading = Readable(page.HeadingCol, c.Paper);
    c.Strong = darkPaper ? QColor(255, 196, 64) : QColor(24, 82, 140);
    for (long setting : {page.HeadingCol, page.TableHeadCol, page.SubHeadCol})
        if (CanBeStrong(ColorFromSetting(setting), c.Paper)) {
            c.Strong = ColorFromSetting(setting);
            break;
        }
    // Greyed: a neutral grey a step off the paper, whatever the paper's
    // hue, and nearer the paper than the lightest band.
    c.Outside = Mix(c.Paper, QColor(128, 128, 128), 0.12);
    // The selected day's frame: the strong colour's opposite hue, so that
    // it stands off every band.
    const int hue = c.Strong.hsvHue() < 0 ? 210 : c.Strong.hsvHue();
    const QColor accent = QColor::fromHsv((hue + 180) % 360, 230, darkPaper ? 255 : 204);
    c.Accent = QColor(accent.red(), accent.green(), accent.blue());
    return c;
}

// ---- layout ----

// A key of the legend: its sample and its words.
enum class Key { Bands, Best, Outside, Untested };

struct LegendPlace {
    Key key;
    QRectF box;
};

// The layout in units of the surface (pixels, or tenths of a millimetre on
// the PDF's page). A month is seven cells wide: its caption, a row of
// weekday heads and always six weeks, so that the months of a row line up.
// The legend follows below the grids, its keys flowing onto as many lines
// as the width needs.
struct Layout {
    std::vector<DateTime> months;
    int columns = 1;
    double cell = 30, caption = 33, heads = 21, gap = 18;
    double left = 0, top = 0;
    double width = 0, gridsHeight = 0;
    bool legend = true;
    std::vector<LegendPlace> keys;
    double legendTop = 0, legendHeight = 0;

    double MonthHeight() const { return caption + heads + 6 * cell; }
    QRectF MonthBox(std::size_t i) const
    {
        const double col = static_cast<double>(i % static_cast<std::size_t>(columns));
        const double row = static_cast<double>(i / static_cast<std::size_t>(columns));
        return {left + col * (7 * cell + gap), top + row * (MonthHeight() + gap), 7 * cell, MonthHeight()};
    }
    // The cell of a day of the month at index i.
    QRectF DayBox(std::size_t i, int day) const
    {
        const QRectF box = MonthBox(i);
        const int slot = months[i].WeekDay() - 1 + day - 1;  // WeekDay 1 is Sunday
        return {box.left() + (slot % 7) * cell, box.top() + caption + heads + (slot / 7) * cell, cell, cell};
    }
    double Height() const { return (legend ? legendTop + legendHeight : gridsHeight) - top; }
};

// The width of the legend's words, judged before any font is at hand:
// generous for the font the keys are written in (0.3 of a cell, on a
// screen never below 6 pixels).
double KeyTextWidth(const char* text, double cell, bool screen)
{
    const double perChar = screen ? std::max(0.18 * cell, 3.8) : 0.18 * cell;
    return static_cast<double>(std::strlen(text)) * perChar;
}

const char* KeyText(Key key)
{
    switch (key) {
    case Key::Best: return "best Muhurtha of the range";
    case Key::Outside: return "outside the range";
    case Key::Untested: return "no moment tested";
    case Key::Bands: break;
    }
    return "";
}

constexpr double kBandLabel = 1.6;  // cells before the band swatches
constexpr double kSwatch = 0.9;

// The legend is at least MinWidth wide; the grids' sizes are whole units
// on a screen, so that every cell is whole pixels.
Layout MakeLayout(std::vector<DateTime> months, int columns, double cell, double left, double top, bool legend,
                  bool screen, double minWidth = 0)
{
    Layout l;
    l.months = std::move(months);
    l.columns = std::clamp(columns, 1, std::max<int>(1, static_cast<int>(l.months.size())));
    l.cell = cell;
    auto unit = [&](double v) { return screen ? std::round(v) : v; };
    l.caption = unit(1.1 * cell);
    l.heads = unit(0.7 * cell);
    l.gap = unit(0.6 * cell);
    l.left = left;
    l.top = top;
    l.legend = legend;
    const auto n = l.months.size();
    const double rows = static_cast<double>((n + static_cast<std::size_t>(l.columns) - 1) / l.columns);
    const double gridsWidth = l.columns * 7 * cell + (l.columns - 1) * l.gap;
    l.gridsHeight = n == 0 ? 0 : rows * l.MonthHeight() + (rows - 1) * l.gap;
    const double bandsWidth = (kBandLabel + 10 * kSwatch) * cell;
    l.width = std::max({gridsWidth, bandsWidth, minWidth});
    if (!legend) return l;

    // The keys flow onto lines of a cell's height.
    l.legendTop = top + l.gridsHeight + (n == 0 ? 0 : l.gap);
    const double space = 0.6 * cell;
    double x = 0;
    int line = 0;
    for (Key key : {Key::Bands, Key::Best, Key::Outside, Key::Untested}) {
        const double w = key == Key::Bands ? bandsWidth : 1.0 * cell + KeyTextWidth(KeyText(key), cell, screen);
        if (x > 0 && x + w > l.width) {
            ++line;
            x = 0;
        }
        l.keys.push_back({key, QRectF(left + x, l.legendTop + line * cell, w, cell)});
        x += w + space;
    }
    l.legendHeight = (line + 1) * cell;
    return l;
}

// ---- surfaces ----

// What the grids are drawn on, in the layout's units.
class Canvas {
public:
    virtual ~Canvas() = default;
    virtual void Fill(const QRectF& r, const QColor& c) = 0;
    // A frame of the given width lying inside r.
    virtual void Frame(const QRectF& r, const QColor& c, double width) = 0;
    // Text in a box, its size a share of the cell; align 0 left, 2 centre.
    virtual void Text(const QRectF& r, const QString& text, const QColor& c, double size, bool bold, int align) = 0;
    virtual double TextWidth(const QString& text, double size, bool bold) = 0;
    // Whether text of that size can still be read on this surface.
    virtual bool Legible(double size) const = 0;
    // The width of a hairline.
    virtual double Hair() const = 0;
};

class PainterCanvas : public Canvas {
public:
    PainterCanvas(QPainter& p, double cell) : p_(p), cell_(cell) {}
    void Fill(const QRectF& r, const QColor& c) override { p_.fillRect(r, c); }
    void Frame(const QRectF& r, const QColor& c, double width) override
    {
        // Filled strips: exact pixels, whatever the pen would round to.
        p_.fillRect(QRectF(r.left(), r.top(), r.width(), width), c);
        p_.fillRect(QRectF(r.left(), r.bottom() - width, r.width(), width), c);
        p_.fillRect(QRectF(r.left(), r.top(), width, r.height()), c);
        p_.fillRect(QRectF(r.right() - width, r.top(), width, r.height()), c);
    }
    void Text(const QRectF& r, const QString& text, const QColor& c, double size, bool bold, int align) override
    {
        p_.setFont(FontOf(size, bold));
        p_.setPen(c);
        p_.drawText(r, (align == 2 ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter, text);
    }
    double TextWidth(const QString& text, double size, bool bold) override
    {
        return QFontMetricsF(FontOf(size, bold)).horizontalAdvance(text);
    }
    bool Legible(double size) const override { return size * cell_ >= 10; }
    double Hair() const override { return 1; }

private:
    QFont FontOf(double size, bool bold) const
    {
        QFont f("Liberation Sans");
        f.setPixelSize(std::max(6, static_cast<int>(std::lround(size * cell_))));
        f.setBold(bold);
        return f;
    }
    QPainter& p_;
    double cell_;
};

// PdfBox draws in tenths of a millimetre and sizes its fonts in points.
constexpr double kTenthsPerPoint = 3.528;

class PdfCanvas : public Canvas {
public:
    PdfCanvas(PdfBox& pdf, double cell) : pdf_(pdf), cell_(cell) {}
    void Fill(const QRectF& r, const QColor& c) override
    {
        // The box's outline lies inside it, so that nothing is drawn
        // beyond the cell.
        pdf_.FillColor(c);
        pdf_.PenColor(c);
        pdf_.LineWidth(1);
        pdf_.Rectangle(r.left() + 0.5, r.top() + 0.5, r.width() - 1, r.height() - 1, true);
    }
    void Frame(const QRectF& r, const QColor& c, double width) override
    {
        pdf_.PenColor(c);
        pdf_.LineWidth(width);
        const double h = width / 2;
        pdf_.Rectangle(r.left() + h, r.top() + h, r.width() - width, r.height() - width, false);
    }
    void Text(const QRectF& r, const QString& text, const QColor& c, double size, bool bold, int align) override
    {
        Font(size, bold);
        pdf_.FontColor(c);
        pdf_.TextBox(r.left(), r.top(), r.width(), r.height(), text, align, true);
    }
    double TextWidth(const QString& text, double size, bool bold) override
    {
        Font(size, bold);
        return pdf_.TextWidth(text);
    }
    bool Legible(double size) const override { return size * cell_ / kTenthsPerPoint >= 6; }
    double Hair() const override { return 3; }

private:
    void Font(double size, bool bold)
    {
        pdf_.FontName("Arial");
        pdf_.FontSize(size * cell_ / kTenthsPerPoint);
        pdf_.FontBold(bold);
    }
    PdfBox& pdf_;
    double cell_;
};

// ---- drawing ----

// The size of the percents in the cells: with their hundredths where a
// common percent can be read in a cell at that size, else 0, the percents
// then written whole in a larger size. One size for all cells, so that
// the grids read evenly.
constexpr double kWholePercent = 0.38;

double FinePercentSize(Canvas& canvas, double cell)
{
    for (double size : {0.3, 0.27})
        if (canvas.Legible(size) && canvas.TextWidth("88.88", size, true) <= 0.82 * cell) return size;
    return 0;
}

void DrawPercent(Canvas& canvas, const QRectF& box, double percent, const QColor& ink, double fineSize)
{
    if (fineSize > 0) {
        // A percent too wide with its hundredths (100.00) is written whole.
        const QString fine = Q(vb::Format(percent, "0.00"));
        const bool fits = canvas.TextWidth(fine, fineSize, true) <= box.width();
        canvas.Text(box, fits ? fine : Q(vb::Format(percent, "0")), ink, fineSize, true, 2);
    } else {
        canvas.Text(box, Q(vb::Format(percent, "0")), ink, kWholePercent, true, 2);
    }
}

// The best day's mark: a bold frame in the text's colour with a line of
// paper inside it, which stands out on light and dark fills alike.
double BestFrameWidth(const Canvas& canvas, double cell) { return std::max(2 * canvas.Hair(), std::round(cell / 10)); }

void DrawBestFrame(Canvas& canvas, const QRectF& r, const CalendarColours& colours, double cell)
{
    const double w = BestFrameWidth(canvas, cell);
    canvas.Frame(r, colours.Text, w);
    canvas.Frame(r.adjusted(w, w, -w, -w), colours.Paper, canvas.Hair());
}

void DrawDay(Canvas& canvas, const QRectF& r, int dayOfMonth, const CalendarDay* day,
             const CalendarColours& colours, double c, double fineSize, bool selected)
{
    const double hair = canvas.Hair();
    // The day's number clear of the best day's frame.
    const QRectF number(r.left() + 0.17 * c, r.top() + 0.07 * c, r.width() - 0.34 * c, 0.36 * c);
    const QRectF value(r.left() + 0.06 * c, r.top() + 0.42 * c, r.width() - 0.12 * c, 0.5 * c);
    const QString n = QString::number(dayOfMonth);
    // A filled cell is filled inside its line of paper, so that no edge of
    // the fill shows beside the line where the surface smooths edges.
    const QRectF inner = r.adjusted(hair, hair, -hair, -hair);
    if (!day) {
        canvas.Fill(inner, colours.Outside);
        canvas.Frame(r, colours.Paper, hair);
        canvas.Text(number, n, Mix(colours.Outside, colours.Text, 0.45), 0.3, false, 0);
    } else if (!day->Tested) {
        canvas.Fill(r, colours.Paper);
        canvas.Frame(r, Mix(colours.Paper, colours.Text, 0.3), hair);
        canvas.Text(number, n, colours.Text, 0.3, false, 0);
        canvas.Text(value, QString::fromUtf8("\u2013"), colours.Text, 0.34, false, 2);
    } else {
        const QColor ink = colours.TextOn(day->Band);
        canvas.Fill(inner, colours.Band(day->Band));
        canvas.Frame(r, colours.Paper, hair);
        canvas.Text(number, n, ink, 0.3, false, 0);
        DrawPercent(canvas, value, day->Percent, ink, fineSize);
        if (day->EngineBest) DrawBestFrame(canvas, r, colours, c);
    }
    if (selected) {
        const double inset = day && day->Tested && day->EngineBest ? BestFrameWidth(canvas, c) + hair : 0;
        canvas.Frame(r.adjusted(inset, inset, -inset, -inset), colours.Accent,
                     std::max(2 * hair, std::round(c / 12)));
    }
}

void DrawLegend(Canvas& canvas, const Layout& l, const CalendarColours& colours)
{
    const double c = l.cell;
    for (const LegendPlace& k : l.keys) {
        const QRectF& b = k.box;
        if (k.key == Key::Bands) {
            canvas.Text({b.left(), b.top(), kBandLabel * c, c}, "Band", colours.Text, 0.32, true, 0);
            for (int band = 10; band <= 100; band += 10) {
                const QRectF sw(b.left() + (kBandLabel + (band / 10 - 1) * kSwatch) * c, b.top() + 0.1 * c,
                                kSwatch * c, 0.8 * c);
                const double hair = canvas.Hair();
                canvas.Fill(sw.adjusted(hair, hair, -hair, -hair), colours.Band(band));
                canvas.Frame(sw, colours.Paper, hair);
                canvas.Text(sw, QString::number(band), colours.TextOn(band), 0.28, false, 2);
            }
            continue;
        }
        const QRectF sample(b.left(), b.top() + 0.1 * c, 0.8 * c, 0.8 * c);
        switch (k.key) {
        case Key::Best:
            canvas.Fill(sample, colours.Band(100));
            DrawBestFrame(canvas, sample, colours, c);
            break;
        case Key::Outside:
            // Outlined: the fill is close to the paper's, which the legend
            // stands on.
            canvas.Fill(sample, colours.Outside);
            canvas.Frame(sample, Mix(colours.Paper, colours.Text, 0.3), canvas.Hair());
            break;
        case Key::Untested:
            canvas.Fill(sample, colours.Paper);
            canvas.Frame(sample, Mix(colours.Paper, colours.Text, 0.3), canvas.Hair());
            canvas.Text(sample, QString::fromUtf8("\u2013"), colours.Text, 0.34, false, 2);
            break;
        case Key::Bands: break;
        }
        canvas.Text({b.left() + 1.0 * c, b.top(), b.width() - 1.0 * c, c}, KeyText(k.key), colours.Text, 0.3, false, 0);
    }
}

void Draw(Canvas& canvas, const Layout& l, const MuhurthaCalendar& cal, const CalendarColours& colours,
          const CalendarDay* selected)
{
    const double c = l.cell;
    const double fineSize = FinePercentSize(canvas, c);
    for (std::size_t i = 0; i < l.months.size(); ++i) {
        const DateTime& month = l.months[i];
        const QRectF box = l.MonthBox(i);
        canvas.Text({box.left(), box.top(), box.width(), l.caption}, MonthCaption(month), colours.Heading, 0.42, true,
                    2);
        for (int w = 0; w < 7; ++w)
            canvas.Text({box.left() + w * c, box.top() + l.caption, c, l.heads}, kWeekHeads[w], colours.Text, 0.3,
                        false, 2);
        for (int d = 1, n = DaysInMonth(month); d <= n; ++d) {
            const CalendarDay* day = cal.DayOf(DateTime::FromParts(month.Year(), month.Month(), d));
            DrawDay(canvas, l.DayBox(i, d), d, day, colours, c, fineSize, day && day == selected);
        }
    }
    if (l.legend) DrawLegend(canvas, l, colours);
}

Layout ScreenLayout(const MuhurthaCalendar& cal, int columns, int cell, const QRect& area)
{
    return MakeLayout(CalendarMonths(cal), columns, std::max(1, cell), area.left(), area.top(), true, true);
}

std::string RangeText(const MuhurthaCalendar& cal)
{
    return cal.StartDate.ToDayFirstText() + " to " + cal.EndDate.ToDayFirstText();
}

std::string WindowText(const MuhurthaCalendar& cal)
{
    return vb::Format(cal.TimeStart, "00.00") + " to " + vb::Format(cal.TimeEnd, "00.00");
}

std::string TitleText(const MuhurthaCalendar& cal) { return "Muhurtha Calendar: " + cal.MuhuName; }

}  // namespace

// ---- colours ----

CalendarColours CalendarColours::FromActive() { return ColoursOf(ActivePageColors(), std::nullopt); }

CalendarColours CalendarColours::ForPrint() { return ColoursOf(ActivePageColors(), QColor(Qt::white)); }

QColor CalendarColours::Band(int band) const
{
    // Ten even steps from a tint of the strong colour to the colour itself.
    const double t = 0.2 + 0.8 * (std::clamp(band, 10, 100) - 10) / 90.0;
    return Mix(Paper, Strong, t);
}

QColor CalendarColours::TextOn(int band) const { return BlackOrWhiteOn(Band(band)); }

// ---- the grids ----

std::vector<DateTime> CalendarMonths(const MuhurthaCalendar& Calendar)
{
    std::vector<DateTime> out;
    if (Calendar.Days.empty()) return out;
    const DateTime& first = Calendar.Days.front().Day;
    const DateTime& last = Calendar.Days.back().Day;
    const DateTime end = DateTime::FromParts(last.Year(), last.Month(), 1);
    for (DateTime m = DateTime::FromParts(first.Year(), first.Month(), 1); m <= end; m = m.AddMonths(1))
        out.push_back(m);
    return out;
}

QSize CalendarGridsSize(const MuhurthaCalendar& Calendar, int Columns, int Cell)
{
    const Layout l = ScreenLayout(Calendar, Columns, Cell, QRect());
    return {static_cast<int>(std::ceil(l.width)), static_cast<int>(std::ceil(l.Height()))};
}

void PaintCalendarGrids(QPainter& Painter, const QRect& Area, const MuhurthaCalendar& Calendar,
                        const CalendarColours& Colours, int Columns, int Cell, const CalendarDay* Selected)
{
    const Layout l = ScreenLayout(Calendar, Columns, Cell, Area);
    Painter.save();
    Painter.setRenderHint(QPainter::Antialiasing, false);
    Painter.setRenderHint(QPainter::TextAntialiasing, true);
    PainterCanvas canvas(Painter, l.cell);
    Draw(canvas, l, Calendar, Colours, Selected);
    Painter.restore();
}

const CalendarDay* CalendarDayAt(const QPoint& Point, const QRect& Area, const MuhurthaCalendar& Calendar, int Columns,
                                 int Cell)
{
    const Layout l = ScreenLayout(Calendar, Columns, Cell, Area);
    // A pixel belongs to the cell it is painted by: a cell covers its left
    // and top edges, not its right and bottom ones.
    const QPointF p(Point.x() + 0.5, Point.y() + 0.5);
    for (std::size_t i = 0; i < l.months.size(); ++i) {
        if (!l.MonthBox(i).contains(p)) continue;
        const DateTime& month = l.months[i];
        for (int d = 1, n = DaysInMonth(month); d <= n; ++d)
            if (l.DayBox(i, d).contains(p)) return Calendar.DayOf(DateTime::FromParts(month.Year(), month.Month(), d));
        return nullptr;
    }
    return nullptr;
}

// ---- the picture ----

void SaveCalendarPng(const MuhurthaCalendar& Calendar, const std::string& Path)
{
    constexpr int kColumns = 4, kCell = 40, kMargin = 28;
    const CalendarColours colours = CalendarColours::ForPrint();
    QFont titleFont("Liberation Sans"), lineFont("Liberation Sans");
    titleFont.setPixelSize(22);
    titleFont.setBold(true);
    lineFont.setPixelSize(15);
    const QString title = Q(TitleText(Calendar));
    QString line = Q(RangeText(Calendar) + ", " + WindowText(Calendar) + " each day");
    if (!Calendar.Place.empty()) line = Q(Calendar.Place) + "  \u00b7  " + line;
    const QFontMetrics titleMetrics(titleFont), lineMetrics(lineFont);
    const int titleHeight = titleMetrics.height() + 6 + lineMetrics.height() + 18;

    const QSize grids = CalendarGridsSize(Calendar, kColumns, kCell);
    const int width = std::max({grids.width(), titleMetrics.horizontalAdvance(title),
                                lineMetrics.horizontalAdvance(line)});
    QImage image(width + 2 * kMargin, grids.height() + 2 * kMargin + titleHeight, QImage::Format_RGB32);
    image.fill(colours.Paper);
    {
        QPainter p(&image);
        p.setRenderHint(QPainter::TextAntialiasing, true);
        p.setFont(titleFont);
        p.setPen(colours.Heading);
        p.drawText(QRect(kMargin, kMargin, width, titleMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter, title);
        p.setFont(lineFont);
        p.setPen(colours.Text);
        p.drawText(QRect(kMargin, kMargin + titleMetrics.height() + 6, width, lineMetrics.height()),
                   Qt::AlignLeft | Qt::AlignVCenter, line);
        PaintCalendarGrids(p, QRect(QPoint(kMargin, kMargin + titleHeight), grids), Calendar, colours, kColumns,
                           kCell, nullptr);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        throw std::runtime_error("Cannot write '" + Path + "': the picture could not be encoded.");
    // Through a work file beside the target, moved over it when whole.
    WriteWholeFile(Path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

// ---- the PDF ----

namespace {

// Letter pages in tenths of a millimetre: the margins, and the band at the
// top of the later pages and at the foot of every page.
constexpr double kMarginX = 150, kMarginTop = 140, kFootTop = PdfBox::kPageHeight - 110;
constexpr double kBottom = kFootTop - 40;
constexpr double kPageWidthInside = PdfBox::kPageWidth - 2 * kMarginX;

// The pages of the calendar's document: where the next line goes, and
// each new page with its header and number.
class CalendarPages {
public:
    CalendarPages(PdfBox& pdf, const MuhurthaCalendar& cal, const CalendarColours& colours)
        : pdf_(pdf), cal_(cal), colours_(colours)
    {
    }
    double y = kMarginTop;

    void Font(double points, bool bold, const QColor& colour)
    {
        pdf_.FontName("Arial");
        pdf_.FontSize(points);
        pdf_.FontBold(bold);
        pdf_.FontItalic(false);
        pdf_.FontColor(colour);
    }
    void Foot()
    {
        Font(8, false, colours_.Text);
        pdf_.TextBox(kMarginX, kFootTop, kPageWidthInside, pdf_.LineHeight(), Q(TitleText(cal_)), 0);
        pdf_.TextBox(kMarginX, kFootTop, kPageWidthInside, pdf_.LineHeight(),
                     QString("Page %1").arg(pdf_.PageCount()), 1);
    }
    // A new page, headed by the calendar it belongs to.
    void NewPage()
    {
        Foot();
        pdf_.NewPage();
        Font(8.5, false, colours_.Text);
        std::string head = TitleText(cal_);
        if (!cal_.Place.empty()) head += "  \u00b7  " + cal_.Place;
        head += "  \u00b7  " + RangeText(cal_);
        pdf_.TextBox(kMarginX, kMarginTop, kPageWidthInside, pdf_.LineHeight(), Q(head), 0);
        y = kMarginTop + pdf_.LineHeight() + 10;
        Rule(y, 3);
        y += 40;
    }
    void NeedRoom(double height)
    {
        if (y + height > kBottom) NewPage();
    }
    void Rule(double at, double width)
    {
        pdf_.PenColor(Mix(colours_.Paper, colours_.Text, 0.55));
        pdf_.LineWidth(width);
        pdf_.CurrentX(kMarginX);
        pdf_.CurrentY(at);
        pdf_.LineTo(kMarginX + kPageWidthInside, at);
    }
    // Words wrapped to a width in the current font, one string a line.
    std::vector<QString> Wrap(const QString& text, double width) const
    {
        std::vector<QString> lines;
        QString line;
        for (const QString& word : text.split(' ', Qt::SkipEmptyParts)) {
            const QString longer = line.isEmpty() ? word : line + ' ' + word;
            if (!line.isEmpty() && pdf_.TextWidth(longer) > width) {
                lines.push_back(line);
                line = word;
            } else {
                line = longer;
            }
        }
        if (!line.isEmpty()) lines.push_back(line);
        return lines;
    }

private:
    PdfBox& pdf_;
    const MuhurthaCalendar& cal_;
    const CalendarColours& colours_;
};

std::string ElementList(const std::vector<CalendarElement>& elements)
{
    std::string out;
    for (const CalendarElement& e : elements)
        out += (out.empty() ? "" : ", ") + (e.Heading.empty() ? e.Code : e.Heading) + " (" + std::to_string(e.Score) +
               ")";
    return out.empty() ? std::string("none") : out;
}

void WriteTitle(PdfBox& pdf, CalendarPages& pages, const MuhurthaCalendar& cal, const CalendarColours& colours,
                std::size_t listed)
{
    pages.Font(18, true, colours.Heading);
    pdf.TextBox(kMarginX, pages.y, kPageWidthInside, pdf.LineHeight(), "Muhurtha Calendar", 0);
    pages.y += pdf.LineHeight() * 1.15;
    pages.Font(13, true, colours.Heading);
    for (const QString& line : pages.Wrap(Q(cal.MuhuName), kPageWidthInside)) {
        pdf.TextBox(kMarginX, pages.y, kPageWidthInside, pdf.LineHeight(), line, 0);
        pages.y += pdf.LineHeight();
    }
    pages.y += 30;
    std::size_t tested = 0;
    for (const CalendarDay& d : cal.Days) tested += d.Tested;
    const std::pair<const char*, std::string> facts[] = {
        {"Place", cal.Place.empty() ? std::string("-") : cal.Place},
        {"Range", RangeText(cal)},
        {"Time window", WindowText(cal) + " each day"},
        {"Days", std::to_string(tested) + " of " + std::to_string(cal.Days.size()) + " tested, " +
                     std::to_string(listed) + " listed"},
    };
    const double labelWidth = 300;
    for (const auto& [label, value] : facts) {
        pages.Font(10, true, colours.Text);
        pdf.TextBox(kMarginX, pages.y, labelWidth, pdf.LineHeight(), label, 0);
        pages.Font(10, false, colours.Text);
        double h = 0;
        for (const QString& line : pages.Wrap(Q(value), kPageWidthInside - labelWidth)) {
            pdf.TextBox(kMarginX + labelWidth, pages.y + h, kPageWidthInside - labelWidth, pdf.LineHeight(), line, 0);
            h += pdf.LineHeight();
        }
        pages.y += std::max(h, pdf.LineHeight()) + 6;
    }
    pages.y += 20;
    pages.Rule(pages.y, 3);
    pages.y += 50;
}

// The grids, three months a row, as many rows a page as fit; the legend
// after the last.
void WriteGrids(PdfBox& pdf, CalendarPages& pages, const MuhurthaCalendar& cal, const CalendarColours& colours)
{
    constexpr int kColumns = 3;
    constexpr double kGapShare = 0.6;  // as the layout's gap
    const std::vector<DateTime> months = CalendarMonths(cal);
    const double cell = kPageWidthInside / (kColumns * 7 + (kColumns - 1) * kGapShare);
    PdfCanvas canvas(pdf, cell);
    std::size_t first = 0;
    while (first < months.size()) {
        const Layout probe = MakeLayout({months[first]}, kColumns, cell, kMarginX, pages.y, false, false);
        const double rowHeight = probe.MonthHeight() + probe.gap;
        const int rows = static_cast<int>((kBottom - pages.y + probe.gap) / rowHeight);
        if (rows < 1) {
            pages.NewPage();
            continue;
        }
        const std::size_t last = std::min(months.size(), first + static_cast<std::size_t>(rows * kColumns));
        const Layout page = MakeLayout(std::vector<DateTime>(months.begin() + static_cast<std::ptrdiff_t>(first),
                                                             months.begin() + static_cast<std::ptrdiff_t>(last)),
                                       kColumns, cell, kMarginX, pages.y, false, false);
        Draw(canvas, page, cal, colours, nullptr);
        first = last;
        pages.y += page.gridsHeight + page.gap;
        if (first < months.size()) pages.NewPage();
    }
    const double legendHeight = MakeLayout({}, kColumns, cell, kMarginX, 0, true, false, kPageWidthInside).legendHeight;
    pages.NeedRoom(legendHeight);
    const Layout legend = MakeLayout({}, kColumns, cell, kMarginX, pages.y, true, false, kPageWidthInside);
    DrawLegend(canvas, legend, colours);
    pages.y += legend.legendHeight + 60;
}

// The ranked days as a table, each with the elements its best moment held
// and its defects on lines of their own.
void WriteRanked(PdfBox& pdf, CalendarPages& pages, const MuhurthaCalendar& cal, const CalendarColours& colours,
                 const std::vector<std::size_t>& listed)
{
    const double cols[] = {0, 110, 340, 470, 640, 870, 1060, 1220};
    const char* const heads[] = {"Rank", "Date", "Day", "Moment", "Score", "Percent", "Band", "Lagna span"};
    constexpr int kCols = 8;
    auto right = [&](int k) { return k + 1 < kCols ? cols[k + 1] - 20 : kPageWidthInside; };
    auto headRow = [&] {
        pages.Font(9.5, true, colours.Text);
        for (int k = 0; k < kCols; ++k)
            pdf.TextBox(kMarginX + cols[k], pages.y, right(k) - cols[k], pdf.LineHeight(), heads[k], 0);
        pages.y += pdf.LineHeight() + 8;
        pages.Rule(pages.y, 4);
        pages.y += 18;
    };
    auto heading = [&] {
        pages.Font(13, true, colours.Heading);
        pdf.TextBox(kMarginX, pages.y, kPageWidthInside, pdf.LineHeight(), "The days ranked", 0);
        pages.y += pdf.LineHeight() * 1.3;
        headRow();
    };
    pages.Font(13, true, colours.Heading);
    pages.NeedRoom(pdf.LineHeight() * 5);
    heading();

    const double notesLeft = cols[1], notesWidth = kPageWidthInside - cols[1];
    int rank = 0;
    for (std::size_t i : listed) {
        if (i >= cal.Days.size()) continue;
        const CalendarDay& d = cal.Days[i];
        ++rank;
        pages.Font(8.5, false, colours.Text);
        std::vector<QString> notes = pages.Wrap("Held: " + Q(ElementList(d.Held)), notesWidth);
        for (const QString& line : pages.Wrap("Defects: " + Q(ElementList(d.Defects)), notesWidth))
            notes.push_back(line);
        const double noteHeight = pdf.LineHeight();
        pages.Font(9.5, false, colours.Text);
        const double rowHeight = pdf.LineHeight();
        if (pages.y + rowHeight + noteHeight * static_cast<double>(notes.size()) > kBottom) {
            pages.NewPage();
            headRow();
        }
        pages.Font(9.5, d.EngineBest, colours.Text);
        const QString cells[kCols] = {
            QString::number(rank) + (d.EngineBest ? " *" : ""),
            Q(d.Day.ToDayFirstText()),
            kWeekHeads[d.Day.WeekDay() - 1],
            Q(d.Best.Time),
            Q(vb::CStr(d.Score)) + " of " + QString::number(d.MaxScore),
            Q(vb::Format(d.Percent, "0.00")),
            QString::number(d.Band),
            Q(d.LagnaStartText) + " to " + Q(d.LagnaEndText),
        };
        for (int k = 0; k < kCols; ++k) {
            double left = kMarginX + cols[k];
            if (k == 6) {
                // The band's own fill beside its number, as in the grids.
                const double side = rowHeight * 0.7;
                pdf.FillColor(colours.Band(d.Band));
                pdf.PenColor(Mix(colours.Paper, colours.Text, 0.4));
                pdf.LineWidth(2);
                pdf.Rectangle(left, pages.y + (rowHeight - side) / 2, side, side, true);
                left += side + 25;
            }
            pdf.TextBox(left, pages.y, kMarginX + right(k) - left, rowHeight, cells[k], 0);
        }
        pages.y += rowHeight + 2;
        pages.Font(8.5, false, colours.Text);
        for (const QString& line : notes) {
            pdf.TextBox(kMarginX + notesLeft, pages.y, notesWidth, noteHeight, line, 0);
            pages.y += noteHeight;
        }
        pages.y += 14;
        pages.Rule(pages.y, 1.5);
        pages.y += 22;
    }
    pages.Font(9, false, colours.Text);
    const QString note = listed.empty()
                             ? QString("No day reaches the band asked for.")
                             : QString("* the best Muhurtha of the range. Times are the place's clock; the lagna span "
                                       "is the time around the day's best moment in which its lagna holds.");
    const std::vector<QString> lines = pages.Wrap(note, kPageWidthInside);
    pages.NeedRoom(pdf.LineHeight() * static_cast<double>(lines.size()) + 20);
    pages.y += 20;
    for (const QString& line : lines) {
        pdf.TextBox(kMarginX, pages.y, kPageWidthInside, pdf.LineHeight(), line, 0);
        pages.y += pdf.LineHeight();
    }
}

}  // namespace

void SaveCalendarPdf(const MuhurthaCalendar& Calendar, const std::vector<std::size_t>& Listed, const std::string& Path)
{
    const CalendarColours colours = CalendarColours::ForPrint();
    PdfBox pdf;
    pdf.FileName(Path);
    pdf.WorkName(PdfBox::WorkNameFor(Path));
    pdf.Author("Ranvel");
    pdf.Title(TitleText(Calendar));
    pdf.Keywords("Muhurtha, calendar, " + Calendar.MuhuName);
    try {
        pdf.BeginDoc();
        CalendarPages pages(pdf, Calendar, colours);
        WriteTitle(pdf, pages, Calendar, colours, Listed.size());
        WriteGrids(pdf, pages, Calendar, colours);
        WriteRanked(pdf, pages, Calendar, colours, Listed);
        pages.Foot();
        pdf.EndDoc();
    } catch (...) {
        // PdfBox's own errors name the file and the reason; they pass on
        // as they are, the work file gone.
        pdf.AbortDoc();
        throw;
    }
}

}  // namespace ranvel
