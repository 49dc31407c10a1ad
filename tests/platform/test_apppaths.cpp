#include "ranvel/platform/apppaths.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
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

// An installation the user may not write to: the user's files are copied
// once into the per-user folder and used from there; what the user changed
// there survives a new installation, and program data stays where it is.
TEST(AppPaths, UserFilesOfAnInstalledCopyLiveInThePerUserFolder)
{
    const fs::path root = testing::ScratchDir();
    const fs::path app = root / "app";
    testing::WriteFile(app / "EPHE" / "COMMON" / "RECOS.Dat", "persons v1");
    testing::WriteFile(app / "EPHE" / "COMMON" / "LANGS.Dat", "langs v1");
    testing::WriteFile(app / "EPHE" / "COMMON" / "MUHU.DAT", "catalogue");
    testing::WriteFile(app / "DATA" / "INIFILES" / "GENDAT.INI", "[Ranvel]\nSelLang=0\n");
    testing::WriteFile(app / "DATA" / "INIFILES" / "THEME1.ini", "[THEME]\n");
    const char* old = std::getenv("XDG_DATA_HOME");
    const std::string saved = old ? old : "";
    setenv("XDG_DATA_HOME", (root / "data").c_str(), 1);
    SetAppDir(app.string());
    SetUserDataMode(1);

    const fs::path user = root / "data" / "ranvel";
    EXPECT_EQ(UserDataDir(), user.string());
    EXPECT_EQ(AppPath("EPHE\\COMMON\\RECOS.Dat"), (user / "EPHE/COMMON/RECOS.Dat").string());
    EXPECT_EQ(AppPath("DATA/INIFILES/GENDAT.INI"), (user / "DATA/INIFILES/GENDAT.INI").string());
    EXPECT_EQ(AppPath("EPHE\\COMMON\\MUHU.DAT"), (app / "EPHE/COMMON/MUHU.DAT").string());
    EXPECT_EQ(testing::ReadFile(user / "DATA/INIFILES/THEME1.ini"), "[THEME]\n");

    // The user saves a person and deletes a theme; a new build of the
    // installation changes every file.
    testing::WriteFile(user / "EPHE/COMMON/RECOS.Dat", "persons of the user");
    fs::remove(user / "DATA/INIFILES/THEME1.ini");
    testing::WriteFile(app / "EPHE" / "COMMON" / "RECOS.Dat", "persons v2");
    testing::WriteFile(app / "DATA" / "INIFILES" / "THEME1.ini", "[THEME]\nnew\n");
    testing::WriteFile(app / "EPHE" / "COMMON" / "LANGS.Dat", "langs v2");
    fs::last_write_time(app / "EPHE/COMMON/LANGS.Dat", fs::file_time_type::clock::now() + std::chrono::hours(1));
    SetAppDir(app.string());  // the next start
    AppPath("EPHE/COMMON/LANGS.Dat");
    EXPECT_EQ(testing::ReadFile(user / "EPHE/COMMON/RECOS.Dat"), "persons of the user");
    EXPECT_FALSE(fs::exists(user / "DATA/INIFILES/THEME1.ini"));
    EXPECT_EQ(testing::ReadFile(user / "EPHE/COMMON/LANGS.Dat"), "langs v2");

    // Once the per-user folder serves this installation it keeps serving
    // it, though the installation may be written again: the persons saved
    // there never hide behind the installation's own copy.
    SetUserDataMode(-1);
    ASSERT_EQ(::access(app.c_str(), W_OK), 0);
    EXPECT_TRUE(UsesUserDataDir());
    EXPECT_EQ(AppPath("EPHE/COMMON/RECOS.Dat"), (user / "EPHE/COMMON/RECOS.Dat").string());
    // Another installation that can be written keeps its files beside it.
    const fs::path other = root / "other";
    testing::WriteFile(other / "EPHE" / "COMMON" / "RECOS.Dat", "persons elsewhere");
    SetAppDir(other.string());
    EXPECT_FALSE(UsesUserDataDir());
    SetAppDir(app.string());

    // An installation for every user keeps its users' files out of it even
    // for one who may write there.
    testing::WriteFile(other / "INSTALLED", "for every user\n");
    SetAppDir(other.string());
    EXPECT_TRUE(UsesUserDataDir());
    SetAppDir(app.string());

    SetUserDataMode(0);
    EXPECT_EQ(AppPath("EPHE/COMMON/RECOS.Dat"), (app / "EPHE/COMMON/RECOS.Dat").string());
    SetUserDataMode(-1);
    if (old) setenv("XDG_DATA_HOME", saved.c_str(), 1);
    else unsetenv("XDG_DATA_HOME");
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
