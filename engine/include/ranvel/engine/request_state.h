// The charts of the persons of a request, process-wide because the element
// tests reach them there: PersonChart for one person, BoyChart and GirlChart
// for a marriage. They are made anew at every generation.
#pragma once

#include <memory>

#include "ranvel/chart/planets.h"

namespace ranvel {

std::shared_ptr<clsPlanets>& PersonChart();
// Made on first use (empty and uncalculated) when nothing set them.
std::shared_ptr<clsPlanets>& BoyChart();
std::shared_ptr<clsPlanets>& GirlChart();
// The third chart of a marriage, kept for the match text.
std::shared_ptr<clsPlanets>& MatchChart();
// True when the request's upper-cased category is "MARRIAGE".
bool& MarriageRequest();

}  // namespace ranvel
