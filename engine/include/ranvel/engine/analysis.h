// What the analysis page says about each element of the best moment: its
// heading and its sentence, found by the keys of the prediction codes. The
// desktop page and the command line's report both read it.
#pragma once

#include <string>
#include <vector>

#include "ranvel/engine/muhurtha.h"

namespace ranvel {

struct ElementStatement {
    std::string element;
    bool present = false;  // it occurred at the best moment
    bool good = false;
    std::string heading;
    // Empty when the keys are empty (no sentence, no blank lines).
    std::string sentence;
    bool hasSentence = false;
};

// The elements of MuhuElements in order: those that occurred, and those
// reported even when absent (as bad).
std::vector<ElementStatement> AnalyseElements(clsMuhurtha& engine);

// The result of the last search as plain text, in two parts: the best
// Muhurtha (its day, lagna span, score, percent and band) with the moments
// of its day, and what the analysis says of each element. The command line
// prints both; the desktop shows them until its result pages stand.
std::string ResultSummary(clsMuhurtha& engine);
std::string ResultAnalysis(clsMuhurtha& engine);
std::string ResultReport(clsMuhurtha& engine);

}  // namespace ranvel
