// A person exchange file (.JKP or .JKD) as any bytes, merged as the request
// form merges one, each row checked by the person record, into a scratch
// RECOS.Dat made from the project's own schema. The file lies in a folder
// emptied before every input, so that no journal of one input meets the
// next.
//
// Nothing lost: a merge adds every person of the file or, when it fails,
// none; and the merged persons written out as a .JKD and merged again come
// back field for field.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "harness.h"
#include "ranvel/chart/person.h"
#include "ranvel/data/exchange.h"
#include "ranvel/platform/database.h"

using namespace ranvel;

namespace {

std::shared_ptr<Database> g_recos;

// The merged persons, in table order, by the fields that travel.
std::vector<std::vector<Variant>> LocalPersons()
{
    std::vector<std::vector<Variant>> rows;
    auto rs = g_recos->OpenTable("Person");
    for (; !rs->IsEOF(); rs->MoveNext()) {
        std::vector<Variant> row;
        for (const std::string& f : ExchangeFields()) row.push_back(rs->Field(f));
        rows.push_back(std::move(row));
    }
    return rows;
}

// The persons of a file, counted over the fields that travel, as a merge
// reads them (a damaged field that does not travel is never read).
long PersonsIn(const std::string& path)
{
    std::string select;
    for (const std::string& f : ExchangeFields()) select += (select.empty() ? "SELECT " : ", ") + f;
    long count = 0;
    Database::Open(path)->ForEachRow(select + " FROM Person", [&](const std::vector<Variant>&) {
        ++count;
        return true;
    });
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::Init();
    fuzz::ScratchDatabase("app/EPHE/COMMON/ExpTemp.JKP", "resources/db/exptemp.sql");
    g_recos = fuzz::ScratchDatabase("app/EPHE/COMMON/RECOS.Dat", "resources/db/recos.sql");
    // Speed only: the scratch store need not survive a power cut.
    g_recos->Execute("PRAGMA synchronous = OFF");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::filesystem::remove_all(fuzz::ScratchPath("import"));
    const std::string path = fuzz::WriteScratchFile("import/in.JKD", data, size);
    g_recos->Execute("DELETE FROM Person");

    int added = 0;
    try {
        added = ImportPersons(path, *g_recos, &clsPerson::CheckRow);
    } catch (const std::exception&) {
        // Not an exchange file, or a person the store could not load back:
        // the command ends with its message.
        if (!LocalPersons().empty()) fuzz::Fail("a failed merge left persons behind");
        return 0;
    }
    const std::vector<std::vector<Variant>> merged = LocalPersons();
    if (static_cast<long>(merged.size()) != added || added != PersonsIn(path))
        fuzz::Fail("the merge said " + std::to_string(added) + " persons, the file holds " +
                   std::to_string(PersonsIn(path)) + " and the store got " + std::to_string(merged.size()));

    const std::string out = fuzz::ScratchPath("import/out.JKD");
    SaveDatabaseFile(out, *g_recos);
    g_recos->Execute("DELETE FROM Person");
    if (ImportPersons(out, *g_recos, &clsPerson::CheckRow) != added || LocalPersons() != merged)
        fuzz::Fail("the merged persons did not come back whole through a .JKD of their own");
    return 0;
}
