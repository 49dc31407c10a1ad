// The place store as the editor changes it: the country check of a city,
// add and change modes, the stored form of degrees, deleting, the bound of
// 180 on both axes, and names that break their queries.
#include <gtest/gtest.h>

#include "ranvel/data/places.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;
using places::CityFields;
using places::PlaceEditor;

namespace {

class PlaceStore : public ::testing::Test {
protected:
    void SetUp() override
    {
        SetMessageSink(&sink);
        db = Database::Create(":memory:");
        db->ExecuteScript(
            "CREATE TABLE Country (Name TEXT COLLATE NOCASE, GMTDIF TEXT COLLATE NOCASE);"
            "CREATE TABLE City (City TEXT COLLATE NOCASE, Country TEXT COLLATE NOCASE, Lat TEXT COLLATE NOCASE,"
            " NOSO TEXT COLLATE NOCASE, Longy TEXT COLLATE NOCASE, EaWe TEXT COLLATE NOCASE,"
            " GMTDIFF TEXT COLLATE NOCASE);"
            "INSERT INTO Country VALUES ('India','+05.30'),('Pakistan','+05.00'),('Chile','-04.00');"
            "INSERT INTO City VALUES ('Hyderabad','Pakistan','025.23','N','068.22','E','+05.00'),"
            " ('Agra','India','027.10','N','078.01','E','+05.30'),"
            " ('Hyderabad','India','017.23','N','078.28','E','+05.30'),"
            " ('Santiago','Chile','033.27','S','070.40','W','-04.00');");
        editor = std::make_unique<PlaceEditor>(db);
    }
    void TearDown() override { SetMessageSink(nullptr); }

    long Count(const std::string& sql) { return db->OpenRecordset(sql)->RecordCount(); }

