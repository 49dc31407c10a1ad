// MomentResult: the record of one tested moment. A result list starts with
// one empty record and grows by one at each moment; the record under work is
// always the last, so a list ends with an empty record that readers leave out.
#pragma once

#include <string>
#include <vector>

#include "ranvel/platform/datetime.h"

namespace ranvel {

struct MomentResult {
    std::string Time;        // "HH.MM" of the moment
    DateTime Date;           // the moment, clock included
    double Score = 0;        // sum of the present elements; integral
    std::string FructElems;  // "CODE-score:" for each present element

    // Adds a present element to the fruct list: code, "-", the score as a
    // number, ":". A negative score thus gives two hyphens in a row.
    void AddFruct(const std::string& code, double score);
};

using MomentResults = std::vector<MomentResult>;

}  // namespace ranvel
