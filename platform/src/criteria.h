// The criteria of FindFirst / FindNext, evaluated against the rows a
// recordset already holds, so that a find works alike on updatable and
// read-only recordsets and sees exactly the rows in recordset order.
//
// Forms understood: field op value with op one of = <> != < <= > >=,
// field [NOT] LIKE 'pattern', field IS [NOT] NULL, joined by AND, OR, NOT
// and parentheses. Values are 'text', "text", numbers, True, False, Null or
// another field. Text compares case-insensitively. In a pattern * or %
// stands for any run, ? or _ for one character, # for one digit, and
// [abc], [a-z], [!abc] for one character of (or not of) a set.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ranvel/platform/variant.h"

namespace ranvel {

class Criteria {
public:
    // Parses the text against the recordset's field names; a syntax error or
    // an unknown field throws DatabaseError.
    Criteria(std::string_view text, const std::vector<std::string>& fields);
    ~Criteria();
    Criteria(Criteria&&) noexcept;

    bool Matches(const std::vector<Variant>& row) const;

    struct Node;

private:
    std::unique_ptr<Node> root_;
};

// Pattern match of LIKE with the wildcards above, case-insensitive.
bool LikeMatch(std::string_view text, std::string_view pattern);

}  // namespace ranvel
