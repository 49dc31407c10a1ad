// The calendar's month grids: a range that starts mid-month lays out on the
// right weekdays with the days outside it greyed and finding no day; the
// fills, marks and size agree with what is painted; the bands are ten
// distinct readable steps in every kind of page colours; the PNG and the
// PDF are written whole or not at all, the PDF's figures searchable text.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>

#include "ranvel/data/themes.h"
#include "ranvel/output/calendarsheet.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::test {
namespace {

// 13 November 2024 to 10 January 2025: 20 November untested, the engine's
// best day 25 December. Each day's percent is its own, so that a percent
// found in the PDF tells which day it came from.
MuhurthaCalendar MidMonthRange(DateTime from = DateTime::FromParts(2024, 11, 13),
                               DateTime to = DateTime::FromParts(2025, 1, 10))
{
    MuhurthaCalendar cal;
    cal.MuhuName = "Griha Pravesha";
    cal.Place = "Pune";
    cal.StartDate = from;
    cal.EndDate = to;
    cal.TimeStart = 6;
    cal.TimeEnd = 18.3;
    int n = 0;
    for (DateTime d = from; d <= to; d = d.AddDays(1), ++n) {
        CalendarDay day;
        day.Day = d;
        day.Tested = d != DateTime::FromParts(2024, 11, 20);
        day.Band = 10 + (n % 10) * 10;
        day.Percent = day.Band - 9.5 + (n % 37) * 0.21;
        day.Score = n;
        day.MaxScore = 48;
        day.EngineBest = d == DateTime::FromParts(2024, 12, 25);
        day.Best.Time = "08.30";
        day.LagnaStartText = "07:58:12";
        day.LagnaEndText = "09:40:33";
        day.Held = {{"T", "Tithi", 10}};
        day.Defects = {{"RAHUKAAL", "Rahu Kaal", -6}};
        if (day.Tested) cal.Ranked.push_back(cal.Days.size());
        cal.Days.push_back(day);
    }
    return cal;
}

constexpr int kColumns = 3, kCell = 30;

// The active page colours changed for a test and put back after it.
class PageColoursAs {
public:
    explicit PageColoursAs(const PageColors& c) : saved_(ActivePageColors()) { ActivePageColors() = c; }
    ~PageColoursAs() { ActivePageColors() = saved_; }

private:
    PageColors saved_;
};

// The grids painted into an image larger than they say they are, at an
// offset, on a colour they never use.
struct Painted {
    MuhurthaCalendar cal = MidMonthRange();
    CalendarColours colours = CalendarColours::FromActive();
    QSize size = CalendarGridsSize(cal, kColumns, kCell);
    QRect area{QPoint(7, 5), size};
    QImage image{size + QSize(40, 30), QImage::Format_RGB32};

    // With the day of a date selected, if any.
    explicit Painted(const DateTime& selected = DateTime())
    {
        image.fill(Qt::magenta);
        QPainter p(&image);
        PaintCalendarGrids(p, area, cal, colours, kColumns, kCell, cal.DayOf(selected));
    }
    const CalendarDay* Day(int year, int month, int day) const
    {
        return cal.DayOf(DateTime::FromParts(year, month, day));
    }
    const CalendarDay* At(const QPoint& point) const { return CalendarDayAt(point, area, cal, kColumns, kCell); }
    // Each day's cell as the finding of days sees it, pixel by pixel.
    std::map<const CalendarDay*, QRect> Cells() const
    {
        std::map<const CalendarDay*, QRect> cells;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (const CalendarDay* d = At(QPoint(x, y))) cells[d] |= QRect(x, y, 1, 1);
        return cells;
    }
    QColor Pixel(const QPoint& p) const { return QColor(image.pixel(p)); }
};

std::string Output(const std::string& command)
{
    std::string out;
    if (FILE* f = popen((command + " 2>/dev/null").c_str(), "r")) {
        char buffer[4096];
        while (std::fgets(buffer, sizeof buffer, f)) out += buffer;
        pclose(f);
    }
    return out;
}

std::size_t FilesIn(const QTemporaryDir& dir)
{
    std::size_t n = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path().toStdString()))
        n += entry.is_regular_file();
    return n;
}

}  // namespace

