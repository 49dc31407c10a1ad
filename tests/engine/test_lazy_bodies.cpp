// A chart reads its bodies from the ephemeris only when one is asked for.
// Whatever a caller reads must be, to the last bit, what the chart gave
// when it read every body at every Calculate: the charts themselves, the
// time searches and sunrise built on them, and whole searches of the
// engine.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "engine/engine_fixture.h"
#include "ranvel/engine/gochara.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::test {
namespace {

// The bits of a double, so that equality means the same number to the
// last bit (and a NaN equals itself).
std::uint64_t Bits(double x)
{
    std::uint64_t b;
    std::memcpy(&b, &x, sizeof b);
    return b;
}

// Every number a chart answers with, in one list.
std::vector<std::uint64_t> Everything(clsPlanets& c)
{
    std::vector<std::uint64_t> v;
    for (int p = 0; p <= 26; ++p) v.push_back(Bits(c.PlanetLongi(p)));
    for (int i = 0; i <= 12; ++i) v.push_back(Bits(c.BhavMid(i)));
    for (int i = 0; i <= 12; ++i) v.push_back(Bits(c.BhavBegin(i)));
    for (int i = 0; i <= 13; ++i) v.push_back(Bits(c.KPHouse(i)));
    v.push_back(Bits(c.SidrealTime()));
    v.push_back(Bits(c.Obliq()));
    v.push_back(Bits(c.NakPada()));
    v.push_back(static_cast<std::uint64_t>(c.Tithi()));
    v.push_back(static_cast<std::uint64_t>(c.YogaNumber()));
    for (int p = 0; p <= 12; ++p)
        for (int d = 1; d <= 17; ++d) v.push_back(static_cast<std::uint64_t>(c.PrediVarga(p, d)));
    for (int p = 0; p <= 12; ++p) v.push_back(static_cast<std::uint64_t>(c.PlanetSign(p)));
    for (int p = 1; p <= 12; ++p) v.push_back(c.RetroGrade(p));
    v.push_back(c.RetroGrade(0));
    return v;
}

class LazyBodies : public EngineTest {
protected:
    void TearDown() override
    {
        clsPlanets::SetLazyBodies(true);
        EngineTest::TearDown();
    }
    // Runs the same work with the bodies read at once and when asked for.
    template <typename Work>
    void Both(Work&& work)
    {
        clsPlanets::SetLazyBodies(false);
        auto eager = work();
        clsPlanets::SetLazyBodies(true);
        auto lazy = work();
        clsPlanets::SetLazyBodies(true, true);
        auto replayed = work();
        EXPECT_EQ(eager, lazy);
        EXPECT_EQ(eager, replayed);
    }
    // A journey searched at Delhi (or another place) over one month or
    // twelve from 1 January 2024, 05.00 to 21.00, with every code: its
    // results, best Muhurtha, lagna span and best chart, as text.
    std::vector<std::string> Search(int months, const TestPlace* at = nullptr)
    {
        auto place = std::make_shared<clsPlanets>();
        if (at) PutAt(place->clsPerson(), *at, 1, 1, 2024, 0, 0);
        else AtDelhi(place->clsPerson(), 1, 1, 2024, 0, 0);
        place->Calculate();
        PersonChart() = std::make_shared<clsPlanets>();
        AtDelhi(PersonChart()->clsPerson(), 2, 9, 1990, 7, 5);
        PersonChart()->Calculate();
        clsMuhurtha e(db);
        const DateTime to = months == 1 ? DateTime::FromParts(2024, 1, 31) : DateTime::FromParts(2024, 12, 31);
        e.CheckMuhurtha("All", "Journey", DateTime::FromParts(2024, 1, 1), to, 5.0, 21.0, *place);
        std::vector<std::string> out;
        for (const MomentResult& r : e.Results)
            out.push_back(r.Date.ToIsoText() + " " + r.Time + " " + vb::CStr(r.Score) + " " + r.FructElems);
        out.push_back(e.BestMuhuTime() + " " + e.BestMuhuDate().ToIsoText() + " " + e.BestMuhuScore() + " " +
                      e.BestMuhuFructElems() + " " + vb::CStr(e.BestMuhuPercent()));
        for (auto* lagna : {e.LagnaStartChart.get(), e.LagnaEndChart.get()})
            out.push_back(lagna->clsPerson().GetBirthDate().ToIsoText() + " " + vb::CStr(lagna->PlanetLongi(0)));
        for (std::uint64_t x : Everything(*e.BestChart)) out.push_back(std::to_string(x));
        return out;
    }
    void AddEveryCode()
    {
        AddMuhurtha("ALL", "All", "Journey",
                    "T:2,N:4,D:2,D2:3,L:2,L2:5,M12,TG,M:1,KP:5,SP:7,RIKTABAD,UTTARAYAN,RAHUKAAL,DP,TP,PH,SD,SSD,DP2,"
                    "TP2,MN:2,BHADRA,BHADRABAD,MDIR,YOGNIV,DISHASHULA,VISHDAY,VISHTITHI,JUPVENCOMBUST,LAGNASHUDDHI,"
                    "VEDHANAK,LATTADOSHA,PAATDOSHA,KRANTISAMYA,YUTIDOSHA,JAMITRADOSHA,EKARGALADOSHA,UPAGRAHADOSHA,"
                    "TITHIDAGDHADOSHA,EARTHSLEEPING,HARISHAYAN,KHARMAAS,BOYSURYA,GIRLGURU,BOYMOON,GIRLMOON",
                    "T,N,D,RIKTABAD,RAHUKAAL,PH,VISHDAY,VISHTITHI,LAGNASHUDDHI");
    }
    // Random moments at Delhi under each of the fifteen ayanamshas (a custom
    // one of 23.51), given as day, month, year, hour and minute.
    template <typename Work>
    void EveryAyanamsha(unsigned seed, int samples, int fromYear, int toYear, Work&& work)
    {
        std::mt19937 random(seed);
        std::uniform_int_distribution<int> day(1, 28), month(1, 12), year(fromYear, toYear), hour(0, 23),
            minute(0, 59);
        store.Set("Init", "CustAyan", "23.51");
        for (int ayan = 1; ayan <= 15; ++ayan) {
            store.Set("Init", "AyanType", std::to_string(ayan));
            for (int sample = 0; sample < samples; ++sample) {
                const int d = day(random), m = month(random), y = year(random), h = hour(random), mi = minute(random);
                work(ayan, d, m, y, h, mi);
            }
        }
    }
};

TEST_F(LazyBodies, ChartsSunTimesAndSearchesAnswerAlikeUnderEveryAyanamsha)
{
    EveryAyanamsha(20241123, 3, 1950, 2040, [&](int, int d, int m, int y, int h, int mi) {
        Both([&] {
            clsPlanets c;
            AtDelhi(c.clsPerson(), d, m, y, h, mi);
            c.Calculate();
            std::vector<std::uint64_t> v = Everything(c);
            v.push_back(Bits(c.SunRiseTime()));
            v.push_back(Bits(c.SunSetTime()));
            v.push_back(Bits(c.NightDuration()));
            // A second moment on the same chart: the memos keep their
            // first values, the rest follows the moment.
            c.clsPerson().AddMinutes(600);
            c.Calculate();
            for (std::uint64_t x : Everything(c)) v.push_back(x);
            v.push_back(Bits(c.SunRiseTime()));
            // Each point's search from the moment.
            for (int p = 0; p <= 12; ++p) {
                clsGochara search;
                const double target = std::fmod(c.PlanetLongi(p) + 7.5, 360.0);
                auto found = search.Gochara(p, target, 20, c);
                v.push_back(Bits(found->PlanetLongi(p)));
                v.push_back(static_cast<std::uint64_t>(found->clsPerson().GetBirthDate().ToIsoText().size()));
                for (char ch : found->clsPerson().GetBirthDate().ToIsoText()) v.push_back(static_cast<unsigned char>(ch));
            }
            return v;
        });
    });
}

// The Sun and the Moon read alone, as the day sheet's searches read them,
// and the limb numbers made of them, are those of the chart read whole.
TEST_F(LazyBodies, TheLightsReadAloneGiveTheWholeChartsNumbers)
{
    EveryAyanamsha(20261125, 4, 1900, 2090, [&](int ayan, int d, int m, int y, int h, int mi) {
        clsPlanets alone, whole;
        AtDelhi(alone.clsPerson(), d, m, y, h, mi);
        alone.CopySettingTo(whole);
        alone.Calculate();
        whole.Calculate();
        (void)whole.PlanetLongi(2);  // every body read at once
        const double S = alone.LightLongi(1), M = alone.LightLongi(7);
        ASSERT_EQ(Bits(S), Bits(whole.PlanetLongi(1))) << ayan;
        ASSERT_EQ(Bits(M), Bits(whole.PlanetLongi(7))) << ayan;
        EXPECT_EQ(clsPlanets::TithiOf(S, M), whole.Tithi());
        EXPECT_EQ(clsPlanets::NakshatraNum(M), whole.Nakshatra());
        EXPECT_EQ(clsPlanets::YogaOf(S, M), whole.YogaNumber());
        EXPECT_EQ(clsPlanets::KaranNumOf(S, M), whole.KaranNum());
        // Reading the rest afterwards leaves the lights as they were read.
        EXPECT_EQ(Bits(alone.PlanetLongi(7)), Bits(M));
        EXPECT_EQ(Everything(alone), Everything(whole));
    });
}

// A chart calculated over and over with nothing read in between, then
// read: its divisional rows carry over what the unread calculations left.
TEST_F(LazyBodies, UnreadCalculationsLeaveTheRowsTheyWouldHave)
{
    Both([&] {
        clsPlanets c;
        AtDelhi(c.clsPerson(), 1, 1, 2024, 0, 0);
        std::vector<std::uint64_t> v;
        for (int round = 0; round < 100; ++round) {
            for (int unread = 0; unread < round % 5; ++unread) {
                c.clsPerson().AddMinutes(37);
                c.Calculate();
                (void)c.PlanetLongi(0);  // the Lagna alone reads no body
                (void)c.PlanetLongi(1);  // nor the Sun
            }
            c.clsPerson().AddMinutes(211);
            c.Calculate();
            for (int p = 0; p <= 12; ++p)
                for (int d = 1; d <= 17; ++d) v.push_back(static_cast<std::uint64_t>(c.PrediVarga(p, d)));
        }
        return v;
    });
}

TEST_F(LazyBodies, SearchesOfAMonthAndAYearWithEveryCodeFindTheSame)
{
    AddEveryCode();
    for (int months : {1, 12}) Both([&] { return Search(months); });
}

// The astronomical sunrise left off, whether never set or set off, leaves a
// year's search as it always was; set on, its sunrise reaches the results
// (at New York, whose ecliptic rising is that of the mirrored place).
TEST_F(LazyBodies, AYearsSearchIsTheSameUnlessTheAstronomicalSunriseIsOn)
{
    AddEveryCode();
    const TestPlace newYork = {"New York", 40, 43, "N", 74, 0, "W", "-5"};
    const std::vector<std::string> never = Search(12);
    const std::vector<std::string> neverThere = Search(12, &newYork);
    store.Set("Settings", "AstroSunrise", "0");
    EXPECT_EQ(Search(12), never);
    EXPECT_EQ(Search(12, &newYork), neverThere);
    store.Set("Settings", "AstroSunrise", "1");
    EXPECT_NE(Search(12, &newYork), neverThere);
}

}  // namespace
}  // namespace ranvel::test
