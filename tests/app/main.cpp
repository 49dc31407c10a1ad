// The desktop tests run in one application object, offscreen unless told
// otherwise, prepared as the program prepares itself.
#include <gtest/gtest.h>

#include <QApplication>

#include "data/data_tree.h"
#include "ranvel/app/startup.h"

namespace {

// The desktop's tests run on copies of the installation that the build
// makes; without a build folder there is nothing to run them on, and the
// program says so instead of failing test by test.
class BuildTree : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (ranvel::testing::BuildDir().empty() || ranvel::testing::SourceDir().empty())
            GTEST_SKIP() << "These tests need the data tree of a build: run them through ctest in the build "
                            "folder, or set RANVEL_TEST_TMP to <build folder>/test-tmp.";
    }
};

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new BuildTree);
    ranvel::RanvelApplication app(argc, argv);
    ranvel::PrepareApplication(app);
    return RUN_ALL_TESTS();
}
