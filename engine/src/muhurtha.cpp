// The engine: the catalogue, the score of a moment, the search of a range
// and the best list. The scan is coarse on purpose: a moment every 150
// minutes (about the time a lagna holds one sign); the exact span of the
// best moment's lagna is then found once.
#include "ranvel/engine/muhurtha.h"

#include "ranvel/chart/wrap.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

// The digits of a number behind its point as a fraction (6.05 gives 0.05).
double FractionDigits(double x) { return vb::Val("0." + vb::DigitsBehindPoint(x)); }

// Puts an HH.MM clock number on the record: the hour, and the digits behind
// the point as minutes.
void SetClock(clsPerson& p, double t)
{
    p.Hour(vb::Int(t));
    p.Minutes(FractionDigits(t) * 100);
    p.AMPM(p.HourN() >= 12 ? 2 : 1);
}

const char* const kSearchTitle = "Looking for Muhurtha...";
const char* const kSearchLine = "Searching for the first best Muhurtha in the time range. Please wait...";
}  // namespace

clsMuhurtha::clsMuhurtha(std::shared_ptr<Database> muhuDB) : db_(std::move(muhuDB))
{
    if (!db_) db_ = Database::Open(AppPath("EPHE\\COMMON\\MUHU.DAT"));
    MuhuChart = std::make_shared<clsPlanets>();
}

void clsMuhurtha::SetCaching(bool on)
{
    caching_ = on;
    scoreCache_.clear();
    sunriseKey_.clear();
}

// ---------------------------------------------------------------------------
// Catalogue

std::vector<std::string> clsMuhurtha::FillMuhuList()
{
    std::vector<std::string> list;
    auto rs = db_->OpenRecordset("SELECT * FROM MUHU");
    for (rs->HasRows() ? rs->MoveFirst() : void(); !rs->IsEOF(); rs->MoveNext())
        list.push_back(rs->Field("Category").ToTextOrEmpty() + " ---> " + rs->Field("mname").ToTextOrEmpty());
    return list;
}

std::string clsMuhurtha::GetMuhuName(const std::string& MCode)
{
    return MuhuChart->GetTextBetween("CNVT", MCode, "Muhurtha").ToText();
}

Variant clsMuhurtha::GetMuhuPrediCode(const std::string& MCode)
{
    auto rs = db_->OpenRecordset("SELECT * FROM MuhuConvert where Muhuname = '" + MCode + "'");
    if (!rs->HasRows()) return Variant();
    rs->MoveFirst();
    return rs->Field("MuhuPredcode");
}

std::string clsMuhurtha::FindMuhuCode(const std::string& Name, const std::string& Category)
{
    auto rs = db_->OpenRecordset("SELECT * FROM MUHU WHERE MName = '" + Name + "' AND CATEGORY = '" + Category + "'");
    if (!rs->HasRows()) return {};
    rs->MoveFirst();
    return rs->Field("MCode").ToTextOrEmpty();
}

void clsMuhurtha::LoadMuhurtha(const std::string& Code)
{
    auto rs = db_->OpenRecordset("SELECT * FROM Muhu where MCode = '" + Code + "'");
    if (!rs->HasRows()) return;  // the members keep the last request's
    rs->MoveFirst();
    MuhuCode = Code;
    MuhuName = rs->Field("mname").ToTextOrEmpty();
    muhuCategory_ = rs->Field("Category").ToTextOrEmpty();
    MuhuTests = rs->Field("val").ToTextOrEmpty();
    MuhuElements = rs->Field("Elements").ToTextOrEmpty();
}

std::string clsMuhurtha::MuhuCategory() const { return vb::UCase(muhuCategory_); }

std::optional<clsMuhurtha::ScoreRow> clsMuhurtha::ScoreRowOf(const std::string& element)
{
    if (caching_) {
        auto it = scoreCache_.find(element);
        if (it != scoreCache_.end()) return it->second;
    }
    std::optional<ScoreRow> row;
    auto rs = db_->OpenRecordset("SELECT * FROM SCORE WHERE ELEMENT = '" + element + "'");
    if (rs->HasRows()) {
        rs->MoveFirst();
        Variant presence = rs->Field("Presence");
        Variant maxeffect = rs->Field("maxeffect");
        // A Null Presence reads as 0; maxeffect holds for any non-zero value.
        row = ScoreRow{presence.IsNull() ? 0 : presence.ToLong(), !maxeffect.IsNull() && maxeffect.ToBool()};
    }
    if (caching_) scoreCache_[element] = row;
    return row;
}

std::int32_t clsMuhurtha::GetPresence(const std::string& Element)
{
    auto row = ScoreRowOf(Element);
    return row ? row->presence : 0;
}

bool clsMuhurtha::IsMaxEffect(const std::string& Element)
{
    auto row = ScoreRowOf(Element);
    return row && row->maxeffect;
}

