// The data files of the installation and the choice of language: which
// files must exist, the process-wide database handles, and how a language
// row becomes the text database and the display settings.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ranvel/platform/database.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

// The process-wide handles: RECOS.Dat, opened once at start-up, and the
// text database of the applied language, replaced only by OpenTextDatabase.
std::shared_ptr<Database>& RecosDB();
std::shared_ptr<Database>& TextDB();

// The process-wide mode number; this system sets 3 (Muhurtha).
int& Horomode();

// A required data file that is missing: the file access error (number 75).
class FileAccessError : public vb::RuntimeError {
public:
    FileAccessError(const std::string& relativeName, const std::string& path)
        : vb::RuntimeError("Path/File access error: " + path), relativeName_(relativeName), path_(path)
    {
    }
    int Number() const { return 75; }
    const std::string& RelativeName() const { return relativeName_; }
    const std::string& Path() const { return path_; }

private:
    std::string relativeName_;
    std::string path_;
};

// <app>\EPHE\ + a relative name ("COMMON\RECOS.Dat"), found without regard
// to case.
std::string EphePath(const std::string& relativeName);
// True when <app>\EPHE\ + the name exists.
bool FileInEphe(const std::string& relativeName);
// Throws FileAccessError when <app>\EPHE\ + the name does not exist.
void CheckDataFile(const std::string& relativeName);
// The start-up checks in their order: RECOS.Dat (then opened as RecosDB),
// CONYEAR.DAT, SADESAT.Dat, SCGRAHA.DAT, SCRASI.DAT, SCYONI.DAT, LANGS.Dat,
// RECOS.Dat, WAIT.AVI. The first missing file ends them.
void CheckStartupFiles();

// The settings a language row carries, copied process-wide when the
// language is applied; the six font families are always "Arial".
struct LanguageSettings {
    int HeaderSize = 0;
    int NormalSize = 0;
    bool HeadBold = false;
    int SubHeadSize = 0;
    bool SubHeadBold = false;
    int KundliSize = 0;
    int EngSize = 0;
    int SmallSize = 0;
    int TextSize = 0;
    int TextHeadSize = 0;
    bool Extended = false;
    std::string LangDir;
    std::string LangName;
    std::string headerfont, NormalFont, SubHeadFont, KundliFont, EngFont, SmallFont;
};
LanguageSettings& LangSettings();

// Copies the current row of a Language recordset into LangSettings().
void ApplyLanguageRow(Recordset& row);

// Opens <app>\EPHE\<LangDir>\<LangDir>.DAT as TextDB. A missing file shows
// "Could Not Locate Data File For This Language." under "File Not Found"
// and TextDB stays as it was.
void OpenTextDatabase();

// Rewrites Include of every Language row: true exactly when the language's
// text database exists.
void RefreshLanguageInclude();

// The language list of the request form: only "English" is offered (when
// its row is included), and the saved index SelLang is restored.
class LanguageList {
public:
    // Opens LANGS.Dat, fills the list and, when it is not empty, restores
    // the selection (which applies the language and opens TextDB).
    void Fill();
    // Selects entry index: applies its row, saves SelLang, opens TextDB.
    void Select(int index);

    const std::vector<std::string>& Items() const { return items_; }
    int Index() const { return index_; }

private:
    std::shared_ptr<Database> langs_;
    std::shared_ptr<Database> muhu_;
    std::unique_ptr<Recordset> rows_;
    std::vector<std::string> items_;
    int index_ = -1;
};

}  // namespace ranvel
