// ranvel-makedata: builds the data tree of an installation (the databases,
// the animation and the first settings) from the text sources of the
// project. Run by the build after every change of a source; safe to run
// again at any time.
#include <exception>
#include <iostream>
#include <string>
#include <string_view>

#include "datatree.h"

namespace {

int Usage(std::ostream& out, int code)
{
    out << "usage: ranvel-makedata --app <folder> --resources <folder> [--quiet]\n"
           "  --app        the folder of the executables; the data tree is built below it\n"
           "  --resources  the project's resources folder (db/, text/, ini/, places/)\n";
    return code;
}

}  // namespace

int main(int argc, char** argv)
{
    ranvel::makedata::TreeOptions options;
    bool quiet = false;
    for (int i = 1; i < argc; ++i) {
        std::string_view a = argv[i];
        if ((a == "--app" || a == "--resources") && i + 1 < argc) {
            (a == "--app" ? options.app : options.resources) = argv[++i];
        } else if (a == "--quiet") {
            quiet = true;
        } else if (a == "--help" || a == "-h") {
            return Usage(std::cout, 0);
        } else {
            std::cerr << "ranvel-makedata: unknown argument '" << a << "'\n";
            return Usage(std::cerr, 2);
        }
    }
    if (options.app.empty() || options.resources.empty()) return Usage(std::cerr, 2);

    try {
        ranvel::makedata::BuildDataTree(options, [&](const std::string& what) {
            if (!quiet) std::cout << "ranvel-makedata: " << what << "\n";
        });
    } catch (const std::exception& e) {
        std::cerr << "ranvel-makedata: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
