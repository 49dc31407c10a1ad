// The clocks of time zones as the system's database gives them: summer time,
// war time, a zone that moved, the hour a clock skips and the one it shows
// twice, and what can't be answered; and the zones of the place store's
// cities, in a store that keeps them and in one made before it did.
#include <gtest/gtest.h>

#include "app/app_fixture.h"
#include "ranvel/data/cityzones.h"
#include "ranvel/platform/gui/systemzones.h"
#include "ranvel/app/frmLogin.h"
#include "ranvel/app/requestfields.h"
#include "ranvel/app/zonehint.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace ranvel::test {
namespace {

using Kind = ZoneReading::Kind;

DateTime At(int d, int m, int y, int h, int mi) { return DateTime::FromParts(y, m, d, h, mi); }

TEST(SystemZonesTest, OffsetsInForceFollowTheZonesHistory)
{
    SystemZones zones;
    struct Case {
        const char* zone;
        DateTime local;
        int minutes;
        bool daylight;
    };
    const Case cases[] = {
        {"Europe/London", At(14, 7, 1990, 12, 0), 60, true},     {"Europe/London", At(15, 1, 1990, 12, 0), 0, false},
        {"Asia/Kolkata", At(1, 6, 1943, 12, 0), 390, true},      {"Asia/Kolkata", At(1, 6, 1990, 12, 0), 330, false},
        {"Asia/Kathmandu", At(1, 6, 1980, 12, 0), 330, false},   {"Asia/Kathmandu", At(1, 6, 1990, 12, 0), 345, false},
        {"America/New_York", At(4, 7, 2024, 9, 0), -240, true},  {"Australia/Sydney", At(4, 7, 2024, 9, 0), 600, false},
        {"Australia/Sydney", At(4, 1, 2024, 9, 0), 660, true},   {"America/St_Johns", At(4, 1, 2024, 9, 0), -210, false},
    };
    for (const Case& c : cases) {
        const ZoneReading r = zones.At(c.zone, c.local);
        EXPECT_EQ(r.kind, Kind::Normal) << c.zone << " " << c.local.ToIsoText();
        EXPECT_EQ(r.minutes, c.minutes) << c.zone << " " << c.local.ToIsoText();
        EXPECT_EQ(r.daylight, c.daylight) << c.zone << " " << c.local.ToIsoText();
    }
    EXPECT_EQ(ZoneOffsetText(390), "+06.30");
    EXPECT_EQ(ZoneOffsetText(-210), "-03.30");
    EXPECT_EQ(ZoneOffsetText(0), "+00.00");
}

TEST(SystemZonesTest, TheSkippedAndTheRepeatedHourAreNamed)
{
    SystemZones zones;
    // New York, 10 March 2024: 02:00 became 03:00.
    const ZoneReading skipped = zones.At("America/New_York", At(10, 3, 2024, 2, 30));
    EXPECT_EQ(skipped.kind, Kind::Skipped);
    EXPECT_EQ(skipped.minutes, -300);
    EXPECT_EQ(skipped.later, -240);
    EXPECT_EQ(zones.At("America/New_York", At(10, 3, 2024, 1, 59)).minutes, -300);
    EXPECT_EQ(zones.At("America/New_York", At(10, 3, 2024, 3, 0)).kind, Kind::Normal);
    // 3 November 2024: 01:00 to 01:59 came twice.
    const ZoneReading twice = zones.At("America/New_York", At(3, 11, 2024, 1, 30));
    EXPECT_EQ(twice.kind, Kind::Repeated);
    EXPECT_EQ(twice.minutes, -240);
    EXPECT_TRUE(twice.daylight);
    EXPECT_EQ(twice.later, -300);

    // A range over March sees the one change, at the clock's 02:00.
    const std::vector<ZoneChange> changes =
        zones.Changes("America/New_York", At(1, 3, 2024, 0, 0), At(31, 3, 2024, 23, 59));
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].local, At(10, 3, 2024, 2, 0));
    EXPECT_EQ(changes[0].minutes, -240);
    EXPECT_TRUE(changes[0].daylight);
    EXPECT_TRUE(zones.Changes("Asia/Kolkata", At(1, 1, 2024, 0, 0), At(31, 12, 2024, 0, 0)).empty());
}