// ---------------------------------------------------------------------------
// One moment

void clsMuhurtha::SetMomentPlace(clsPlanets& Chart)
{
    clsPerson& to = MuhuChart->clsPerson();
    clsPerson& from = Chart.clsPerson();
    to.Day(StartDate.Day());
    to.Month(StartDate.Month());
    to.Year(StartDate.Year());
    to.Hour(from.HourN());
    to.Minutes(from.MinutesN());
    to.seconds(from.secondsN());
    to.LatDeg(from.LatDegN());
    to.LatMT(from.LatMTN());
    to.TextNS(from.TextNS());
    to.LongDeg(from.LongDegN());
    to.LongMT(from.LongMTN());
    to.TextEW(from.TextEW());
    to.GMTDIFF(from.GMTDIFF());
    to.PLOB(from.PLOB());
    to.Country(from.Country());
    MuhuChart->Calculate();
}

void clsMuhurtha::TestMomentAt(double t)
{
    clsPerson& p = MuhuChart->clsPerson();
    CurrentScore = 0;
    SetClock(p, t);
    MuhuChart->Calculate();
    ScoreElements();
    MomentResult& last = Results.back();
    last.Date = p.GetBirthDate();
    last.Score = CurrentScore;
    last.Time = p.GetBirthTime();
    Results.emplace_back();
}

void clsMuhurtha::EvaluateMoment()
{
    Progress().Progress(kSearchTitle, kSearchLine, 0);
    // Index 0 is never a moment; record 1 is the first, under work.
    Results.assign(2, MomentResult{});
    TestMomentAt(vb::Val(MuhuChart->clsPerson().GetBirthTime()));
    Progress().Progress(kSearchTitle, kSearchLine, 100);
    Progress().Done();
}

void clsMuhurtha::CheckMuhuMoment(const std::string& Name, const std::string& Category, clsPlanets& Chart)
{
    SetCaching(caching_);  // the caches last one run: settings may change between runs
    StartDate = Chart.clsPerson().GetBirthDate();
    EndDate = StartDate;
    LoadMuhurtha(FindMuhuCode(Name, Category));
    SetMomentPlace(Chart);
    EvaluateMoment();
    PickBest();
}

// ---------------------------------------------------------------------------
// A range

void clsMuhurtha::CheckMuhurtha(const std::string& Name, const std::string& Category, const DateTime& From,
                                const DateTime& To, double FromTime, double ToTime, clsPlanets& Chart)
{
    SetCaching(caching_);  // the caches last one run: settings may change between runs
    StartDate = From;
    EndDate = To;
    TimeStart = FromTime;
    TimeEnd = ToTime;
    LoadMuhurtha(FindMuhuCode(Name, Category));
    SetMomentPlace(Chart);
    ScanRange();
    PickBest();
}

void clsMuhurtha::ScanRange()
{
    const std::int64_t days = DateTime::DiffDays(StartDate, EndDate) + 1;
    if (days < 1) return;
    Progress().Progress(kSearchTitle, kSearchLine, 0);
    Results.assign(2, MomentResult{});  // index 0 is never a moment
    clsPerson& p = MuhuChart->clsPerson();
    for (std::int64_t d = 1; d <= days; ++d) {
        double t = TimeStart;
        bool crossed = false;
        for (;;) {
            TestMomentAt(t);
            // The clock number of AddMinutes drops the tens of minutes under
            // ten (09:05 reads 9.5, that is 09:50): the moments tested follow
            // from it and are part of the result.
            const DateTime before = p.GetBirthDate();
            t = p.AddMinutes(150);
            const DateTime after = p.GetBirthDate();
            if (DateTime::DiffDays(before, after) >= 1) {
                crossed = true;
                break;
            }
            if (t > TimeEnd) break;
        }
        Progress().Progress(kSearchTitle, kSearchLine, static_cast<int>(vb::CLng(static_cast<double>(d) / days * 100)));
        if (!crossed) p.AddDays(1);  // after a crossing the date has moved already
    }
    Progress().Done();
}

clsGochara& clsMuhurtha::GocharaSearch()
{
    if (!gochara_) gochara_ = std::make_unique<clsGochara>();
    return *gochara_;
}

void clsMuhurtha::PickBest()
{
    if (Results.size() < 3) {
        DayResults.assign(1, MomentResult{});
        throw vb::RuntimeError("Subscript out of range");
    }
    const std::size_t last = Results.size() - 1;  // the empty record under work
    std::size_t best = 1;
    for (std::size_t i = 1; i < last; ++i)
        if (Results[i].Score > Results[best].Score) best = i;  // ties go to the earliest
    PickMoment(best);
}

