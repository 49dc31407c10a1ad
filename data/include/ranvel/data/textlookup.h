// Text lookup: every word that a chart or a page shows comes from the text
// database of the chosen language, found by its head and, where the table
// has one, its category.
#pragma once

#include <string>
#include <string_view>

#include "ranvel/platform/database.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

// The first Val of the rows whose Head (and Category, when it is not empty)
// match. A Null Val gives the empty value. When no row matches, the message
// "Item Not Found '<head>' in  '<category>'" is shown and the empty value
// returned: a missing text never stops a computation. The values go into the
// query as they stand, so a head holding an apostrophe breaks it (an error).
Variant GetTextBetween(Database* textDB, std::string_view table, const Variant& head, std::string_view category);

}  // namespace ranvel

namespace ranvel {

// The lookup by a numbered table: 1 CNVT (by category), 2 YOGAS, 3 VPHALA,
// 4 MarMatch, 5 ASP, 6 FORTUNE, 7 YOGNAME, 8 Nakshatra, 9 Bhava, 10 Muhu,
// 11 Daily, 12 Transits. Any other mode gives the empty value, silently.
Variant GetHeadValue(Database* textDB, int mode, const Variant& head, std::string_view category);
// The conjunction and aspect texts (ASP), by head alone.
Variant GetConjText(Database* textDB, const Variant& head);
// A word that a page wants translated: CNVT, category "Gen".
std::string GetGenText(Database* textDB, const Variant& head);

// The separators of numeric text: codes 1 and 2 give ":", 3 "/", 4 "-",
// 5 "+", each as the language writes it (CNVT, category "Symbols"). Each is
// looked up once per run and then kept; other codes give "".
std::string GetSymbolText(int code, Database* textDB);
// Forgets the kept separators (a new language, or a test).
void ResetSymbolCache();

}  // namespace ranvel
