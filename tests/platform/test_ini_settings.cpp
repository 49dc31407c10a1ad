#include <gtest/gtest.h>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/scratch.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/ini.h"
#include "ranvel/platform/settings.h"

namespace ranvel {
namespace {

using testing::ReadFile;
using testing::ScratchDir;
using testing::WriteFile;

const char* kSample =
    "; colours of the chart\n"
    "[Ranvel]\n"
    "SelLang=0\n"
    "DispName =  \"  Tessaly  \"  \n"
    "\n"
    "[KUNCOLOR]\n"
    "KunBackColor = 16777215\n"
    "KunLineColor=0\n"
    "\n"
    "[Other]\n"
    "x=1\n";

TEST(Ini, ReadsWithoutRegardToCaseAndFallsBackToDefault)
{
    const std::string file = (ScratchDir() / "GENDAT.INI").string();
    WriteFile(file, kSample);
    clsIni ini;
    EXPECT_EQ(ini.GetIniString("kunbackcolor", "", "kuncolor", file), "16777215");
    EXPECT_EQ(ini.GetIniString("SELLANG", "9", "", file), "0");  // empty section is the title
    EXPECT_EQ(ini.GetIniString("DispName", "", "Ranvel", file), "  Tessaly  ");  // quotes keep inner blanks
    EXPECT_EQ(ini.GetIniString("x", "d", "KUNCOLOR", file), "d");
    EXPECT_EQ(ini.GetIniString("Missing", "d", "Other", file), "d");
    EXPECT_EQ(ini.GetIniString("x", "d", "NoSection", file), "d");
    EXPECT_EQ(ini.GetIniString("x", "d", "Other", file + ".gone"), "d");

    ini.WriteIniString("DispAdd", std::string(300, 'a'), "", file);
    EXPECT_EQ(ini.GetIniString("DispAdd", "", "", file), std::string(255, 'a'));
    EXPECT_EQ(ini.GetIniString("Nothing", std::string(300, 'b'), "", file).size(), 255u);
}

TEST(Ini, WritesChangeOneLineAndKeepTheRest)
{
    const std::string file = (ScratchDir() / "GENDAT.INI").string();
    WriteFile(file, kSample);
    clsIni ini;
    ini.WriteIniString("KUNBACKCOLOR", "255", "kuncolor", file);   // in place, spelling kept
    ini.WriteIniString("KunTxtColor", "128", "KunColor", file);    // added to its section
    ini.WriteIniString("Kundstyle", "1", "Init", file);            // new section at the end
    EXPECT_EQ(ReadFile(file),
              "; colours of the chart\n"
              "[Ranvel]\n"
              "SelLang=0\n"
              "DispName =  \"  Tessaly  \"  \n"
              "\n"
              "[KUNCOLOR]\n"
              "KunBackColor = 255\n"
              "KunLineColor=0\n"
              "KunTxtColor=128\n"
              "\n"
              "[Other]\n"
              "x=1\n"
              "\n"
              "[Init]\n"
              "Kundstyle=1\n");
    EXPECT_EQ(ini.GetIniString("KundStyle", "2", "INIT", file), "1");

    // Line ends of a file written elsewhere stay as they were.
    WriteFile(file, "[Ranvel]\r\nSelLang=0\r\n");
    ini.WriteIniString("SelLang", "1", "", file);
    ini.WriteIniString("DispName", "Asha", "", file);
    EXPECT_EQ(ReadFile(file), "[Ranvel]\r\nSelLang=1\r\nDispName=Asha\r\n");
}

TEST(Ini, AnUnchangedValueIsNotWrittenAndAFolderIsNoFile)
{
    namespace fs = std::filesystem;
    const fs::path dir = ScratchDir();
    const std::string file = (dir / "GENDAT.INI").string();
    ini::WriteValue(file, "Ranvel", "SelLang", "0");
    const auto before = fs::status(file).permissions();
    struct stat first {};
    ASSERT_EQ(::stat(file.c_str(), &first), 0);
    // The same value again: the file is the same file, not a new one put
    // in its place.
    ini::WriteValue(file, "Ranvel", "SelLang", "0");
    struct stat again {};
    ASSERT_EQ(::stat(file.c_str(), &again), 0);
    EXPECT_EQ(first.st_ino, again.st_ino);
    ini::WriteValue(file, "Ranvel", "SelLang", "1");
    ASSERT_EQ(::stat(file.c_str(), &again), 0);
    EXPECT_NE(first.st_ino, again.st_ino);
    EXPECT_EQ(fs::status(file).permissions(), before);

    // A folder where the file should be: a message that says so.
    const std::string folder = (dir / "FOLDER.INI").string();
    fs::create_directories(folder);
    try {
        ini::ReadValue(folder, "Ranvel", "SelLang");
        FAIL() << "a folder was read as settings";
    } catch (const std::exception& e) {
        EXPECT_NE(std::string(e.what()).find("is a folder"), std::string::npos) << e.what();
    }
    EXPECT_ANY_THROW(ini::WriteValue(folder, "Ranvel", "SelLang", "0"));
    EXPECT_TRUE(fs::is_directory(folder));
}

TEST(Ini, AKillInTheMiddleOfAWriteLeavesTheOldFileWhole)
{
    const std::string file = (ScratchDir() / "GENDAT.INI").string();
    // Long values, so that a write takes long enough to be cut.
    const std::string a(200000, 'a'), b(200000, 'b');
    ini::WriteValue(file, "Ranvel", "Note", a);
    std::srand(7);
    for (int round = 0; round < 12; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int i = 0;; ++i) ini::WriteValue(file, "Ranvel", "Note", i % 2 ? a : b);
        }
        usleep(static_cast<useconds_t>(1000 + std::rand() % 20000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string note = ini::ReadValue(file, "Ranvel", "Note").value_or("");
        EXPECT_TRUE(note == a || note == b) << "round " << round << ": " << note.size() << " characters";
    }
}

TEST(Ini, FileNamesResolveBelowTheInstallation)
{
    const auto app = ScratchDir();
    SetAppDir(app.string());
    WriteFile(app / "data" / "IniFiles" / "gendat.ini", "[RANVEL]\nSelLang=3\n");
    clsIni ini;
    EXPECT_EQ(clsIni::IniPath(""), (app / "data" / "IniFiles" / "gendat.ini").string());
    EXPECT_EQ(ini.GetIniString("SelLang", "0", "", ""), "3");

    ini.WriteIniString("Mode", "A4", "Page", "PAGESET.INI");  // a new file beside it
    EXPECT_TRUE(FileExists((app / "data" / "IniFiles" / "PAGESET.INI").string()));
    ini.WriteIniString("k", "v", "s", "THEMES\\DARK.INI");    // a relative path is below <app>
    EXPECT_TRUE(FileExists((app / "THEMES" / "DARK.INI").string()));
    SetAppDir("");
}

TEST(Settings, IniStoreRoundTripsAnyValueUnderOddSections)
{
    const std::string file = (ScratchDir() / "conf" / "Ranvel" / "settings.ini").string();
    IniSettingsStore store(file);
    EXPECT_FALSE(store.Get("Init", "AyanType"));
    store.Set("Init", "Kundstyle", "0");
    store.Set("Settings`", "StartDir", "/home/asha/My Kundlis");
    store.Set("Settings", "StartDir", "elsewhere");
    store.Set("Init", "CustAyan", "  23.30 ");
    store.Set("Init", "Quoted", "\"x\"");
    EXPECT_EQ(store.Get("init", "KundStyle"), "0");
    EXPECT_EQ(store.Get("Settings`", "startdir"), "/home/asha/My Kundlis");
    EXPECT_EQ(store.Get("Settings", "StartDir"), "elsewhere");
    EXPECT_EQ(store.Get("Init", "CustAyan"), "  23.30 ");
    EXPECT_EQ(store.Get("Init", "Quoted"), "\"x\"");

    // The overlay reads through but never writes to the file below it.
    const std::string before = ReadFile(file);
    OverlaySettingsStore overlay(store);
    overlay.Set("INIT", "KUNDSTYLE", "2");
    overlay.Set("Settings", "DoneSetup", "True");
    EXPECT_EQ(overlay.Get("Init", "Kundstyle"), "2");
    EXPECT_EQ(overlay.Get("Settings`", "StartDir"), "/home/asha/My Kundlis");
    EXPECT_EQ(store.Get("Init", "Kundstyle"), "0");
    EXPECT_EQ(ReadFile(file), before);
}

TEST(Settings, ProcessWideStoreCanBeReplacedAndRestored)
{
    const char* home = std::getenv("HOME");
    const std::string savedHome = home ? home : "";
    setenv("XDG_CONFIG_HOME", "/xdg/conf", 1);
    EXPECT_EQ(IniSettingsStore::DefaultPath(), "/xdg/conf/Ranvel/settings.ini");
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", "/home/asha", 1);
    EXPECT_EQ(IniSettingsStore::DefaultPath(), "/home/asha/.config/Ranvel/settings.ini");
    setenv("HOME", savedHome.c_str(), 1);

    MemorySettingsStore memory;
    SetSettingsStore(&memory);
    EXPECT_EQ(GetSetting("Settings", "CalcVarMod", "1"), "1");
    SaveSetting("Settings", "CalcVarMod", "2");
    EXPECT_EQ(GetSetting("settings", "calcvarmod", "1"), "2");
    EXPECT_EQ(memory.Get("SETTINGS", "CALCVARMOD"), "2");
    SetSettingsStore(nullptr);
    EXPECT_NE(&Settings(), &memory);
    EXPECT_NE(dynamic_cast<IniSettingsStore*>(&Settings()), nullptr);
}

}  // namespace
}  // namespace ranvel
