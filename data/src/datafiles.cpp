#include "ranvel/data/datafiles.h"

#include "ranvel/data/cityzones.h"

#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/ini.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {

std::shared_ptr<Database>& RecosDB()
{
    static std::shared_ptr<Database> db;
    return db;
}

std::shared_ptr<Database>& TextDB()
{
    static std::shared_ptr<Database> db;
    return db;
}

int& Horomode()
{
    static int mode = 3;
    return mode;
}

LanguageSettings& LangSettings()
{
    static LanguageSettings s;
    return s;
}

std::string EphePath(const std::string& relativeName) { return AppPath("EPHE\\" + relativeName); }

bool FileInEphe(const std::string& relativeName) { return FileExists(EphePath(relativeName)); }

void CheckDataFile(const std::string& relativeName)
{
    if (!FileInEphe(relativeName)) throw FileAccessError(relativeName, EphePath(relativeName));
}

void CheckStartupFiles()
{
    CheckDataFile("COMMON\\RECOS.Dat");
    RecosDB() = Database::Open(EphePath("COMMON\\RECOS.Dat"));
    // A store of yours made before the cities carried their zones takes
    // them from the installation's.
    if (UsesUserDataDir()) {
        try {
            AddCityZones(*RecosDB(), ResolvePath(AppDir(), "EPHE/COMMON/RECOS.Dat"));
        } catch (const std::exception&) {
            // Left without zones: the offsets typed stand, as they always did.
        }
    }
    for (const char* name : {"COMMON\\CONYEAR.DAT", "COMMON\\SADESAT.Dat", "COMMON\\SCGRAHA.DAT", "COMMON\\SCRASI.DAT",
                             "COMMON\\SCYONI.DAT", "COMMON\\LANGS.Dat", "COMMON\\RECOS.Dat", "COMMON\\WAIT.AVI"})
        CheckDataFile(name);
}

void ApplyLanguageRow(Recordset& row)
{
    LanguageSettings& s = LangSettings();
    auto num = [&](const char* f) { return row.Field(f).ToLong(); };
    auto yes = [&](const char* f) { return row.Field(f).ToBool(); };
    s.HeaderSize = num("HeaderSize");
    s.NormalSize = num("NormalSize");
    s.HeadBold = yes("HeadBold");
    s.SubHeadSize = num("SubHeadSize");
    s.SubHeadBold = yes("SubHeadBold");
    s.KundliSize = num("KundliSize");
    s.EngSize = num("EngSize");
    s.SmallSize = num("SmallSize");
    s.TextSize = num("TextSize");
    s.TextHeadSize = num("TextHeadSize");
    s.Extended = yes("Extended");
    s.LangDir = row.Field("directory").ToText();
    s.LangName = row.Field("Name").ToText();
    // A language row carries no family: every family is the same face.
    s.headerfont = s.NormalFont = s.SubHeadFont = s.KundliFont = s.EngFont = s.SmallFont = "Arial";
}

void OpenTextDatabase()
{
    const std::string& dir = LangSettings().LangDir;
    std::string path = EphePath(dir + "\\" + dir + ".DAT");
    if (!FileExists(path)) {
        MsgBox("Could Not Locate Data File For This Language.\nPlease Re-install Software.", MsgButtons::OK,
               "File Not Found", MsgIcon::Exclamation);
        return;
    }
    TextDB() = Database::Open(EphePath(dir + "\\" + dir + ".Dat"));
}

void RefreshLanguageInclude()
{
    Progress().Progress("Checking Languages...", "", 0);
    auto langs = Database::Open(EphePath("COMMON\\LANGS.Dat"));
    auto rs = langs->OpenRecordset("SELECT * FROM LANGUAGE");
    while (!rs->IsEOF()) {
        std::string dir = rs->Field("directory").ToTextOrEmpty();
        bool present = FileInEphe(dir + "\\" + dir + ".DAT");
        rs->Edit();
        rs->SetField("Include", present ? -1 : 0);
        rs->Update();
        rs->MoveNext();
    }
}

void LanguageList::Fill()
{
    langs_ = Database::Open(EphePath("COMMON\\LANGS.Dat"));
    muhu_ = Database::Open(EphePath("COMMON\\MUHU.DAT"));  // the form holds the catalogue from here on
    rows_ = langs_->OpenRecordset("SELECT * FROM Language ORDER BY Name");
    items_.clear();
    index_ = -1;
    // Other languages are kept in the table but not offered.
    for (rows_->HasRows() ? rows_->MoveFirst() : void(); !rows_->IsEOF(); rows_->MoveNext()) {
        std::string name = rows_->Field("Name").ToTextOrEmpty();
        Variant include = rows_->Field("Include");
        bool included = include.IsNull() || include.ToBool();
        if (name == "English" && included) items_.push_back(name);
    }
    if (items_.empty()) return;
    // Taken as a list index: rounded to a whole number; -1 selects nothing.
    double saved = vb::Val(clsIni().GetIniString("SelLang", "0", "", ""));
    int last = static_cast<int>(items_.size()) - 1;
    int index = saved <= last ? vb::CLng(saved) : 0;
    if (index == -1) return;
    if (index < -1) throw vb::RuntimeError("Invalid property value");
    Select(index);
}

void LanguageList::Select(int index)
{
    if (index < 0 || index >= static_cast<int>(items_.size())) throw vb::RuntimeError("Invalid property value");
    index_ = index;
    const std::string& name = items_[static_cast<std::size_t>(index)];
    rows_ = langs_->OpenRecordset("SELECT * FROM Language WHERE Name = '" + name + "'");
    rows_->MoveFirst();
    ApplyLanguageRow(*rows_);
    if (Horomode() == 1 || Horomode() == 2) OpenTextDatabase();
    clsIni().WriteIniString("SelLang", vb::CStr(index), "", "");
    rows_->MoveFirst();
    ApplyLanguageRow(*rows_);
    OpenTextDatabase();
    LangSettings().LangName = name;
}

}  // namespace ranvel