    HeadlessMessageSink sink{true};
    std::shared_ptr<Database> db;
    std::unique_ptr<PlaceEditor> editor;
};

TEST_F(PlaceStore, DegreesTravelAsDDDColonMMInFieldsAndDDDPointMMInTheTable)
{
    EXPECT_EQ(places::StoredDegrees("028:36"), "028.36");
    EXPECT_EQ(places::DegreesField("028.36"), "028:36");
    // A value too short to hold degrees and minutes shows as the blank field.
    EXPECT_EQ(places::DegreesField(""), "000:00");
    EXPECT_EQ(places::DegreesField("28.3"), "000:00");
}

TEST_F(PlaceStore, TheBoundIs180OnBothAxes)
{
    EXPECT_TRUE(places::CheckDegrees("180:00", places::Axis::Latitude));
    EXPECT_TRUE(places::CheckDegrees("120:00", places::Axis::Latitude));  // no bound of 90
    EXPECT_TRUE(sink.Messages().empty());

    EXPECT_FALSE(places::CheckDegrees("180:01", places::Axis::Latitude));
    EXPECT_FALSE(places::CheckDegrees("999:99", places::Axis::Longitude));
    ASSERT_EQ(sink.Messages().size(), 2u);
    EXPECT_EQ(sink.Messages()[0].title, "Invalid Latitude");
    EXPECT_EQ(sink.Messages()[0].text, "Please enter a value under 180.");
    EXPECT_EQ(sink.Messages()[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(sink.Messages()[1].title, "Invalid Longitude");
}

TEST_F(PlaceStore, ACityOfAnUnknownCountryIsRefusedAndNothingIsWritten)
{
    CityFields c;
    c.City = "Nowhere";
    c.Country = "Atlantis";
    EXPECT_FALSE(editor->SaveCity(c));
    ASSERT_EQ(sink.Messages().size(), 1u);
    EXPECT_EQ(sink.Messages()[0].title, "Country Not Found");
    EXPECT_EQ(sink.Messages()[0].text, "Invalid Country, Please Select a Country From The List.");
    EXPECT_EQ(sink.Messages()[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(Count("SELECT * FROM City"), 4);
    EXPECT_EQ(editor->CityMode(), PlaceEditor::Mode::Add);
}

TEST_F(PlaceStore, ACityIsAddedOnceThenChangedThenDeleted)
{
    CityFields c;
    c.City = "Testpur";
    c.Country = "chile";  // countries are matched without regard to case
    c.Lat = "012:34";
    c.North = false;
    c.Longy = "077:15";
    c.East = false;
    c.GMTDiff = "-04.00";
    ASSERT_TRUE(editor->SaveCity(c));
    auto rs = db->OpenRecordset("SELECT * FROM City WHERE City = 'Testpur'");
    ASSERT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(rs->Field("Lat").ToText(), "012.34");
    EXPECT_EQ(rs->Field("NOSO").ToText(), "S");
    EXPECT_EQ(rs->Field("Longy").ToText(), "077.15");
    EXPECT_EQ(rs->Field("EaWe").ToText(), "W");
    EXPECT_EQ(rs->Field("GMTDIFF").ToText(), "-04.00");
    EXPECT_EQ(editor->Cities("Chile"), (std::vector<std::string>{"Santiago", "Testpur"}));

    // The added city is now the one a save changes: no second row.
    EXPECT_EQ(editor->CityMode(), PlaceEditor::Mode::Change);
    c.Lat = "013:00";
    ASSERT_TRUE(editor->SaveCity(c));
    EXPECT_EQ(Count("SELECT * FROM City WHERE City = 'Testpur'"), 1);

    // Picked again in a new editor, it gives back what was typed.
    PlaceEditor again(db);
    const auto found = again.PickCity("testpur");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->City, "Testpur");
    EXPECT_EQ(found->Country, "chile");
    EXPECT_EQ(found->Lat, "013:00");
    EXPECT_FALSE(found->North);
    EXPECT_EQ(found->Longy, "077:15");
    EXPECT_FALSE(found->East);
    EXPECT_EQ(found->GMTDiff, "-04.00");

    EXPECT_TRUE(again.DeleteCity("Testpur"));
    EXPECT_EQ(again.CityMode(), PlaceEditor::Mode::Add);
    EXPECT_EQ(Count("SELECT * FROM City WHERE City = 'Testpur'"), 0);
    EXPECT_FALSE(again.DeleteCity("Testpur"));
}

TEST_F(PlaceStore, PickingFindsTheFirstCityOfTheNameWhateverItsCountry)
{
    const auto c = editor->PickCity("Hyderabad");
    ASSERT_TRUE(c);
    EXPECT_EQ(c->Country, "Pakistan");
    EXPECT_EQ(c->Lat, "025:23");

    // A change goes to that row, and may rename it.
    CityFields renamed = *c;
    renamed.City = "Hyderabad Sindh";
    ASSERT_TRUE(editor->SaveCity(renamed));
    EXPECT_EQ(Count("SELECT * FROM City WHERE City = 'Hyderabad'"), 1);
    EXPECT_EQ(Count("SELECT * FROM City WHERE City = 'Hyderabad Sindh' AND Country = 'Pakistan'"), 1);

    // A name not in the table leaves the mode as it was.
    EXPECT_FALSE(editor->PickCity("Xanadu"));
    EXPECT_EQ(editor->CityMode(), PlaceEditor::Mode::Change);
    EXPECT_EQ(editor->PickedCity(), "Hyderabad Sindh");
}

TEST_F(PlaceStore, CountriesAreAddedRenamedAndDeletedWithoutTheirCities)
{
    EXPECT_EQ(editor->CountryZone("INDIA"), "+05.30");
    EXPECT_FALSE(editor->CountryZone("Atlantis"));

    editor->SaveCountry("Atlantis", "+01.00");
    EXPECT_EQ(editor->CountryZone("Atlantis"), "+01.00");
    EXPECT_EQ(editor->Countries().back(), "Atlantis");

    ASSERT_TRUE(editor->PickCountry("india"));
    EXPECT_EQ(editor->PickedCountry(), "India");
    editor->SaveCountry("Bharat", "+05.30");
    EXPECT_FALSE(editor->CountryZone("India"));
    EXPECT_EQ(editor->Countries(), (std::vector<std::string>{"Bharat", "Pakistan", "Chile", "Atlantis"}));

    EXPECT_TRUE(editor->DeleteCountry("Pakistan"));
    EXPECT_FALSE(editor->CountryZone("Pakistan"));
    EXPECT_EQ(editor->Cities("Pakistan"), std::vector<std::string>{"Hyderabad"});
    EXPECT_EQ(editor->CountryMode(), PlaceEditor::Mode::Add);
    EXPECT_FALSE(editor->DeleteCountry("Pakistan"));
    // Its cities can no longer be saved: their country is not in the list.
    ASSERT_TRUE(editor->PickCity("Hyderabad"));
    EXPECT_FALSE(editor->SaveCity(*editor->PickCity("Hyderabad")));
}

TEST_F(PlaceStore, ANameWithAnApostropheBreaksItsQuery)
{
    EXPECT_THROW(editor->PickCity("O'Higgins"), DatabaseError);
    EXPECT_THROW(editor->DeleteCountry("Cote d'Ivoire"), DatabaseError);
    CityFields c;
    c.City = "Yamoussoukro";
    c.Country = "Cote d'Ivoire";
    EXPECT_THROW(editor->SaveCity(c), DatabaseError);
    EXPECT_THROW(editor->Cities("Cote d'Ivoire"), DatabaseError);
    EXPECT_EQ(Count("SELECT * FROM City"), 4);
}

}  // namespace
