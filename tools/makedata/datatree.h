// Building the installation's data tree below <app> from the reviewable
// sources under resources/:
//
//   resources/db/<name>.sql        schema of one database file
//   resources/db/<name>/<T>.csv    rows of table T of that database
//   resources/text/<lang>/<T>.csv  rows of text table T of one language,
//                                  built into EPHE/<LANG>/<LANG>.DAT
//   resources/places/*.csv         the countries and cities of a new RECOS.Dat
//   resources/ini/*                settings files of a new installation
//   resources/help/*               the manual, copied to HELP/
//
// The program's own files are rebuilt from their sources at every run and
// replaced only when the result differs, so a run over an unchanged source
// tree changes nothing. RECOS.Dat and the settings files belong to the user
// once they exist: a run only adds the tables, views and indexes that they
// lack. Every file is written under a temporary name and renamed into
// place, so a failed run leaves the previous file whole.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace ranvel::makedata {

struct TreeOptions {
    std::filesystem::path app;        // the folder of the executables
    std::filesystem::path resources;  // the source tree
};

// Builds or brings up to date the whole tree. Each file that is written or
// changed is reported through `note`, relative to <app>. Throws
// SourceError or DatabaseError on the first fault; the files finished
// before it stay, the one being built is left as it was.
void BuildDataTree(const TreeOptions& options, const std::function<void(const std::string&)>& note);

}  // namespace ranvel::makedata