TEST(SystemZonesTest, WhatCantBeAnsweredSaysWhy)
{
    SystemZones zones;
    for (const auto& [zone, local, word] :
         {std::tuple{"Mars/Olympus", At(1, 1, 2000, 0, 0), "Mars/Olympus"},
          std::tuple{"", At(1, 1, 2000, 0, 0), "no time zone"},
          std::tuple{"Europe/London", At(31, 12, 1899, 12, 0), "1900"}}) {
        const ZoneReading r = zones.At(zone, local);
        EXPECT_EQ(r.kind, Kind::Unknown) << zone;
        EXPECT_NE(r.why.find(word), std::string::npos) << r.why;
    }
    // Before a clock is set, the program's seam knows no zone.
    SetZones(nullptr);
    EXPECT_EQ(Zones().At("Europe/London", At(1, 1, 2000, 0, 0)).kind, Kind::Unknown);
    UseSystemZones();
}

class CityZones : public AppTest {};

TEST_F(CityZones, CitiesOfANameWithTheirZonesInStoreOrder)
{
    auto recos = Database::Open((app / "EPHE/COMMON/RECOS.Dat").string());
    const std::vector<CityZone> london = CitiesNamed(*recos, "london");
    ASSERT_GE(london.size(), 2u);
    const std::vector<CityZone> uk = CitiesNamed(*recos, "London", "United Kingdom");
    ASSERT_EQ(uk.size(), 1u);
    EXPECT_EQ(uk[0].Zone, "Europe/London");
    EXPECT_EQ(uk[0].GMTDiff, "+00.00");
    // A name with an apostrophe is asked for like any other.
    EXPECT_FALSE(CitiesNamed(*recos, "L'Aquila").empty());
    EXPECT_TRUE(CitiesNamed(*recos, "Nowhere'; DROP TABLE City; --").empty());

    // A store made before the zones were kept: its cities come without.
    recos->Execute("CREATE TABLE OldCity AS SELECT City, Country, Lat, NOSO, Longy, EaWe, GMTDIFF FROM City");
    recos->Execute("DROP TABLE City");
    recos->Execute("ALTER TABLE OldCity RENAME TO City");
    const std::vector<CityZone> old = CitiesNamed(*recos, "London", "United Kingdom");
    ASSERT_EQ(old.size(), 1u);
    EXPECT_EQ(old[0].Zone, "");
}

TEST_F(CityZones, AnOlderStoreTakesItsCitiesZonesFromTheInstallationOnce)
{
    const std::string installed = (app / "EPHE/COMMON/RECOS.Dat").string();
    const std::string mine = (app / "mine.Dat").string();
    std::filesystem::copy_file(installed, mine);
    auto store = Database::Open(mine);
    store->Execute("CREATE TABLE OldCity AS SELECT City, Country, Lat, NOSO, Longy, EaWe, GMTDIFF FROM City");
    store->Execute("DROP TABLE City");
    store->Execute("ALTER TABLE OldCity RENAME TO City");
    store->Execute("INSERT INTO City VALUES ('Mytown', 'India', '020.00', 'N', '075.00', 'E', '+05.30')");

    EXPECT_FALSE(AddCityZones(*store, mine));  // its own store is no source
    ASSERT_TRUE(AddCityZones(*store, installed));
    EXPECT_EQ(CitiesNamed(*store, "London", "United Kingdom").at(0).Zone, "Europe/London");
    EXPECT_EQ(CitiesNamed(*store, "Mytown").at(0).Zone, "");
    EXPECT_FALSE(AddCityZones(*store, installed));  // once
    // The persons and the rest of the store are as they were.
    EXPECT_EQ(store->OpenRecordset("SELECT * FROM City WHERE City = 'Mytown'")->Field("GMTDIFF").ToText(), "+05.30");
}