TEST(CalendarSheet, AMidMonthRangeLaysOutOnItsWeekdaysWithTheRestGreyed)
{
    const Painted g;
    const std::vector<DateTime> months = CalendarMonths(g.cal);
    ASSERT_EQ(months.size(), 3u);
    EXPECT_EQ(months[0], DateTime::FromParts(2024, 11, 1));
    EXPECT_EQ(months[2], DateTime::FromParts(2025, 1, 1));

    // Every day of the range has a whole cell of its own inside the area.
    const auto cells = g.Cells();
    ASSERT_EQ(cells.size(), g.cal.Days.size());
    for (const auto& [day, cell] : cells) {
        EXPECT_EQ(cell.size(), QSize(kCell, kCell)) << day->Day.ToDayFirstText();
        EXPECT_TRUE(g.area.contains(cell)) << day->Day.ToDayFirstText();
    }

    // 13 November 2024 is a Wednesday, in the third week of a month that
    // begins on a Friday; the cells of 1 to 12 November lie where the
    // weekdays put them, find no day and are greyed.
    const CalendarDay* thirteenth = g.cal.DayOf(DateTime::FromParts(2024, 11, 13));
    const QRect c13 = cells.at(thirteenth);
    EXPECT_EQ(g.At(c13.center()), thirteenth);
    const QPoint weekOne = c13.topLeft() - QPoint(3 * kCell, 2 * kCell);  // Sunday of the week of 1 November
    EXPECT_EQ(cells.at(g.cal.DayOf(DateTime::FromParts(2024, 11, 17))).topLeft(), weekOne + QPoint(0, 3 * kCell));
    for (int d = 1; d <= 12; ++d) {
        const int slot = 5 + d - 1;  // Friday is the sixth column
        const QPoint corner = weekOne + QPoint(slot % 7 * kCell, slot / 7 * kCell);
        const QPoint inside = corner + QPoint(kCell * 3 / 4, kCell * 3 / 4);
        EXPECT_EQ(g.At(inside), nullptr) << d;
        EXPECT_EQ(g.Pixel(inside), g.colours.Outside) << d;
    }
    // The Thursday before the month's first day is no day and not greyed.
    EXPECT_NE(g.Pixel(weekOne + QPoint(4 * kCell + kCell * 3 / 4, kCell * 3 / 4)), g.colours.Outside);

    // Nothing is painted beyond the size the grids claim.
    for (int y = 0; y < g.image.height(); ++y)
        for (int x = 0; x < g.image.width(); ++x)
            if (!g.area.contains(x, y)) {
                ASSERT_EQ(g.Pixel(QPoint(x, y)), QColor(Qt::magenta)) << x << "," << y;
            }
}

TEST(CalendarSheet, CellsAreFilledByTheirBandAndTheBestAndSelectedDaysMarked)
{
    const DateTime bestDate = DateTime::FromParts(2024, 12, 25);
    const Painted g(DateTime::FromParts(2024, 12, 3));
    const CalendarDay* best = g.Day(2024, 12, 25);
    const CalendarDay* chosen = g.Day(2024, 12, 3);
    ASSERT_TRUE(best->EngineBest);
    const auto cells = g.Cells();
    // Inside a cell clear of its number and percent, and on its edge.
    auto inside = [&](const CalendarDay* d) { return cells.at(d).topLeft() + QPoint(kCell * 4 / 5, kCell / 5); };
    auto edge = [&](const CalendarDay* d) { return cells.at(d).topLeft() + QPoint(0, kCell / 2); };

    for (const auto& [day, cell] : cells) {
        const QColor fill = day->Tested ? g.colours.Band(day->Band) : g.colours.Paper;
        EXPECT_EQ(g.Pixel(inside(day)), fill) << day->Day.ToDayFirstText();
    }
    const CalendarDay* plain = g.Day(2024, 12, 10);
    EXPECT_EQ(g.Pixel(edge(plain)), g.colours.Paper);  // the line between cells
    EXPECT_EQ(g.Pixel(edge(best)), g.colours.Text);    // the best day's bold frame
    EXPECT_EQ(g.Pixel(edge(best) + QPoint(2, 0)), g.colours.Text);
    EXPECT_EQ(g.Pixel(edge(chosen)), g.colours.Accent);
    EXPECT_EQ(g.Pixel(inside(chosen)), g.colours.Band(chosen->Band));

    // Chosen, the best day keeps its frame with the choice's inside it.
    // (The same layout: the cells found above hold for this painting.)
    const Painted both(bestDate);
    EXPECT_EQ(both.Pixel(edge(best)), both.colours.Text);
    EXPECT_EQ(both.Pixel(edge(best) + QPoint(5, 0)), both.colours.Accent);
    EXPECT_EQ(both.Pixel(edge(chosen)), both.colours.Paper);
}

