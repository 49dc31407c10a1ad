#include "ranvel/engine/analysis.h"

namespace ranvel {

std::vector<ElementStatement> AnalyseElements(clsMuhurtha& engine)
{
    std::vector<ElementStatement> out;
    const std::string fruct = engine.BestMuhuFructElems();
    const std::string& list = engine.MuhuElements;
    std::size_t start = 0;
    for (;;) {
        std::size_t p = list.find(',', start);
        std::string e = list.substr(start, p == std::string::npos ? std::string::npos : p - start);
        ElementStatement s;
        s.element = e;
        s.present = fruct.find(e + "-") != std::string::npos;
        if (s.present || clsMuhurtha::ReportIfAbsent(e)) {
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
        if (p == std::string::npos) break;
        start = p + 1;
    }
    return out;
}

}  // namespace ranvel
