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
        symbolCache[slot] = GetTextBetween(textDB, "CNVT", symbols[slot], "Symbols").ToText();
    return symbolCache[slot];
}

void ResetSymbolCache()
{
    for (auto& s : symbolCache) s.clear();
}

}  // namespace ranvel