// The request form tells, beside a zone field, where the clock kept
// another offset, and puts it in the field only when asked.
class ZoneNotesOnTheForm : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        form = new frmLogin;
    }
    template <typename T>
    T* Find(const char* name)
    {
        return Child<T>(form, name);
    }
    frmLogin* form = nullptr;
};

TEST_F(ZoneNotesOnTheForm, ABirthInSummerTimeIsToldAndItsOffsetPutInOnlyByAClick)
{
    auto* hint = Find<ZoneHint>("cmdZoneNote");
    auto* grey = Find<QLabel>("lbltxtGMTNote");
    auto* gmt = Find<QLineEdit>("txtGMT");
    Find<QLineEdit>("txtBDate")->setText("14/07/1990");
    Find<QLineEdit>("txtBTime")->setText("12.00");
    gmt->setText("+00.00");
    // Put in as the store's pick puts them, the boxes kept quiet.
    SetBoxText(Find<QComboBox>("cmbCountry"), "United Kingdom");
    SetBoxText(Find<QComboBox>("cmbCity"), "London");
    EXPECT_FALSE(hint->isHidden());
    EXPECT_TRUE(grey->isHidden());
    EXPECT_EQ(hint->text(), "Summer time: +01.00");
    EXPECT_TRUE(hint->toolTip().startsWith("Summer time was in force in London on 14/07/1990: +01.00"));
    EXPECT_EQ(gmt->text(), "+00.00");  // told, not changed
    hint->click();
    EXPECT_EQ(gmt->text(), "+01.00");
    EXPECT_TRUE(hint->isHidden());
    EXPECT_FALSE(grey->isHidden());

    // In January the standard offset holds: nothing to say once it is back.
    Find<QLineEdit>("txtBDate")->setText("14/01/1990");
    EXPECT_FALSE(hint->isHidden());
    EXPECT_EQ(hint->text(), "In force: +00.00");
    gmt->setText("+00.00");
    EXPECT_TRUE(hint->isHidden());

    // The hour New York's clock skipped: named, nothing offered; a click
    // shows the sentence and leaves the field.
    Find<QComboBox>("cmbCountry")->setEditText("United States of America");
    Find<QComboBox>("cmbCity")->setEditText("New York");
    Find<QLineEdit>("txtBDate")->setText("10/03/2024");
    Find<QLineEdit>("txtBTime")->setText("02.30");
    gmt->setText("-05.00");
    EXPECT_EQ(hint->text(), "Hour skipped");
    messages.Clear();
    hint->click();
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_NE(messages.Messages()[0].text.find("did not exist in New York"), std::string::npos);
    EXPECT_EQ(gmt->text(), "-05.00");

    // A city the store has no zone for, or half-typed fields: the grey hint.
    Find<QComboBox>("cmbCity")->setEditText("Nowhere");
    EXPECT_TRUE(hint->isHidden());
}

TEST_F(ZoneNotesOnTheForm, ARangeOverAClockChangeIsToldBeforeTheSearch)
{
    Find<QRadioButton>("optMuhuRange")->setChecked(true);
    Find<QDateEdit>("dtMuhuFrom")->setDate(QDate(2025, 3, 1));
    Find<QDateEdit>("dtMuhuTo")->setDate(QDate(2025, 3, 31));
    Find<QLineEdit>("txtMuhDTFrom")->setText("06.00");
    Find<QLineEdit>("txtMuhDTTo")->setText("22.00");
    Find<QComboBox>("cmbMuhuCountry")->setEditText("United States of America");
    Find<QComboBox>("cmbMuhuCity")->setEditText("New York");
    Find<QLineEdit>("txtMuhuGMT")->setText("-05.00");
    auto* hint = Find<ZoneHint>("cmdMuhuZoneNote");
    EXPECT_FALSE(hint->isHidden());
    EXPECT_EQ(hint->text(), "Clock changes in the range");
    EXPECT_NE(hint->toolTip().indexOf("09/03/2025 at 02.00 to -04.00"), -1) << hint->toolTip().toStdString();
    // The search keeps the form's one offset.
    form->GatherRequest();
    EXPECT_EQ(form->Request().Place.GMT, "-05.00");
}

}  // namespace
}  // namespace ranvel::test
