#include "request_file.h"

#include <unistd.h>

#include <optional>

#include "chart_input.h"
#include "input_check.h"
#include "person_json.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/engine/muhurtha.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

std::vector<CatalogueRow> CatalogueRows()
{
    std::vector<CatalogueRow> rows;
    clsMuhurtha engine;
    for (const std::string& line : engine.FillMuhuList()) {
        const std::size_t arrow = line.find(" ---> ");
        rows.push_back({line.substr(0, arrow), arrow == std::string::npos ? std::string() : line.substr(arrow + 6)});
    }
    return rows;
}

namespace {

using Json = nlohmann::ordered_json;

const char* const kBlankDate = "00/00/0000";

// One text field as read: its value (the form's blank when absent), whether
// the file gave it, and whether it was of the wrong kind (then refused
// already, and not checked further).
struct TextField {
    std::string name;
    std::string value;
    bool given = false;
    bool wrongKind = false;
};

class Reader {
public:
    Refusals refused;

    static std::string Name(const std::string& where, const char* key)
    {
        return where.empty() ? std::string(key) : where + "." + key;
    }

    void Only(const Json& obj, const std::string& where, std::initializer_list<const char*> keys)
    {
        for (auto it = obj.begin(); it != obj.end(); ++it) {
            bool known = false;
            for (const char* k : keys) known = known || it.key() == k;
            if (!known) refused.Add("unknown request field '" + Name(where, it.key().c_str()) + "'");
        }
    }

    TextField Text(const Json& obj, const std::string& where, const char* key, const std::string& blank)
    {
        TextField f{Name(where, key), blank};
        if (!obj.contains(key)) return f;
        f.given = true;
        const Json& v = obj[key];
        if (v.is_string()) {
            f.value = v.get<std::string>();
        } else {
            f.wrongKind = true;
            refused.Add("request field '" + f.name + "' must be a text, not " + Shown(v));
        }
        return f;
    }

    // A choice of the form's option pairs: 1 for the first, 2 for the second.
    int Choice(const Json& obj, const std::string& where, const char* key, int deflt, const char* meaning)
    {
        if (!obj.contains(key)) return deflt;
        const Json& v = obj[key];
        auto n = JsonWhole(v);
        if (n && (*n == 1 || *n == 2)) return static_cast<int>(*n);
        refused.Add("request field '" + Name(where, key) + "' must be " + meaning + ", not " + Shown(v));
        return deflt;
    }

    // A date of a date picker. A part of the request that this search does
    // not use may keep the form's blank.
    std::optional<DateTime> Date(const TextField& f, bool used)
    {
        if (f.wrongKind) return std::nullopt;
        if (!used && f.value == kBlankDate) return std::nullopt;
        if (auto d = FormDate(f.value)) return d;
        if (!f.given) refused.Add("request field '" + f.name + "' is missing: it must be " + DateRule());
        else refused.Add("request field '" + f.name + "' must be " + DateRule() + ", not '" + f.value + "'");
        return std::nullopt;
    }

    void Clock(const TextField& f, int maxHour)
    {
        if (f.wrongKind || FormClock(f.value, maxHour)) return;
        refused.Add("request field '" + f.name + "' must be a time HH.MM with hours 00 to " + std::to_string(maxHour) +
                    " and minutes 00 to 59, not '" + f.value + "'");
    }

    template <typename P>
    void Place(const Json& obj, const std::string& where, P& out)
    {
        TextField country = Text(obj, where, "Country", "");
        TextField city = Text(obj, where, "City", "");
        TextField lati = Text(obj, where, "Lati", "000:00");
        TextField longi = Text(obj, where, "Longi", "000:00");
        TextField ns = Text(obj, where, "NS", "N");
        TextField ew = Text(obj, where, "EW", "E");
        TextField gmt = Text(obj, where, "GMT", "+00.00");
        // Beyond the pole a latitude means nothing; a longitude runs to 180
        // either way from Greenwich.
        if (!lati.wrongKind && !FormDegrees(lati.value, 90))
            refused.Add("request field '" + lati.name +
                        "' must be a latitude DDD:MM with degrees 000 to 090 and minutes 00 to 59 (at most 090:00), "
                        "not '" + lati.value + "'");
        if (!longi.wrongKind && !FormDegrees(longi.value, 180))
            refused.Add("request field '" + longi.name +
                        "' must be a longitude DDD:MM with degrees 000 to 180 and minutes 00 to 59 (at most 180:00), "
                        "not '" + longi.value + "'");
        if (!ns.wrongKind && !FormLetter(ns.value, 'N', 'S'))
            refused.Add("request field '" + ns.name + "' must be N (north) or S (south), not '" + ns.value + "'");
        if (!ew.wrongKind && !FormLetter(ew.value, 'E', 'W'))
            refused.Add("request field '" + ew.name + "' must be E (east) or W (west), not '" + ew.value + "'");
        if (!gmt.wrongKind && !FormZone(gmt.value))
            refused.Add("request field '" + gmt.name +
                        "' must be a time zone +HH.MM or -HH.MM, at most 14.00 from Greenwich with minutes 00 to 59, "
                        "not '" + gmt.value + "'");
        out.Country = country.value;
        out.City = city.value;
        out.Lati = lati.value;
        out.Longi = longi.value;
        // The form keeps the hemisphere letters in capitals whatever is typed,
        // and the houses read only a capital S as south.
        out.NS = vb::UCase(ns.value);
        out.EW = vb::UCase(ew.value);
        out.GMT = gmt.value;
    }

