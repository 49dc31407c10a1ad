#include "ranvel/engine/request_state.h"

namespace ranvel {

std::shared_ptr<clsPlanets>& PersonChart()
{
    static std::shared_ptr<clsPlanets> chart;
    return chart;
}

std::shared_ptr<clsPlanets>& BoyChart()
{
    static std::shared_ptr<clsPlanets> chart;
    if (!chart) chart = std::make_shared<clsPlanets>();
    return chart;
}

std::shared_ptr<clsPlanets>& GirlChart()
{
    static std::shared_ptr<clsPlanets> chart;
    if (!chart) chart = std::make_shared<clsPlanets>();
    return chart;
}

std::shared_ptr<clsPlanets>& MatchChart()
{
    static std::shared_ptr<clsPlanets> chart;
    return chart;
}

bool& MarriageRequest()
{
    static bool marriage = false;
    return marriage;
}

}  // namespace ranvel
