// "catalogue": the Muhurthas a request can name, as the request form lists
// them ("Category ---> name"), optionally of one category.
#include <cstdio>
#include <iostream>

#include "chart_input.h"
#include "commands.h"
#include "person_json.h"
#include "ranvel/engine/muhurtha.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

int CmdCatalogue(const Args& args)
{
    args.Allow({"category", "json"});
    const std::string only = args.Value("category");
    clsMuhurtha engine;
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (const std::string& line : engine.FillMuhuList()) {
        const std::size_t arrow = line.find(" ---> ");
        const std::string category = line.substr(0, arrow);
        const std::string name = arrow == std::string::npos ? std::string() : line.substr(arrow + 6);
        if (!only.empty() && !vb::EqualsNoCase(only, category)) continue;
        if (args.Flag("json")) out.push_back({{"Category", category}, {"MuhuName", name}});
        else std::printf("%s\n", line.c_str());
    }
    if (args.Flag("json")) std::cout << DumpJson(out);
    return 0;
}

}  // namespace ranvel::cli