    RequestPerson Person(const Json& obj, const std::string& where, bool used)
    {
        RequestPerson p;
        if (!obj.is_object()) {
            refused.Add("request field '" + where + "' must be a JSON object");
            return p;
        }
        Only(obj, where,
             {"Name", "Sex", "BDate", "BTime", "AMPM", "Country", "City", "Lati", "Longi", "NS", "EW", "GMT"});
        p.Name = Text(obj, where, "Name", "").value;
        p.Sex = Choice(obj, where, "Sex", 1, "1 (male) or 2 (female)");
        TextField date = Text(obj, where, "BDate", kBlankDate);
        Date(date, used);
        p.BDate = date.value;
        TextField time = Text(obj, where, "BTime", "00.00");
        Clock(time, 23);
        p.BTime = time.value;
        p.AMPM = Choice(obj, where, "AMPM", 1, "1 (AM) or 2 (PM)");
        Place(obj, where, p);
        return p;
    }

    // The category among the form's buttons and the Muhurtha among the
    // catalogue's rows of it, compared as the catalogue compares them.
    void Catalogue(const TextField& category, const TextField& name)
    {
        if (category.wrongKind) return;
        const CategoryButton* button = nullptr;
        std::string keys;
        for (const CategoryButton& b : CategoryButtons()) {
            if (vb::EqualsNoCase(b.key, category.value)) button = &b;
            keys += std::string(keys.empty() ? "" : ", ") + b.key;
        }
        if (!button) {
            const std::string rule = "one of the catalogue's keys (" + keys + ")";
            refused.Add("request field 'Category' " +
                        (category.given ? "must be " + rule + ", not '" + category.value + "'"
                                        : "is missing: it must be " + rule));
            return;
        }
        if (name.wrongKind) return;
        std::vector<std::string> names;
        for (const CatalogueRow& row : CatalogueRows()) {
            if (!vb::EqualsNoCase(row.Category, category.value)) continue;
            if (vb::EqualsNoCase(row.MuhuName, name.value)) return;
            names.push_back(row.MuhuName);
        }
        const std::string rule = "name a Muhurtha of the category " + std::string(button->key);
        std::string line = "request field 'MuhuName' " +
                           (name.given ? "must " + rule + ", not '" + name.value + "'"
                                       : "is missing: it must " + rule) +
                           "; 'ranvel-cli catalogue --category " + button->key + "' lists them:";
        for (const std::string& n : names) line += "\n    " + n;
        refused.Add(line);
    }
};

}  // namespace

RequestPlace ReadPlace(const Json& j, const std::string& where)
{
    if (!j.is_object()) throw std::invalid_argument(where + " must be a JSON object");
    Reader in;
    in.Only(j, "", {"Country", "City", "Lati", "Longi", "NS", "EW", "GMT"});
    RequestPlace place;
    in.Place(j, "", place);
    in.refused.ThrowIfAny();
    return place;
}