TEST(CalendarSheet, BandsAreTenDistinctReadableStepsInEveryPageColours)
{
    auto page = [](long back, long text, long heading, long tableHead, long subHead) {
        PageColors c;
        c.TableBackCol = back;
        c.NormTextCol = text;
        c.HeadingCol = heading;
        c.TableHeadCol = tableHead;
        c.SubHeadCol = subHead;
        return c;
    };
    // Colours are red + green * 256 + blue * 65536.
    const std::map<std::string, PageColors> pages = {
        {"black on white", page(0xFFFFFF, 0, 0, 0xE6E6E6, 0)},
        {"deep red headings on cream", page(0xE7F8FF, 0x14233B, 0x1A1A8B, 0x5AB2F6, 0x5CB8)},
        {"black heads, navy subheadings", page(0xFFFFFF, 0, 0, 0, 0x4D1A00)},
        {"light on dark", page(0x202020, 0xEEEEEE, 0xEEEEEE, 0x404040, 0xEEEEEE)},
        {"heading the paper's colour", page(0xFFFFFF, 0, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF)},
    };
    auto distance = [](const QColor& a, const QColor& b) {
        return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
    };
    auto luminance = [](const QColor& c) { return 0.2126 * c.redF() + 0.7152 * c.greenF() + 0.0722 * c.blueF(); };
    for (const auto& [name, colours] : pages) {
        const PageColoursAs active(colours);
        for (const CalendarColours& c : {CalendarColours::FromActive(), CalendarColours::ForPrint()}) {
            // The strongest band has a hue: a grey ramp would read as the
            // greyed days.
            EXPECT_GE(std::max({c.Strong.red(), c.Strong.green(), c.Strong.blue()}) -
                          std::min({c.Strong.red(), c.Strong.green(), c.Strong.blue()}),
                      38)
                << name;
            EXPECT_GE(distance(c.Band(10), c.Paper), 30) << name;
            for (int b = 10; b <= 100; b += 10) {
                if (b > 10) {
                    EXPECT_GE(distance(c.Band(b), c.Band(b - 10)), 30) << name << " band " << b;
                    // Each step further from the paper than the one before.
                    EXPECT_GT(std::abs(luminance(c.Band(b)) - luminance(c.Paper)),
                              std::abs(luminance(c.Band(b - 10)) - luminance(c.Paper)))
                        << name << " band " << b;
                }
                const QColor ink = c.TextOn(b);
                EXPECT_TRUE(ink == QColor(Qt::black) || ink == QColor(Qt::white)) << name;
                EXPECT_GE(std::abs(luminance(ink) - luminance(c.Band(b))), 0.35) << name << " band " << b;
                EXPECT_GE(distance(c.Band(b), c.Outside), 24) << name << " band " << b;
                EXPECT_GE(distance(c.Band(b), c.Accent), 100) << name << " band " << b;
            }
            EXPECT_GE(distance(c.Outside, c.Paper), 30) << name;
        }
        EXPECT_EQ(CalendarColours::ForPrint().Paper, QColor(Qt::white)) << name;
    }
}

