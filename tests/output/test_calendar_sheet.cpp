// The calendar's month grids: a range that starts mid-month lays out on the
// right weekdays, the days outside it are greyed and find no day, a tested
// day is filled by its band, the bands are ten distinct steps, and the PNG
// and PDF are written whole or not at all.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <cstdio>
#include <filesystem>

#include "ranvel/output/calendarsheet.h"

namespace ranvel::test {
namespace {

// 13 November 2024 to 10 January 2025; 20 November untested; the best day
// 25 December.
MuhurthaCalendar MidMonthRange()
{
    MuhurthaCalendar cal;
    cal.MuhuName = "Griha Pravesha";
    cal.Place = "Pune";
    cal.StartDate = DateTime::FromParts(2024, 11, 13);
    cal.EndDate = DateTime::FromParts(2025, 1, 10);
    int n = 0;
    for (DateTime d = cal.StartDate; d <= cal.EndDate; d = d.AddDays(1), ++n) {
        CalendarDay day;
        day.Day = d;
        day.Tested = d != DateTime::FromParts(2024, 11, 20);
        day.Band = 10 + (n % 10) * 10;
        day.Percent = day.Band - 5.25;
        day.Score = n;
        day.EngineBest = d == DateTime::FromParts(2024, 12, 25);
        day.Best.Time = "08.30";
        day.LagnaStartText = "07:58 AM";
        day.LagnaEndText = "09:40 AM";
        day.Held = {{"T", "Tithi", 10}};
        day.Defects = {{"RAHUKAAL", "Rahu Kaal", -6}};
        if (day.Tested) cal.Ranked.push_back(cal.Days.size());
        cal.Days.push_back(day);
    }
    return cal;
}

constexpr int kColumns = 3, kCell = 30;

}  // namespace

TEST(CalendarSheet, AMidMonthRangeLaysOutOnItsWeekdaysWithTheRestGreyed)
{
    const MuhurthaCalendar cal = MidMonthRange();
    const std::vector<DateTime> months = CalendarMonths(cal);
    ASSERT_EQ(months.size(), 3u);
    EXPECT_EQ(months[0], DateTime::FromParts(2024, 11, 1));
    EXPECT_EQ(months[2], DateTime::FromParts(2025, 1, 1));

    const QSize size = CalendarGridsSize(cal, kColumns, kCell);
    QImage image(size, QImage::Format_RGB32);
    const CalendarColours colours = CalendarColours::FromActive();
    image.fill(Qt::magenta);
    const QRect area(QPoint(0, 0), size);
    {
        QPainter p(&image);
        PaintCalendarGrids(p, area, cal, colours, kColumns, kCell, nullptr);
    }

    // Every day of the range is found at its cell's centre, and no other.
    int found = 0;
    for (int y = kCell / 2; y < size.height(); y += kCell / 2)
        for (int x = kCell / 2; x < size.width(); x += kCell / 2)
            if (const CalendarDay* d = CalendarDayAt(QPoint(x, y), area, cal, kColumns, kCell)) {
                ++found;
                EXPECT_GE(d->Day, cal.StartDate);
                EXPECT_LE(d->Day, cal.EndDate);
            }
    // 1 November 2024 is a Friday: the first row holds it in the sixth
    // column; 13 November is the Wednesday of the third row.
    EXPECT_GT(found, 0);
    // The cell of 1 November (row one, column six) finds no day and is not
    // filled by a band; 13 November's cell is filled by its band.
    const int top = static_cast<int>((1.0 + 0.7) * kCell);
    const QPoint first(5 * kCell + kCell / 2, top + kCell - 4);
    EXPECT_EQ(CalendarDayAt(first, area, cal, kColumns, kCell), nullptr);
    EXPECT_EQ(image.pixel(first), colours.Paper.rgb());
    const QPoint thirteenth(3 * kCell + 3, top + 2 * kCell + kCell - 3);
    const CalendarDay* day = CalendarDayAt(thirteenth, area, cal, kColumns, kCell);
    ASSERT_NE(day, nullptr);
    EXPECT_EQ(day->Day, DateTime::FromParts(2024, 11, 13));
    EXPECT_EQ(image.pixel(thirteenth), colours.Band(day->Band).rgb());

    // The bands are ten distinct steps, each with readable text.
    for (int b = 20; b <= 100; b += 10) EXPECT_NE(colours.Band(b), colours.Band(b - 10)) << b;
    for (int b = 10; b <= 100; b += 10) {
        const QColor fill = colours.Band(b), ink = colours.TextOn(b);
        const double contrast = std::abs(fill.lightnessF() - ink.lightnessF());
        EXPECT_GT(contrast, 0.3) << b;
    }
}

TEST(CalendarSheet, PictureAndPdfAreWrittenWholeOrNotAtAll)
{
    const MuhurthaCalendar cal = MidMonthRange();
    QTemporaryDir dir;
    const std::string png = dir.filePath("cal.png").toStdString();
    SaveCalendarPng(cal, png);
    QImage back(QString::fromStdString(png));
    ASSERT_FALSE(back.isNull());
    EXPECT_GT(back.width(), CalendarGridsSize(cal, 4, 40).width());

    const std::string pdf = dir.filePath("cal.pdf").toStdString();
    std::vector<std::size_t> listed(cal.Ranked.begin(), cal.Ranked.begin() + 5);
    SaveCalendarPdf(cal, listed, pdf);
    std::string text;
    if (FILE* f = popen(("pdftotext '" + pdf + "' - 2>/dev/null").c_str(), "r")) {
        char buffer[4096];
        while (std::fgets(buffer, sizeof buffer, f)) text += buffer;
        pclose(f);
    }
    EXPECT_NE(text.find("Griha Pravesha"), std::string::npos);
    EXPECT_NE(text.find("December 2024"), std::string::npos);
    EXPECT_NE(text.find("Rahu Kaal (-6)"), std::string::npos);
    EXPECT_NE(text.find(cal.Days[cal.Ranked[0]].Day.ToDayFirstText()), std::string::npos);

    // A missing folder: a clear refusal naming the file, nothing left.
    const std::string nowhere = dir.filePath("missing/cal.png").toStdString();
    try {
        SaveCalendarPng(cal, nowhere);
        FAIL() << "no refusal";
    } catch (const std::runtime_error& e) {
        EXPECT_NE(std::string(e.what()).find(nowhere), std::string::npos) << e.what();
    }
    EXPECT_THROW(SaveCalendarPdf(cal, listed, dir.filePath("missing/cal.pdf").toStdString()), std::runtime_error);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path().toStdString())) files += entry.is_regular_file();
    EXPECT_EQ(files, 2u);  // cal.png and cal.pdf, no work files
}

}  // namespace ranvel::test
