#include "ranvel/engine/analysis.h"

#include <cstdarg>
#include <cstdio>

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

namespace {

// printf into a text.
std::string Line(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    int n = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string out(n > 0 ? static_cast<std::size_t>(n) : 0, '\0');
    if (n > 0) std::vsnprintf(out.data(), out.size() + 1, format, again);
    va_end(again);
    return out;
}

std::string Moments(clsMuhurtha& e)
{
    std::string out = Line("Moments of %s:\n", e.BestMuhuDate().ToDayFirstText().c_str());
    for (int i = 1; i <= e.GetBestDayMuhusCount(); ++i)
        out += Line("  %s  score %d%s\n", e.GetDayMuhuTime(i).c_str(), e.GetDayMuhuScore(i),
                    i == e.BestMuhuIndex() ? "  <- best" : "");
    return out;
}

std::string Best(clsMuhurtha& e)
{
    const DateTime best = e.BestMuhuDate();
    std::string out = Line("%s (%s)\n", e.MuhuName.c_str(), e.MuhuCategory().c_str());
    out += Line("Searched %s to %s\n\n", e.StartDate.ToDayFirstText().c_str(), e.EndDate.ToDayFirstText().c_str());
    out += Line("Best Muhurtha: %s, lagna from %s to %s (best moment %s)\n", best.ToDayFirstText().c_str(),
                e.LagnaStartChart->clsPerson().GetBirthTimeFull().c_str(),
                e.LagnaEndChart->clsPerson().GetBirthTimeFull().c_str(), e.BestMuhuTime().c_str());
    out += Line("Score %s of %d, %s percent\n\n", e.BestMuhuScore().c_str(), e.MaxPossibleScore(),
                vb::Format(e.BestMuhuPercent(), "0.00").c_str());
    std::string band = e.MuhuScoreText(e.ScoreBand()).ToTextOrEmpty();
    if (!band.empty()) out += band + "\n\n";
    return out;
}

}  // namespace

std::string ResultSummary(clsMuhurtha& engine) { return Best(engine) + Moments(engine); }

std::string ResultAnalysis(clsMuhurtha& engine)
{
    std::string out;
    for (const ElementStatement& s : AnalyseElements(engine)) {
        out += Line("%s [%s, %s]\n", s.heading.empty() ? s.element.c_str() : s.heading.c_str(),
                    s.present ? "present" : "absent", s.good ? "good" : "bad");
        if (s.hasSentence && !s.sentence.empty()) out += "  " + s.sentence + "\n";
    }
    return out;
}

std::string ResultReport(clsMuhurtha& engine)
{
    return Best(engine) + ResultAnalysis(engine) + "\n" + Moments(engine);
}

}  // namespace ranvel
