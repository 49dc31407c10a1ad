// The keys of the analysis page's sentences: from an element, whether it is
// good or bad at the best moment, and the Muhurtha's prediction code, to a
// head and a category of the Muhu text table.
#include <map>

#include "ranvel/engine/muhurtha.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

std::string clsMuhurtha::ElementTextCategory(bool Good, const std::string& Element, const std::string& MCode)
{
    if (Element == "N") return Good ? "NAKGOOD" : "NAKBAD";
    return "MUHUPRED";
}

Variant clsMuhurtha::ElementTextHead(bool Good, const std::string& Element, const std::string& MCode)
{
    if (Element == "N") return GetMuhuPrediCode(MCode);
    static const std::map<std::string, std::pair<const char*, const char*>> byFlag = {
        {"T", {"TITHIGOOD", "TITHIBAD"}},       {"KP", {"TITHIGOOD", "TITHIBAD"}},
        {"SP", {"TITHIGOOD", "TITHIBAD"}},      {"D", {"GOODDAY", "BADDAY"}},
        {"D2", {"GOODDAY", "BADDAY"}},          {"L", {"LAGNAGOOD", "LAGNABAD"}},
        {"L2", {"LAGNAGOOD", "LAGNABAD"}},      {"M12", {"MOONGOOD", "MOONBAD"}},
        {"TG", {"TARAGOOD", "TARABAD"}},        {"M", {"MAASGOOD", "MAASBAD"}},
        {"MN", {"MAASGOOD", "MAASBAD"}},        {"MDIR", {"MOONDIRGOOD", "MOONDIRBAD"}},
        {"LAGNASHUDDHI", {"LAGNASHUDDHIGOOD", "LAGNASHUDDHIBAD"}},
    };
    static const std::map<std::string, const char*> single = {
        {"UTTARAYAN", "UTTARAYAN"},
        {"SD", "SIDDHIYOGA"},
        {"SSD", "SARVARTHSIDDHI"},
        {"DP", "DWIPUSHKAR"},
        {"DP2", "DWIPUSHKAR"},
        {"TP", "TRIPUSHKAR"},
        {"TP2", "TRIPUSHKAR"},
        {"BHADRA", "BHADRA"},
        {"BHADRABAD", "BHADRABAD"},
        {"RIKTABAD", "RIKTABAD"},
        {"PH", "PANCHAKYOGA"},
        {"DISHASHULA", "DISHASHULA"},
        {"VISHDAY", "VISHDAY"},
        {"VISHTITHI", "VISHTITHI"},
        {"JUPVENCOMBUST", "JUPVENCOMBUST"},
        {"VEDHANAK", "VEDHANAK"},
        {"LATTADOSHA", "LATTADOSHA"},
        {"PAATDOSHA", "PAATDOSHA"},
        {"KRANTISAMYA", "KRANTISAMYA"},
        {"YUTIDOSHA", "YUTIDOSHA"},
        {"JAMITRADOSHA", "JAMITRADOSHA"},
        {"EKARGALADOSHA", "EKARGALADOSHA"},
        {"UPAGRAHADOSHA", "UPAGRAHADOSHA"},
        {"TITHIDAGDHADOSHA", "TITHIDAGDHADOSHA"},
        {"EARTHSLEEPING", "EARTHSLEEPING"},
        {"RAHUKAAL", "RAHUKAAL"},
        {"HARISHAYAN", "HARISHAYAN"},
        {"KHARMAAS", "KHARMAAS"},
    };
    if (auto it = byFlag.find(Element); it != byFlag.end()) return Variant(Good ? it->second.first : it->second.second);
    if (auto it = single.find(Element); it != single.end()) return Variant(it->second);
    return Variant(std::string());
}

Variant clsMuhurtha::ElementHeading(const std::string& Element) { return MuhuChart->GetHeadValue(10, Element, "MuhuElems"); }

Variant clsMuhurtha::MuhuScoreText(int Band) { return MuhuChart->GetHeadValue(10, Band, "Muhuscore"); }

bool clsMuhurtha::ReportIfAbsent(const std::string& Element)
{
    static const char* const always[] = {"T", "N", "D", "D2", "L", "L2", "M12", "TG", "M", "KP", "SP", "MDIR", "MN",
                                         "LAGNASHUDDHI"};
    for (const char* e : always)
        if (Element == e) return true;
    return false;
}

bool clsMuhurtha::ElementIsGood(const std::string& Element, const std::string& FructElems)
{
    // The entry "CODE-score:"; a negative score has two hyphens.
    std::size_t p = FructElems.find(Element + "-");
    if (p == std::string::npos) return false;
    std::size_t c = FructElems.find(':', p);
    std::string entry = FructElems.substr(p, c == std::string::npos ? std::string::npos : c - p);
    std::vector<std::string> parts = vb::Split(entry, '-');
    double score = 0;
    if (parts.size() == 2) score = vb::CLng(vb::Val(parts[1]));
    else if (parts.size() == 3) score = -vb::CLng(vb::Val(parts[2]));
    return score >= 1;
}

int clsMuhurtha::ScoreBand() { return BandOf(BestMuhuPercent()); }

int clsMuhurtha::BandOf(double Percent)
{
    const std::int32_t i = vb::CLng(Percent);
    // The last digit, read as the digit behind the point of i / 10.
    const std::string digits = vb::DigitsBehindPoint(i / 10.0);
    const int last = digits.empty() ? 0 : digits[0] - '0';
    int band = i + 10 - last;
    return band > 100 ? 100 : band;
}

}  // namespace ranvel
