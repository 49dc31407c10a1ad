// Shared set-up of the desktop tests: a copy of the built installation in a
// scratch folder of the test's own, settings in memory (the setup counted as
// done), quiet sinks that keep what they were given, and common dialogs that
// answer from a queue instead of asking.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <deque>
#include <filesystem>
#include <string>

#include "data/data_tree.h"
#include "ranvel/app/startup.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/themes.h"
#include "ranvel/engine/request.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/dialogs.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/sinks.h"

namespace ranvel::test {

// Answers the file dialogs from queues and notes what was asked.
class QueuedDialogs : public CommonDialogs {
public:
    struct Asked {
        std::string title, filter, defaultExt, suggested;
    };
    std::deque<std::string> files;
    std::deque<QColor> colours;
    std::vector<Asked> asked;
    std::vector<std::string> opened;

    std::string OpenFile(QWidget*, const std::string& title, const std::string& filter) override
    {
        asked.push_back({title, filter, "", ""});
        return Next();
    }
    std::string SaveFile(QWidget*, const std::string& title, const std::string& filter, const std::string& ext,
                         const std::string& suggested) override
    {
        asked.push_back({title, filter, ext, suggested});
        return Next();
    }
    std::optional<QColor> Color(QWidget*, const QColor&) override
    {
        if (colours.empty()) return std::nullopt;
        QColor c = colours.front();
        colours.pop_front();
        return c;
    }
    bool OpenDocument(const std::string& path) override
    {
        opened.push_back(path);
        return true;
    }

private:
    std::string Next()
    {
        if (files.empty()) return {};
        std::string f = files.front();
        files.pop_front();
        return f;
    }
};

class AppTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        namespace fs = std::filesystem;
        RANVEL_REQUIRE_BUILD_TREE();
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        app = testing::BuildDir() / "test-tmp" / "app" / (std::string(info->test_suite_name()) + "." + info->name());
        fs::remove_all(app);
        const fs::path built = testing::BuiltTree();
        for (const char* dir : {"EPHE/COMMON", "EPHE/ENGLISH", "DATA/INIFILES"}) {
            fs::create_directories(app / dir);
            fs::copy(built / dir, app / dir, fs::copy_options::recursive);
        }
        fs::create_directory_symlink(built / "EPHE/Fonti", app / "EPHE/Fonti");
        if (fs::is_directory(built / "HELP")) fs::create_directory_symlink(built / "HELP", app / "HELP");
        SetAppDir(app.string());
        settings.Set("Settings", "DoneSetup", "True");
        SetSettingsStore(&settings);
        SetMessageSink(&messages);
        SetDialogs(&dialogs);
        CheckStartupFiles();
        RefreshLanguageInclude();
        ResetEngine(nullptr);
    }

    void TearDown() override
    {
        // The windows of the test; popups belong to the controls that made them.
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->windowType() != Qt::Popup && w->windowType() != Qt::ToolTip && !w->parent()) w->deleteLater();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ResetEngine(nullptr);
        SetDialogs(nullptr);
        SetMessageSink(nullptr);
        SetSettingsStore(nullptr);
        RecosDB().reset();
        TextDB().reset();
        SetAppDir("");
    }

    // What the result pages need before they are built, as the start and
    // the request form give it: the language, the colours, the fonts.
    static void PrepareResultPages()
    {
        LanguageList languages;
        languages.Fill();
        LoadActiveColors();
        EXPECT_TRUE(CheckFonts().empty());
    }

    // A control of a window by its name; a missing one fails the test.
    template <typename T = QWidget>
    static T* Child(QWidget* root, const char* name)
    {
        T* w = root->findChild<T*>(name);
        EXPECT_NE(w, nullptr) << name;
        return w;
    }

    // The titles of the message boxes shown so far.
    std::vector<std::string> Titles() const
    {
        std::vector<std::string> t;
        for (const Message& m : messages.Messages()) t.push_back(m.title);
        return t;
    }

    std::filesystem::path app;
    MemorySettingsStore settings;
    HeadlessMessageSink messages{true};
    QueuedDialogs dialogs;
};

// A person born in India at a place of the requests (New Delhi unless
// named), with the zone +05.30.
inline RequestPerson Born(const char* name, int sex, const char* date, const char* time, int ampm,
                          const char* city = "New Delhi", const char* lati = "028:36", const char* longi = "077:12")
{
    RequestPerson p;
    p.Name = name;
    p.Sex = sex;
    p.BDate = date;
    p.BTime = time;
    p.AMPM = ampm;
    p.Country = "India";
    p.City = city;
    p.Lati = lati;
    p.Longi = longi;
    p.GMT = "+05.30";
    return p;
}

// A marriage searched over ten days of November 2024 from 06.00 to 22.00 at
// New Delhi, for Arjun and Meera (born at Pune unless told).
inline MuhurthaRequest DelhiMarriage(const char* girlCity = "Pune", const char* girlLati = "018:31",
                                     const char* girlLongi = "073:51")
{
    MuhurthaRequest r;
    r.Category = "Marriage";
    r.MuhuName = "Marriage ceremony (Vivaha)";
    r.SearchMode = 1;
    r.MomentDate = r.FromDate = "01/11/2024";
    r.ToDate = "10/11/2024";
    r.FromTime = "06.00";
    r.ToTime = "22.00";
    r.Place = {"India", "New Delhi", "028:36", "077:12", "N", "E", "+05.30"};
    r.Boy = Born("Arjun", 1, "14/08/1994", "09.20", 1);
    r.Girl = Born("Meera", 2, "03/02/1996", "17.45", 2, girlCity, girlLati, girlLongi);
    return r;
}

}  // namespace ranvel::test
