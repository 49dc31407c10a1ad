// The start: its checks end the program or let it go on, the splash loads
// the main window once, and the program's own fonts are there for it.
#include <QLabel>
#include <QListWidget>
#include <clocale>
#include <filesystem>
#include <fstream>

#include "app/app_fixture.h"
#include "ranvel/app/frmFontsError.h"
#include "ranvel/app/frmSplash.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/app/startup.h"
#include "ranvel/data/messages.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/platform/gui/fonts.h"

namespace ranvel::test {
namespace {

using Startup = AppTest;

TEST_F(Startup, AMissingDataFileEndsTheStartWithItsName)
{
    std::filesystem::remove(app / "EPHE/COMMON/SCRASI.DAT");
    EXPECT_FALSE(frmSplash::DoLoad());
    ASSERT_EQ(messages.Messages().size(), 1u);
    // The name is given below the application folder, as the program has
    // always written it.
    EXPECT_EQ(messages.Messages()[0].text,
              "File '" + AppDir() + "\\COMMON\\SCRASI.DAT' Was Not Found.\nPlease Re-Install.");
    EXPECT_EQ(MainWindow(), nullptr);

    // A file that is there but empty passes: only its name is looked for.
    std::ofstream(app / "EPHE/COMMON/SCRASI.DAT").close();
    EXPECT_TRUE(frmSplash::DoLoad());
    EXPECT_NE(MainWindow(), nullptr);
}

TEST_F(Startup, ADamagedStoreIsPutBackAndAMissingLanguageEndsTheStart)
{
    // The first start keeps a copy; the store then goes bad (an empty file).
    RecosDB().reset();
    ASSERT_TRUE(frmSplash::DoLoad());
    const std::string store = EphePath("COMMON\\RECOS.Dat");
    ASSERT_TRUE(std::filesystem::exists(store + ".1"));
    RecosDB().reset();
    std::ofstream(store, std::ios::trunc).close();
    messages.Clear();
    ASSERT_TRUE(frmSplash::DoLoad());
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_NE(messages.Messages()[0].text.find("has been put back"), std::string::npos);
    EXPECT_TRUE(RecosDB()->HasTable("Country"));

    // Without the language's database there are no words to show.
    RecosDB().reset();
    std::filesystem::remove(app / "EPHE/ENGLISH/ENGLISH.DAT");
    messages.Clear();
    EXPECT_FALSE(frmSplash::DoLoad());
    ASSERT_FALSE(messages.Messages().empty());
    EXPECT_EQ(messages.Messages().back().text,
              "File '" + AppDir() + "\\ENGLISH\\ENGLISH.DAT' Was Not Found.\nPlease Re-Install.");
}

TEST_F(Startup, TheSplashLoadsTheMainWindowOnce)
{
    frmSplash::SplashDone() = false;
    auto* splash = new frmSplash;
    ASSERT_TRUE(splash->Load());
    EXPECT_TRUE(frmSplash::SplashDone());
    mdiMother* first = MainWindow();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(splash->findChild<QLabel*>("lblVerNo")->text().left(8), "Release ");

    // A second load of the splash runs nothing again.
    auto* again = new frmSplash;
    std::filesystem::remove(app / "EPHE/COMMON/SCRASI.DAT");
    EXPECT_TRUE(again->Load());
    EXPECT_EQ(MainWindow(), first);
    EXPECT_TRUE(messages.Messages().empty());
    frmSplash::SplashDone() = false;
}

TEST_F(Startup, ANarrowScreenIsWarnedOfUnlessSHOWERRORSaysNo)
{
    CheckDisplay(1024);
    EXPECT_TRUE(messages.Messages().empty());
    CheckDisplay(640);
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, Msg(14));
    EXPECT_EQ(messages.Messages()[0].text, Msg(13));
    // The start goes on either way; with SHOWERROR false there is no word.
    WriteIni(keys::ShowError, "False");
    CheckDisplay(640);
    EXPECT_EQ(messages.Messages().size(), 1u);
}

TEST_F(Startup, AFaultThatACommandLetsThroughEndsTheCommandNotTheProgram)
{
    // The tests run in the desktop's own application object; its notify is
    // called here as the event loop calls it.
    struct Thrower : QObject {
        bool event(QEvent*) override { throw std::runtime_error("near \"Brien\": syntax error"); }
    } thrower;
    QEvent poke(QEvent::User);
    auto* desktop = dynamic_cast<RanvelApplication*>(QCoreApplication::instance());
    ASSERT_NE(desktop, nullptr);
    EXPECT_FALSE(desktop->notify(&thrower, &poke));
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].text, "near \"Brien\": syntax error");
}

TEST_F(Startup, DecimalCommaMachinesPassTheRegionalCheck)
{
    const std::string saved = std::setlocale(LC_ALL, nullptr);
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) GTEST_SKIP() << "no locale with a decimal comma here";
    char probe[16];
    std::snprintf(probe, sizeof probe, "%.1f", 5.3);
    EXPECT_STREQ(probe, "5,3");  // the machine really writes a comma
    EXPECT_TRUE(CheckRegionalSettings());
    EXPECT_TRUE(messages.Messages().empty());
    std::setlocale(LC_ALL, saved.c_str());
}

TEST_F(Startup, TheProgramsFontsAreRegisteredForItAlone)
{
    EXPECT_TRUE(CheckFonts().empty());
    for (const DisplayFont& f : DisplayFonts()) EXPECT_TRUE(FontFamilyAvailable(f.name)) << f.name;
    EXPECT_FALSE(RegisterFontFile((app / "EPHE/Fonti/NOSUCH.IFT").string()));
    EXPECT_FALSE(RegisterFontFile((app / "EPHE/COMMON/LANGS.Dat").string()));

    frmFontsError dialog({"Ranvel Bangla", "Astro 571"});
    EXPECT_EQ(dialog.windowTitle(), "Font Installation Failure");
    auto* list = dialog.findChild<QListWidget*>("lstFonts");
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(1)->text(), "Error installing font: 'Astro 571'");
    const QString text = dialog.findChild<QLabel*>("lblMessage")->text();
    EXPECT_TRUE(text.startsWith("Some Fonts are not installed.\n\nRanvel May not be able"));
    EXPECT_TRUE(text.endsWith("install the fontsl.\n\nTo continue running the software, click 'Proceed.'"));
}

}  // namespace
}  // namespace ranvel::test
