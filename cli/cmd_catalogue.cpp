// "catalogue": the Muhurthas a request can name, as the request form lists
// them ("Category ---> name"), optionally of one category.
#include <cstdio>
#include <iostream>

#include "commands.h"
#include "person_json.h"
#include "request_file.h"
#include "ranvel/engine/request.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

int CmdCatalogue(const Args& args)
{
    args.Allow({"category", "json"});
    const std::string only = args.Value("category");
    if (args.Has("category")) {
        std::string keys;
        bool known = false;
        for (const CategoryButton& b : CategoryButtons()) {
            known = known || vb::EqualsNoCase(b.key, only);
            keys += std::string(keys.empty() ? "" : ", ") + b.key;
        }
        if (!known)
            throw std::invalid_argument("--category must be one of the catalogue's keys (" + keys + "), not '" + only +
                                        "'");
    }
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (const CatalogueRow& row : CatalogueRows()) {
        if (!only.empty() && !vb::EqualsNoCase(only, row.Category)) continue;
        if (args.Flag("json")) out.push_back({{"Category", row.Category}, {"MuhuName", row.MuhuName}});
        else std::printf("%s ---> %s\n", row.Category.c_str(), row.MuhuName.c_str());
    }
    if (args.Flag("json")) std::cout << DumpJson(out);
    return 0;
}

}  // namespace ranvel::cli