MuhurthaRequest ReadRequest(const Json& j)
{
    if (!j.is_object()) throw std::invalid_argument("the request must be a JSON object");
    Reader in;
    in.Only(j, "",
            {"Category", "MuhuName", "SearchMode", "MomentDate", "MomentTime", "MomentAMPM", "FromDate", "ToDate",
             "FromTime", "ToTime", "Place", "Person", "Boy", "Girl", "settings"});
    MuhurthaRequest r;
    const TextField category = in.Text(j, "", "Category", "");
    const TextField name = in.Text(j, "", "MuhuName", "");
    r.Category = category.value;
    r.MuhuName = name.value;
    r.SearchMode = in.Choice(j, "", "SearchMode", 1, "1 (a range of days) or 2 (one moment)");
    const bool range = r.SearchMode == 1;

    // The place's date is read in both modes, a range search overwriting it.
    const TextField momentDate = in.Text(j, "", "MomentDate", kBlankDate);
    in.Date(momentDate, true);
    r.MomentDate = momentDate.value;
    const TextField momentTime = in.Text(j, "", "MomentTime", "00.00");
    in.Clock(momentTime, 24);
    r.MomentTime = momentTime.value;
    r.MomentAMPM = in.Choice(j, "", "MomentAMPM", 1, "1 (AM) or 2 (PM)");

    const TextField fromDate = in.Text(j, "", "FromDate", kBlankDate);
    const TextField toDate = in.Text(j, "", "ToDate", kBlankDate);
    const auto from = in.Date(fromDate, range);
    const auto to = in.Date(toDate, range);
    r.FromDate = fromDate.value;
    r.ToDate = toDate.value;
    if (range && from && to) {
        if (*to < *from)
            in.refused.Add("request field 'ToDate' (" + toDate.value + ") lies before 'FromDate' (" + fromDate.value +
                           "): the 'To:' date can't be lesser than the 'From:' date");
        else if (*to > from->AddYears(kLongestRangeYears))
            in.refused.Add("request field 'ToDate' (" + toDate.value + ") lies more than " +
                           std::to_string(kLongestRangeYears) + " years after 'FromDate' (" + fromDate.value +
                           "); search at most ten years at a time");
    }
    const TextField fromTime = in.Text(j, "", "FromTime", "00.00");
    const TextField toTime = in.Text(j, "", "ToTime", "00.00");
    in.Clock(fromTime, 24);
    in.Clock(toTime, 24);
    r.FromTime = fromTime.value;
    r.ToTime = toTime.value;

    if (j.contains("Place")) {
        const Json& p = j["Place"];
        if (p.is_object()) {
            in.Only(p, "Place", {"Country", "City", "Lati", "Longi", "NS", "EW", "GMT"});
            in.Place(p, "Place", r.Place);
        } else {
            in.refused.Add("request field 'Place' must be a JSON object");
        }
    }

    // A marriage is for the couple, anything else for the one person.
    const bool marriage = vb::UCase(r.Category) == "MARRIAGE";
    const auto person = [&](const char* key, RequestPerson& out, bool used) {
        if (j.contains(key)) out = in.Person(j[key], key, used);
        else if (used)
            in.refused.Add(std::string("request field '") + key + "' is missing: a " +
                           (marriage ? "marriage request needs the Boy and the Girl"
                                     : "request other than a marriage needs the Person") +
                           ", with at least the birth date BDate");
    };
    person("Person", r.Person, !marriage);
    person("Boy", r.Boy, marriage);
    person("Girl", r.Girl, marriage);

    if (j.contains("settings")) CheckSettings(j["settings"], "settings", in.refused);
    in.Catalogue(category, name);
    in.refused.ThrowIfAny();
    return r;
}

}  // namespace ranvel::cli

namespace ranvel::cli {

RequestRun::RequestRun(const std::string& path, bool json, const KindCheck& kindCheck)
    : Messages(json), progress_(!json && isatty(2))
{
    // Everything is checked before any chart is made or any file written.
    const Json j = ReadJsonFile(path);
    if (kindCheck) kindCheck(j);
    Request = ReadRequest(j);
    settings_ = std::make_unique<RunSettings>(j.contains("settings") ? j["settings"] : Json());
    SetMessageSink(&Messages);
    SetProgressSink(&progress_);
}

RequestRun::~RequestRun()
{
    SetMessageSink(nullptr);
    SetProgressSink(nullptr);
}

clsMuhurtha& RequestRun::Search()
{
    OpenAppData();
    if (!Request.CheckRangeDates()) throw std::invalid_argument("the 'To:' date can't be lesser than the 'From:' date");
    ZoneNotes = RequestZoneNotes(*RecosDB(), Request);
    ResetEngine(std::make_unique<clsMuhurtha>());
    clsMuhurtha& e = Engine();
    Request.RunEngine(e, TextDB(), RecosDB());
    return e;
}

}  // namespace ranvel::cli