void clsMuhurtha::PickMoment(std::size_t Index)
{
    DayResults.assign(1, MomentResult{});
    if (Index < 1 || Index + 1 >= Results.size()) throw vb::RuntimeError("Subscript out of range");
    const std::size_t last = Results.size() - 1;
    bestDate_ = Results[Index].Date;
    bestTime_ = Results[Index].Time;
    bestScore_ = Results[Index].Score < 0 ? 0 : Results[Index].Score;
    bestFruct_ = Results[Index].FructElems;
    for (std::size_t i = 1; i < last; ++i)
        if (Results[i].Date.DateOnly() == bestDate_.DateOnly()) DayResults.push_back(Results[i]);

    LagnaSpan span = LagnaSpanAt(bestDate_, bestTime_);
    BestChart = span.Chart;
    LagnaStartChart = span.Start;
    LagnaEndChart = span.End;
}

clsMuhurtha::LagnaSpan clsMuhurtha::LagnaSpanAt(const DateTime& Date, const std::string& Time)
{
    LagnaSpan span;
    span.Chart = std::make_shared<clsPlanets>();
    MuhuChart->CopySettingTo(*span.Chart);
    clsPerson& b = span.Chart->clsPerson();
    b.Day(Date.Day());
    b.Month(Date.Month());
    b.Year(Date.Year());
    const double t = vb::Val(Time);
    b.Hour(vb::Fix(t));
    b.Minutes(FractionDigits(t) * 100);
    span.Chart->Calculate();

    double s = LagnaStartDeg(span.Chart->PlanetLongi(0));
    span.Start = GocharaSearch().Gochara(0, s, 30, *span.Chart);
    s = LagnaStartDeg(span.Chart->PlanetLongi(0));
    span.End = GocharaSearch().Gochara(0, s + 30, 30, *span.Chart);
    return span;
}

std::string clsMuhurtha::BestMuhuScore() const { return vb::CStr(bestScore_); }

std::int32_t clsMuhurtha::LagnaStartDeg(double Longitude)
{
    // The wrap leaves exactly 30 standing, so 60 degrees gives 30.
    return vb::CLng(Longitude - Norm30(Longitude));
}

// The clock at which the lagna in force at the date reaches the start of
// its sign (offset 0) or of the next (offset 30).
std::string clsMuhurtha::LagnaLimitTime(const DateTime& Date, double offset)
{
    clsPlanets chart;
    MuhuChart->CopySettingTo(chart);
    chart.SetBirthDate(Date);
    chart.Calculate();
    double s = LagnaStartDeg(chart.PlanetLongi(0));
    return GocharaSearch().Gochara(0, s + offset, 20, chart)->clsPerson().GetBirthTimeFull();
}

std::string clsMuhurtha::GetLagnaStartTime(const DateTime& Date) { return LagnaLimitTime(Date, 0); }
std::string clsMuhurtha::GetLagnaEndTime(const DateTime& Date) { return LagnaLimitTime(Date, 30); }

DateTime clsMuhurtha::GetDayMuhuDate(int Index) const
{
    if (Index < 0 || Index >= static_cast<int>(DayResults.size())) throw vb::RuntimeError("Subscript out of range");
    return DayResults[static_cast<std::size_t>(Index)].Date;
}

std::string clsMuhurtha::GetDayMuhuTime(int Index) const
{
    if (Index < 0 || Index >= static_cast<int>(DayResults.size())) throw vb::RuntimeError("Subscript out of range");
    return DayResults[static_cast<std::size_t>(Index)].Time;
}

std::int32_t clsMuhurtha::GetDayMuhuScore(int Index) const
{
    if (Index < 0 || Index >= static_cast<int>(DayResults.size())) throw vb::RuntimeError("Subscript out of range");
    return vb::CLng(DayResults[static_cast<std::size_t>(Index)].Score);
}

int clsMuhurtha::BestMuhuIndex() const
{
    int found = 0;
    for (int i = 0; i <= GetBestDayMuhusCount(); ++i)
        if (GetDayMuhuDate(i) == bestDate_) found = i;
    return found;
}

std::int32_t clsMuhurtha::MaxPossibleScore() { return MaxPossibleScoreOf(bestFruct_); }

std::int32_t clsMuhurtha::MaxPossibleScoreOf(const std::string& FructElems)
{
    std::int32_t total = 0;
    for (const std::string& e : vb::Split(MuhuElements, ',')) {
        // A plain substring test: "T" is found in "TG-4:" too, and that
        // over-count stays.
        bool occurred = !FructElems.empty() && FructElems.find(e) != std::string::npos;
        if (IsMaxEffect(e) || occurred) total = vb::CLng(static_cast<double>(total) + GetPresence(e));
    }
    return total;
}

double clsMuhurtha::BestMuhuPercent() { return PercentOf(bestScore_, bestFruct_); }

double clsMuhurtha::PercentOf(double Score, const std::string& FructElems)
{
    const std::int32_t m = MaxPossibleScoreOf(FructElems);
    if (m <= 0) return 0;
    return vb::Val(vb::Format(Score / m * 100, "0.00"));
}

}  // namespace ranvel
