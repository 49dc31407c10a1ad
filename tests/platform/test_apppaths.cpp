#include "ranvel/platform/apppaths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/scratch.h"

namespace ranvel {
namespace {

namespace fs = std::filesystem;

TEST(AppPaths, DataPathsMatchTheDiskWithoutRegardToCase)
{
    const fs::path app = testing::ScratchDir();
    SetAppDir(app.string() + "/");
    EXPECT_EQ(AppDir(), app.string());
    testing::WriteFile(app / "EPHE" / "COMMON" / "MUHU.DAT", "x");
    testing::WriteFile(app / "EPHE" / "COMMON" / "LANGS.Dat", "x");
    testing::WriteFile(app / "EPHE" / "English" / "ENGLISH.Dat", "x");

    const std::string common = (app / "EPHE" / "COMMON").string();
    EXPECT_EQ(AppPath("EPHE\\COMMON\\MUHU.DAT"), common + "/MUHU.DAT");
    EXPECT_EQ(AppPath("ephe/common/muhu.dat"), common + "/MUHU.DAT");
    EXPECT_EQ(AppPath("EPHE\\COMMON\\LANGS.DAT"), common + "/LANGS.Dat");
    EXPECT_EQ(AppPath("EPHE\\ENGLISH\\ENGLISH.DAT"), (app / "EPHE" / "English" / "ENGLISH.Dat").string());
    EXPECT_EQ(AppPath("EPHE\\COMMON\\"), common + "/");
    // Missing parts keep the spelling they were given.
    EXPECT_EQ(AppPath("EPHE\\Hindi\\HINDI.DAT"), (app / "EPHE" / "Hindi" / "HINDI.DAT").string());
    EXPECT_EQ(AppPath("/etc/hostname"), "/etc/hostname");

    EXPECT_TRUE(FileExists(AppPath("EPHE\\COMMON\\muhu.dat")));
    EXPECT_FALSE(FileExists(AppPath("EPHE\\COMMON\\RECOS.Dat")));
    EXPECT_FALSE(FileExists(AppPath("EPHE\\COMMON")));  // a folder is not a file
    SetAppDir("");
}

TEST(AppPaths, CommandLineBeatsEnvironmentBeatsProgramFolder)
{
    unsetenv("RANVEL_APP_DIR");
    const std::string own = fs::read_symlink("/proc/self/exe").parent_path().string();
    EXPECT_EQ(AppDir(), own);
    setenv("RANVEL_APP_DIR", "/opt/ranvel", 1);
    EXPECT_EQ(AppDir(), "/opt/ranvel");
    SetAppDir("/srv/ranvel");
    EXPECT_EQ(AppDir(), "/srv/ranvel");
    SetAppDir("");
    EXPECT_EQ(AppDir(), "/opt/ranvel");
    unsetenv("RANVEL_APP_DIR");
}

}  // namespace
}  // namespace ranvel
