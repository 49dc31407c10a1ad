// What a PDF says, as poppler's pdftotext reads it back: the text a user
// would find with a search in a viewer.
#pragma once

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace ranvel::test {

// The words of the PDF (one page, or all when page is 0), in reading order.
inline std::vector<std::string> PdfWordsOf(const std::string& pdf, int page = 0)
{
    std::string command = "pdftotext";
    if (page > 0) command += " -f " + std::to_string(page) + " -l " + std::to_string(page);
    command += " '" + pdf + "' - 2>/dev/null";
    std::string out;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[4096];
        for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
        pclose(pipe);
    }
    std::istringstream in(out);
    std::vector<std::string> words;
    for (std::string w; in >> w;) words.push_back(w);
    return words;
}

}  // namespace ranvel::test
