#include "ranvel/platform/sinks.h"

#include <gtest/gtest.h>

namespace ranvel {
namespace {

TEST(Sinks, HeadlessMessagesAreKeptAndAnsweredWithTheFirstButton)
{
    HeadlessMessageSink sink(true);
    SetMessageSink(&sink);
    EXPECT_EQ(MsgBox("Item Not Found 'x' in  'Gen'"), MsgAnswer::OK);
    EXPECT_EQ(MsgBox("Do you really want to exit?", MsgButtons::YesNo), MsgAnswer::Yes);
    EXPECT_EQ(MsgBox("?", MsgButtons::AbortRetryIgnore), MsgAnswer::Abort);
    EXPECT_EQ(MsgBox("?", MsgButtons::RetryCancel), MsgAnswer::Retry);
    EXPECT_EQ(MsgBox("?", MsgButtons::OKCancel, "Country Not Found", MsgIcon::Exclamation), MsgAnswer::OK);
    sink.SetAnswer(MsgAnswer::No);
    EXPECT_EQ(MsgBox("Do you really want to exit?", MsgButtons::YesNo), MsgAnswer::No);

    ASSERT_EQ(sink.Messages().size(), 6u);
    EXPECT_EQ(sink.Messages()[0].title, "Ranvel");
    EXPECT_EQ(sink.Messages()[0].text, "Item Not Found 'x' in  'Gen'");
    EXPECT_EQ(sink.Messages()[4].title, "Country Not Found");
    EXPECT_EQ(sink.Messages()[4].icon, MsgIcon::Exclamation);

    SetMessageSink(nullptr);
    EXPECT_NE(&Messages(), &sink);
}

TEST(Sinks, HeadlessProgressKeepsItsSteps)
{
    HeadlessProgressSink sink;
    SetProgressSink(&sink);
    Progress().Progress("Searching", "01/01/2024", 40);
    Progress().Progress("Searching", "02/01/2024", 140);
    Progress().Done();
    ASSERT_EQ(sink.Steps().size(), 2u);
    EXPECT_EQ(sink.Steps()[0].detail, "01/01/2024");
    EXPECT_EQ(sink.Steps()[1].percent, 100);
    SetProgressSink(nullptr);
    EXPECT_NE(&Progress(), &sink);
}

}  // namespace
}  // namespace ranvel
