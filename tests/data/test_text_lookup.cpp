// Text lookup: by head and category, the missing-row message, Null values,
// the numbered tables and the kept separators.
#include <gtest/gtest.h>

#include "ranvel/data/messages.h"
#include "ranvel/data/textlookup.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;

class TextLookup : public ::testing::Test {
protected:
    void SetUp() override
    {
        SetMessageSink(&sink);
        ResetSymbolCache();
        db = Database::Create(":memory:");
        db->ExecuteScript(
            "CREATE TABLE CNVT (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
            "CREATE TABLE Muhu (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
            "CREATE TABLE Daily (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
            "CREATE TABLE YOGAS (Head TEXT COLLATE NOCASE, Val TEXT);"
            "INSERT INTO CNVT VALUES ('1','Aries','Rashi'),('1','Sunday','DAY'),('Nil',NULL,'Gen'),(':','^','Symbols');"
            "INSERT INTO Muhu VALUES ('TITHIGOOD','A good tithi.','MUHUPRED'),('Gap',NULL,'MUHUPRED');"
            "INSERT INTO Daily VALUES ('Gap',NULL,'Day');");
    }
    void TearDown() override
    {
        SetMessageSink(nullptr);
        ResetSymbolCache();
    }
    HeadlessMessageSink sink{true};
    std::shared_ptr<Database> db;
};

TEST_F(TextLookup, ByHeadAndCategory)
{
    EXPECT_EQ(GetTextBetween(db.get(), "CNVT", 1, "Rashi").ToText(), "Aries");
    EXPECT_EQ(GetTextBetween(db.get(), "cnvt", "1", "day").ToText(), "Sunday");  // names compare without case
    // No category: any row of the head answers, the first in table order.
    EXPECT_EQ(GetTextBetween(db.get(), "CNVT", 1, "").ToText(), "Aries");
    EXPECT_TRUE(sink.Messages().empty());
}

TEST_F(TextLookup, AMissingRowSpeaksAndGivesEmpty)
{
    Variant v = GetTextBetween(db.get(), "CNVT", 13, "Rashi");
    EXPECT_TRUE(v.IsEmpty());
    ASSERT_EQ(sink.Messages().size(), 1u);
    EXPECT_EQ(sink.Messages()[0].text, "Item Not Found '13' in  'Rashi'");
    // A Null Val is empty without a word.
    EXPECT_EQ(GetTextBetween(db.get(), "CNVT", "Nil", "Gen").ToTextOrEmpty(), "");
    EXPECT_EQ(GetGenText(db.get(), "Nil"), "");
    EXPECT_EQ(sink.Messages().size(), 1u);
    // A head with an apostrophe breaks the query: no escaping.
    EXPECT_THROW(GetTextBetween(db.get(), "CNVT", "O'Neil", "Gen"), DatabaseError);
    EXPECT_THROW(GetTextBetween(nullptr, "CNVT", 1, "Rashi"), vb::RuntimeError);
}

TEST_F(TextLookup, NumberedTables)
{
    EXPECT_EQ(GetHeadValue(db.get(), 10, "TITHIGOOD", "MUHUPRED").ToText(), "A good tithi.");
    EXPECT_EQ(GetHeadValue(db.get(), 1, 1, "Rashi").ToText(), "Aries");
    // Only the daily texts guard a Null; elsewhere it is an error.
    EXPECT_EQ(GetHeadValue(db.get(), 11, "Gap", "Day").ToText(), "");
    EXPECT_TRUE(GetHeadValue(db.get(), 10, "Gap", "MUHUPRED").IsNull());
    // Unknown modes are silent.
    EXPECT_TRUE(GetHeadValue(db.get(), 0, 1, "Rashi").IsEmpty());
    EXPECT_TRUE(GetHeadValue(db.get(), 13, 1, "Rashi").IsEmpty());
    EXPECT_TRUE(sink.Messages().empty());
    // A missing yoga text names an empty category all the same.
    EXPECT_TRUE(GetHeadValue(db.get(), 2, "Rare", "Kind").IsEmpty());
    ASSERT_EQ(sink.Messages().size(), 1u);
    EXPECT_EQ(sink.Messages()[0].text, "Item Not Found 'Rare' in  'Kind'");
}

TEST_F(TextLookup, SeparatorsAreLookedUpOnce)
{
    EXPECT_EQ(GetSymbolText(1, db.get()), "^");
    EXPECT_EQ(GetSymbolText(2, db.get()), "^");
    db->Execute("DELETE FROM CNVT WHERE Category = 'Symbols'");
    EXPECT_EQ(GetSymbolText(1, db.get()), "^");  // kept for the run
    EXPECT_EQ(GetSymbolText(9, db.get()), "");
    EXPECT_EQ(Msg(2), "Item Not Found");
    EXPECT_EQ(Msg(126), "Erro Printing!");
    EXPECT_EQ(Msg(15), "");
}
