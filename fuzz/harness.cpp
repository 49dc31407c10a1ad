#include "harness.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "csv.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/settings.h"

#ifndef RANVEL_SOURCE_DIR
#error "RANVEL_SOURCE_DIR names the source tree"
#endif

namespace fs = std::filesystem;

namespace ranvel::fuzz {

namespace {

std::string g_scratch;
bool g_ownScratch = false;
HeadlessMessageSink g_messages{true};
HeadlessProgressSink g_progress;
MemorySettingsStore g_settings;

void RemoveOwnScratch()
{
    if (!g_ownScratch) return;
    std::error_code ec;
    fs::remove_all(g_scratch, ec);
}

void Point(const char* variable, const std::string& relative)
{
    const std::string dir = ScratchPath(relative);
    fs::create_directories(dir);
    ::setenv(variable, dir.c_str(), 1);
}

}  // namespace

void Init()
{
    if (!g_scratch.empty()) return;
    if (const char* given = std::getenv("RANVEL_FUZZ_SCRATCH"); given && *given) {
        g_scratch = fs::absolute(given).string();
        fs::create_directories(g_scratch);
    } else {
        std::string templ = (fs::temp_directory_path() / "ranvel-fuzz-XXXXXX").string();
        if (!::mkdtemp(templ.data())) Fail("cannot make a scratch folder under " + fs::temp_directory_path().string());
        g_scratch = templ;
        g_ownScratch = true;
        std::atexit(RemoveOwnScratch);
    }
    // Whatever the core would write by default (the settings file, the
    // per-user copy of the data, SQLite's temporary files) lands in here.
    Point("HOME", "home");
    Point("XDG_CONFIG_HOME", "home/.config");
    Point("XDG_DATA_HOME", "home/.local/share");
    Point("TMPDIR", "tmp");
    fs::create_directories(ScratchPath("app"));
    SetAppDir(ScratchPath("app"));
    SetUserDataMode(0);
    SetSettingsStore(&g_settings);
    InstallSinks();
}

const std::string& ScratchDir() { return g_scratch; }

std::string ScratchPath(const std::string& relative)
{
    if (g_scratch.empty()) Fail("Init() was not called");
    fs::path p = fs::path(g_scratch) / relative;
    if (p.has_parent_path()) fs::create_directories(p.parent_path());
    return p.string();
}

std::shared_ptr<Database> ScratchDatabase(const std::string& relative, const std::string& sourceSql)
{
    const std::string path = ScratchPath(relative);
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) fs::remove(path + suffix);
    auto db = Database::Create(path);
    db->ExecuteScript(SourceText(sourceSql));
    return db;
}

void LoadRows(Database& db, const std::string& table, const std::string& sourceCsv)
{
    const makedata::CsvTable rows = makedata::ParseCsv(SourceText(sourceCsv), sourceCsv);
    for (const makedata::CsvRecord& record : rows.records) {
        std::vector<Variant> values;
        for (const makedata::CsvField& field : record.fields) values.push_back(field ? Variant(*field) : Variant::Null());
        db.InsertRow(table, rows.fields, values);
    }
}

std::shared_ptr<Database> ScratchCatalogue()
{
    auto db = ScratchDatabase("app/EPHE/COMMON/MUHU.DAT", "resources/db/muhu.sql");
    for (const char* table : {"Muhu", "Score", "MuhuConvert"})
        LoadRows(*db, table, std::string("resources/db/muhu/") + table + ".csv");
    return db;
}

std::string WriteScratchFile(const std::string& relative, const std::uint8_t* data, std::size_t size)
{
    const std::string path = ScratchPath(relative);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    if (!out) Fail("cannot write " + path);
    return path;
}

std::string ReadWholeFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) return {};
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

std::string SourceText(const std::string& relative)
{
    const std::string path = std::string(RANVEL_SOURCE_DIR) + "/" + relative;
    std::ifstream in(path, std::ios::binary);
    if (!in) Fail("cannot read " + path);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

HeadlessMessageSink& Messages() { return g_messages; }

void InstallSinks()
{
    SetMessageSink(&g_messages);
    SetProgressSink(&g_progress);
}

void Fail(const std::string& what)
{
    std::fprintf(stderr, "\n==== fuzz property failed: %s\n", what.c_str());
    std::fflush(stderr);
    std::abort();
}

std::vector<std::string> Lines(const std::uint8_t* data, std::size_t size, std::size_t count)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> parts;
    while (parts.size() + 1 < count) {
        std::size_t nl = text.find('\n');
        if (nl == std::string_view::npos) break;
        std::string_view line = text.substr(0, nl);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        parts.emplace_back(line);
        text.remove_prefix(nl + 1);
    }
    parts.emplace_back(text);
    parts.resize(count);
    return parts;
}

}  // namespace ranvel::fuzz
