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

}  // namespace ranvel
