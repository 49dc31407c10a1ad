#include "ranvel/engine/analysis.h"

#include "ranvel/platform/vbmath.h"

namespace ranvel {

std::vector<ElementStatement> AnalyseElements(clsMuhurtha& engine)
{
    std::vector<ElementStatement> out;
    const std::string fruct = engine.BestMuhuFructElems();
    for (const std::string& e : vb::Split(engine.MuhuElements, ',')) {
        ElementStatement s;
        s.element = e;
        s.present = fruct.find(e + "-") != std::string::npos;
        if (!s.present && !clsMuhurtha::ReportIfAbsent(e)) continue;
        s.good = s.present && clsMuhurtha::ElementIsGood(e, fruct);
        s.heading = engine.ElementHeading(e).ToTextOrEmpty();
        std::string head = engine.ElementTextHead(s.good, e, engine.MuhuCode).ToTextOrEmpty();
        std::string category = clsMuhurtha::ElementTextCategory(s.good, e, engine.MuhuCode);
        if (!head.empty() && !category.empty()) {
            s.hasSentence = true;
            s.sentence = engine.MuhuChart->GetHeadValue(10, head, category).ToTextOrEmpty();
        }
        out.push_back(s);
    }
    return out;
}

}  // namespace ranvel
