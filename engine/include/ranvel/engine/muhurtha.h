// clsMuhurtha: the engine. One instance does every search and keeps its last
// result for the pages. Everything it knows of a purpose lies in MUHU.DAT:
// which tests apply, what each is worth, how it maps to prediction texts.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ranvel/chart/gochara.h"
#include "ranvel/chart/planets.h"
#include "ranvel/engine/moment_result.h"
#include "ranvel/platform/database.h"
#include "ranvel/platform/datetime.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

class clsMuhurtha {
public:
    // Opens <app>\EPHE\COMMON\MUHU.DAT (or the database given) and makes the
    // working chart.
    explicit clsMuhurtha(std::shared_ptr<Database> muhuDB = nullptr);

    // ---- catalogue ----
    // "Category ---> mname" for every row, in table order.
    std::vector<std::string> FillMuhuList();
    std::string GetMuhuName(const std::string& MCode);
    Variant GetMuhuPrediCode(const std::string& MCode);
    std::string FindMuhuCode(const std::string& Name, const std::string& Category);
    // Fills the members from the row; with no row they keep what they had.
    void LoadMuhurtha(const std::string& Code);
    bool IsMaxEffect(const std::string& Element);
    std::int32_t GetPresence(const std::string& Element);

    std::string MuhuCode, MuhuName, MuhuElements, MuhuTests;
    // Reads upper-cased.
    std::string MuhuCategory() const;
    void MuhuCategory(const std::string& value) { muhuCategory_ = value; }
    std::int32_t CurrentScore = 0;
    DateTime StartDate, EndDate;
    double TimeStart = 0, TimeEnd = 0;  // HH.MM values

    // ---- charts ----
    std::shared_ptr<clsPlanets> MuhuChart;
    std::shared_ptr<clsPlanets> BestChart;
    std::shared_ptr<clsPlanets> LagnaStartChart, LagnaEndChart;

    // ---- the element tests ----
    // Runs the test of one item ("CODE" or "CODE:ARG") on MuhuChart; gives
    // the Presence of the code when the test holds (and notes it in the
    // last record's fruct list), else 0.
    std::int32_t CheckElement(const std::string& Item);
    // Sums CheckElement over every item of MuhuTests into CurrentScore.
    void ScoreElements();
    // True for a code (upper case) that CheckElement has a test for.
    static bool IsKnownCode(const std::string& Code);
    static bool GetHariShayan(int Tithi, int Month);
    static bool GetKharMaas(int SunSign);
    // The day's sunrise for the defect windows: the Lagna reaching the Sun's
    // point, from a copy of the chart; "HH.MM".
    std::string SunriseByLagna(clsPlanets& Chart);

    // ---- moment check and range search ----
    void CheckMuhuMoment(const std::string& Name, const std::string& Category, clsPlanets& Chart);
    void CheckMuhurtha(const std::string& Name, const std::string& Category, const DateTime& From, const DateTime& To,
                       double FromTime, double ToTime, clsPlanets& Chart);
    void SetMomentPlace(clsPlanets& Chart);
    void EvaluateMoment();
    void ScanRange();
    void PickBest();
    // Makes record Index of Results the best Muhurtha the way PickBest makes
    // the range's best: the best members (a score below 0 shown as 0), the
    // moments of its day, BestChart and the lagna span. PickBest ends here
    // with the earliest highest record; the calendar with a day's best.
    void PickMoment(std::size_t Index);

    // The chart of a moment "HH.MM" on a date, made from MuhuChart's
    // settings, and the two charts of the lagna span around it, found with
    // tolerance 30 as for the best Muhurtha.
    struct LagnaSpan {
        std::shared_ptr<clsPlanets> Chart, Start, End;
    };
    LagnaSpan LagnaSpanAt(const DateTime& Date, const std::string& Time);

    // Every moment tested, record 1 the first; the last record is the empty
    // one under work. DayResults: the best day's moments from index 1.
    MomentResults Results;
    MomentResults DayResults;

    std::string BestMuhuTime() const { return bestTime_; }
    DateTime BestMuhuDate() const { return bestDate_; }
    std::string BestMuhuScore() const;
    double BestMuhuScoreValue() const { return bestScore_; }
    std::string BestMuhuFructElems() const { return bestFruct_; }
    std::int32_t MaxPossibleScore();
    double BestMuhuPercent();
    // The same rules for any moment's fruct list and score.
    std::int32_t MaxPossibleScoreOf(const std::string& FructElems);
    double PercentOf(double Score, const std::string& FructElems);
    int GetBestDayMuhusCount() const { return static_cast<int>(DayResults.size()) - 1; }
    DateTime GetDayMuhuDate(int Index) const;
    std::string GetDayMuhuTime(int Index) const;
    std::int32_t GetDayMuhuScore(int Index) const;
    int BestMuhuIndex() const;
    static std::int32_t LagnaStartDeg(double Longitude);
    std::string GetLagnaStartTime(const DateTime& Date);
    std::string GetLagnaEndTime(const DateTime& Date);

    // ---- keys of the sentences ----
    static std::string ElementTextCategory(bool Good, const std::string& Element, const std::string& MCode);
    Variant ElementTextHead(bool Good, const std::string& Element, const std::string& MCode);
    Variant ElementHeading(const std::string& Element);
    Variant MuhuScoreText(int Band);
    static bool ReportIfAbsent(const std::string& Element);
    // Good when the score noted for the element in the fruct list is 1 or
    // more.
    static bool ElementIsGood(const std::string& Element, const std::string& FructElems);
    // The band of the percent: 10, 20 ... 100.
    int ScoreBand();
    static int BandOf(double Percent);

    // Caches that must not change any result: the Score table, and the
    // sunrise of a moment asked by two tests. Off for comparison in tests.
    void SetCaching(bool on);

private:
    // Puts MuhuChart's clock at t (HH.MM), calculates, scores, and closes
    // the record under work.
    void TestMomentAt(double t);
    bool TestOf(const std::string& code, const std::string& arg, bool& known);
    clsGochara& GocharaSearch();
    std::string LagnaLimitTime(const DateTime& Date, double offset);
    struct ScoreRow {
        std::int32_t presence;
        bool maxeffect;
    };
    std::optional<ScoreRow> ScoreRowOf(const std::string& element);

    std::shared_ptr<Database> db_;
    std::string muhuCategory_;
    std::string bestTime_;
    DateTime bestDate_;
    double bestScore_ = 0;
    std::string bestFruct_;
    std::unique_ptr<clsGochara> gochara_;

    bool caching_ = true;
    std::map<std::string, std::optional<ScoreRow>> scoreCache_;
    std::string sunriseKey_;
    std::string sunriseValue_;
};

}  // namespace ranvel