TEST(CalendarSheet, PictureIsWrittenWholeOrNotAtAll)
{
    const MuhurthaCalendar cal = MidMonthRange();
    QTemporaryDir dir;
    const std::string png = dir.filePath("cal.png").toStdString();
    { std::FILE* old = std::fopen(png.c_str(), "w"); std::fputs("an older file", old); std::fclose(old); }
    SaveCalendarPng(cal, png);
    const QImage back(QString::fromStdString(png));
    ASSERT_FALSE(back.isNull());
    // The grids in four columns at 40 pixels, with margins and the title.
    const QSize grids = CalendarGridsSize(cal, 4, 40);
    EXPECT_GT(back.width(), grids.width());
    EXPECT_LT(back.width(), grids.width() + 100);
    EXPECT_GT(back.height(), grids.height() + 40);
    EXPECT_LT(back.height(), grids.height() + 200);

    // A missing folder, and a folder in the target's place: refused naming
    // the file, nothing left behind.
    for (const std::string& bad : {dir.filePath("missing/cal.png").toStdString(), dir.path().toStdString()}) {
        try {
            SaveCalendarPng(cal, bad);
            ADD_FAILURE() << "no refusal for " << bad;
        } catch (const std::runtime_error& e) {
            EXPECT_NE(std::string(e.what()).find("Cannot write '" + bad + "'"), std::string::npos) << e.what();
        }
    }
    EXPECT_FALSE(std::filesystem::exists(dir.filePath("missing").toStdString()));
    EXPECT_EQ(FilesIn(dir), 1u);
}

TEST(CalendarSheet, PdfHoldsTheGridsAndTheRankedDaysAsTextOnLetterPages)
{
    const MuhurthaCalendar cal = MidMonthRange();
    QTemporaryDir dir;
    const std::string pdf = dir.filePath("cal.pdf").toStdString();
    const std::vector<std::size_t> listed = cal.Listed(5, 10);
    SaveCalendarPdf(cal, listed, pdf);
    const std::string text = Output("pdftotext -layout '" + pdf + "' -");
    for (const char* expected : {"Griha Pravesha", "Pune", "13/11/2024 to 10/01/2025", "06.00 to 18.30",
                                 "November 2024", "December 2024", "January 2025", "Rahu Kaal (-6)", "Tithi (10)",
                                 "07:58:12 to 09:40:33"})
        EXPECT_NE(text.find(expected), std::string::npos) << expected;
    // A day's percent is in its cell though the day is not listed.
    const CalendarDay& unlisted = cal.Days[cal.Ranked.back()];
    ASSERT_EQ(std::find(listed.begin(), listed.end(), cal.Ranked.back()), listed.end());
    EXPECT_NE(text.find(vb::Format(unlisted.Percent, "0.00")), std::string::npos) << unlisted.Percent;
    EXPECT_NE(Output("pdfinfo '" + pdf + "'").find("612 x 792 pts (letter)"), std::string::npos);

    // Every day listed: the rows flow onto further pages, none lost, each
    // page numbered.
    const std::vector<std::size_t> all = cal.Listed(1000, 10);
    SaveCalendarPdf(cal, all, pdf);
    const std::string every = Output("pdftotext -layout '" + pdf + "' -");
    const std::string info = Output("pdfinfo '" + pdf + "'");
    const int pages = std::atoi(info.substr(info.find("Pages:") + 6).c_str());
    EXPECT_GE(pages, 3);
    EXPECT_NE(every.find("Page " + std::to_string(pages)), std::string::npos);
    for (std::size_t i : all) {
        const CalendarDay& d = cal.Days[i];
        EXPECT_NE(every.find(d.Day.ToDayFirstText() + "  "), std::string::npos) << d.Day.ToDayFirstText();
    }

    // A folder that is not there: PdfBox's refusal, nothing left behind.
    const std::string nowhere = dir.filePath("missing/cal.pdf").toStdString();
    try {
        SaveCalendarPdf(cal, listed, nowhere);
        ADD_FAILURE() << "no refusal";
    } catch (const std::runtime_error& e) {
        EXPECT_NE(std::string(e.what()).find(nowhere), std::string::npos) << e.what();
    }
    EXPECT_EQ(FilesIn(dir), 1u);
}

}  // namespace ranvel::test
