#include "ranvel/data/textlookup.h"

#include "ranvel/data/messages.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {
[[noreturn]] void NotSet() { throw vb::RuntimeError("Object variable or With block variable not set"); }
}  // namespace

Variant GetTextBetween(Database* textDB, std::string_view table, const Variant& head, std::string_view category)
{
    if (!textDB) NotSet();
    std::string h = head.ToText();
    std::string sql = "SELECT Val From " + std::string(table) + " WHERE  Head = " + "'" + h + "'";
    if (!category.empty()) sql += " AND Category = '" + std::string(category) + "'";
    auto rs = textDB->OpenRecordset(sql);
    if (rs->HasRows()) {
        rs->MoveFirst();
        Variant v = rs->Field("val");
        return v.IsNull() ? Variant() : v;
    }
    MsgBox(Msg(2) + " '" + h + "'" + " in  '" + std::string(category) + "'");
    return Variant();
}

}  // namespace ranvel

namespace ranvel {

namespace {

struct OwnQuery {
    const char* head;      // the query up to the head's opening quote
    bool hasCategory;      // the tail " AND Category = '" follows the head
    bool guardsNull;       // a Null Val gives "" instead of an error
    bool namesCategory;    // the missing-row message names the category
};

// Each table's own query, as the lookups have always written them: note
// Daily's single blank after WHERE, and that only Daily guards a Null.
Variant RunOwnQuery(Database* textDB, const OwnQuery& q, const Variant& head, std::string_view category)
{
    if (!textDB) NotSet();
    std::string h = head.ToText();
    std::string sql = std::string(q.head) + "'" + h + "'";
    if (q.hasCategory) sql += " AND Category = '" + std::string(category) + "'";
    auto rs = textDB->OpenRecordset(sql);
    if (rs->HasRows()) {
        rs->MoveFirst();
        Variant v = rs->Field("val");
        // Only the daily texts turn a Null into ""; the others hand it back
        // and the caller's text work reads it as nothing.
        if (v.IsNull() && q.guardsNull) return Variant(std::string());
        return v;
    }
    std::string text = Msg(2) + " '" + h + "'";
    if (q.namesCategory) text += " in  '" + std::string(category) + "'";
    MsgBox(text);
    return Variant();
}

const OwnQuery kMuhu{"SELECT Val From Muhu WHERE  Head = ", true, false, true};
const OwnQuery kBhava{"SELECT Val From Bhava WHERE  Head = ", true, false, true};
const OwnQuery kNakshatra{"SELECT Val From Nakshatra WHERE  Head = ", true, false, true};
const OwnQuery kFortune{"SELECT Val From FORTUNE WHERE  Head = ", true, false, true};
const OwnQuery kDaily{"SELECT Val From Daily WHERE Head = ", true, true, true};
const OwnQuery kAsp{"SELECT Val From ASP WHERE  Head = ", false, false, false};
const OwnQuery kVphala{"SELECT Val From VPHALA WHERE  Head = ", false, false, false};
const OwnQuery kYogname{"SELECT Val From YOGNAME WHERE  Head = ", false, false, false};
const OwnQuery kYogas{"SELECT Val From YOGAS WHERE  Head = ", false, false, true};

}  // namespace

Variant GetHeadValue(Database* textDB, int mode, const Variant& head, std::string_view category)
{
    switch (mode) {
    case 1: return GetTextBetween(textDB, "CNVT", head, category);
    case 2: return RunOwnQuery(textDB, kYogas, head, category);  // the category shows only in the message
    case 3: return RunOwnQuery(textDB, kVphala, head, "");
    case 4: return GetTextBetween(textDB, "MarMatch", head, "");
    case 5: return GetConjText(textDB, head);
    case 6: return RunOwnQuery(textDB, kFortune, head, category);
    case 7: return RunOwnQuery(textDB, kYogname, head, "");
    case 8: return RunOwnQuery(textDB, kNakshatra, head, category);
    case 9: return RunOwnQuery(textDB, kBhava, head, category);
    case 10: return RunOwnQuery(textDB, kMuhu, head, category);
    case 11: return RunOwnQuery(textDB, kDaily, head, category);
    case 12: return GetTextBetween(textDB, "Transits", head, "");
    default: return Variant();
    }
}

Variant GetConjText(Database* textDB, const Variant& head) { return RunOwnQuery(textDB, kAsp, head, ""); }

std::string GetGenText(Database* textDB, const Variant& head)
{
    return GetTextBetween(textDB, "cnvt", head, "Gen").ToText();
}

namespace {
std::string symbolCache[4];
}  // namespace

std::string GetSymbolText(int code, Database* textDB)
{
    static const char* const symbols[4] = {":", "/", "-", "+"};
    int slot;
    switch (code) {
    case 1:
    case 2: slot = 0; break;
    case 3: slot = 1; break;
    case 4: slot = 2; break;
    case 5: slot = 3; break;
    default: return {};
    }
    if (symbolCache[slot].empty())
        symbolCache[slot] = GetHeadValue(textDB, 1, symbols[slot], "Symbols").ToText();
    return symbolCache[slot];
}

void ResetSymbolCache()
{
    for (auto& s : symbolCache) s.clear();
}

}  // namespace ranvel
