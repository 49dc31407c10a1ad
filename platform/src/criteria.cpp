#include "criteria.h"

#include <cctype>
#include <charconv>

#include "ranvel/platform/database.h"
#include "ranvel/platform/vbmath.h"
#include "sqltokens.h"

namespace ranvel {

using sqltext::IsPunct;
using sqltext::IsWord;
using sqltext::Token;
using sqltext::TokKind;

namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Matches one bracketed set starting at pattern[p] == '['. Returns the index
// after ']' and whether c is in the set; npos when the bracket never closes.
std::size_t MatchSet(std::string_view pattern, std::size_t p, char c, bool& in)
{
    std::size_t close = pattern.find(']', p + 1);
    if (close == std::string_view::npos) return std::string_view::npos;
    std::string_view set = pattern.substr(p + 1, close - p - 1);
    bool negate = !set.empty() && set[0] == '!';
    if (negate) set.remove_prefix(1);
    bool found = false;
    for (std::size_t i = 0; i < set.size(); ++i) {
        if (i + 2 < set.size() && set[i + 1] == '-') {
            if (Lower(c) >= Lower(set[i]) && Lower(c) <= Lower(set[i + 2])) found = true;
            i += 2;
        } else if (Lower(set[i]) == Lower(c)) {
            found = true;
        }
    }
    in = found != negate;
    return close + 1;
}

bool LikeFrom(std::string_view s, std::size_t i, std::string_view pat, std::size_t p)
{
    while (p < pat.size()) {
        char pc = pat[p];
        if (pc == '*' || pc == '%') {
            while (p < pat.size() && (pat[p] == '*' || pat[p] == '%')) ++p;
            if (p == pat.size()) return true;
            for (std::size_t k = i; k <= s.size(); ++k)
                if (LikeFrom(s, k, pat, p)) return true;
            return false;
        }
        if (i >= s.size()) return false;
        if (pc == '?' || pc == '_') {
            ++i, ++p;
        } else if (pc == '#') {
            if (!std::isdigit(static_cast<unsigned char>(s[i]))) return false;
            ++i, ++p;
        } else if (pc == '[') {
            bool in = false;
            std::size_t next = MatchSet(pat, p, s[i], in);
            if (next == std::string_view::npos) {
                // An unclosed bracket stands for itself.
                if (s[i] != '[') return false;
                ++i, ++p;
            } else {
                if (!in) return false;
                ++i, p = next;
            }
        } else {
            if (Lower(pc) != Lower(s[i])) return false;
            ++i, ++p;
        }
    }
    return i == s.size();
}

int CompareNoCase(std::string_view a, std::string_view b)
{
    std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        unsigned char x = static_cast<unsigned char>(Lower(a[i]));
        unsigned char y = static_cast<unsigned char>(Lower(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool IsBool(const Variant& v) { return std::holds_alternative<bool>(v.Raw()); }

bool NumericValue(const Variant& v, double& out)
{
    if (v.IsNumber() || v.IsDate()) {
        out = v.ToDouble();
        return true;
    }
    if (v.IsText() && vb::IsNumeric(std::get<std::string>(v.Raw()))) {
        out = v.ToDouble();
        return true;
    }
    return false;
}

}  // namespace

bool LikeMatch(std::string_view text, std::string_view pattern) { return LikeFrom(text, 0, pattern, 0); }

struct Criteria::Node {
    enum class Kind { Or, And, Not, Compare, Like, IsNull } kind;
    std::unique_ptr<Node> left, right;  // Or, And; Not uses left
    // Compare, Like, IsNull: an operand is a field index or a literal.
    int leftField = -1, rightField = -1;
    Variant leftValue, rightValue;
    std::string op;  // "=", "<>", "<", "<=", ">", ">="
    bool negate = false;

    const Variant& Left(const std::vector<Variant>& row) const { return leftField >= 0 ? row[leftField] : leftValue; }
    const Variant& Right(const std::vector<Variant>& row) const
    {
        return rightField >= 0 ? row[rightField] : rightValue;
    }

    bool Eval(const std::vector<Variant>& row) const
    {
        switch (kind) {
        case Kind::Or: return left->Eval(row) || right->Eval(row);
        case Kind::And: return left->Eval(row) && right->Eval(row);
        case Kind::Not: return !left->Eval(row);
        case Kind::IsNull: return Left(row).IsNull() != negate;
        case Kind::Like: {
            const Variant& a = Left(row);
            const Variant& b = Right(row);
            if (a.IsNull() || b.IsNull()) return false;
            return LikeMatch(a.ToText(), b.ToText()) != negate;
        }
        case Kind::Compare: return CompareValues(Left(row), Right(row));
        }
        return false;
    }

    bool CompareValues(const Variant& a, const Variant& b) const
    {
        // Null compares with nothing, not even with Null.
        if (a.IsNull() || b.IsNull() || a.IsEmpty() || b.IsEmpty()) return false;
        int cmp = 0;
        double x = 0, y = 0;
        if (IsBool(a) || IsBool(b)) {
            // A yes/no field may hold 1 or -1 for true.
            bool p = a.ToBool(), q = b.ToBool();
            cmp = p == q ? 0 : (p ? 1 : -1);
        } else if (NumericValue(a, x) && NumericValue(b, y)) {
            cmp = x < y ? -1 : (x > y ? 1 : 0);
        } else {
            cmp = CompareNoCase(a.ToText(), b.ToText());
        }
        if (op == "=") return cmp == 0;
        if (op == "<>") return cmp != 0;
        if (op == "<") return cmp < 0;
        if (op == "<=") return cmp <= 0;
        if (op == ">") return cmp > 0;
        return cmp >= 0;
    }
};

namespace {

class Parser {
public:
    Parser(std::string_view text, const std::vector<std::string>& fields)
        : text_(text), fields_(fields), toks_(sqltext::Tokenize(text))
    {}

    std::unique_ptr<Criteria::Node> Parse()
    {
        if (toks_.empty()) Fail();
        auto n = Or();
        if (pos_ != toks_.size()) Fail();
        return n;
    }

private:
    using Node = Criteria::Node;

    [[noreturn]] void Fail() const
    {
        throw DatabaseError("Syntax error in find criteria: " + std::string(text_));
    }
    bool AtEnd() const { return pos_ >= toks_.size(); }
    const Token& Peek() const
    {
        if (AtEnd()) Fail();
        return toks_[pos_];
    }
    bool AcceptWord(std::string_view kw)
    {
        if (!AtEnd() && IsWord(toks_[pos_], kw)) return ++pos_, true;
        return false;
    }
    bool AcceptPunct(std::string_view p)
    {
        if (!AtEnd() && IsPunct(toks_[pos_], p)) return ++pos_, true;
        return false;
    }

    std::unique_ptr<Node> Binary(Node::Kind kind, std::unique_ptr<Node> l, std::unique_ptr<Node> r)
    {
        auto n = std::make_unique<Node>();
        n->kind = kind;
        n->left = std::move(l);
        n->right = std::move(r);
        return n;
    }

    std::unique_ptr<Node> Or()
    {
        auto n = And();
        while (AcceptWord("OR")) n = Binary(Node::Kind::Or, std::move(n), And());
        return n;
    }
    std::unique_ptr<Node> And()
    {
        auto n = Not();
        while (AcceptWord("AND")) n = Binary(Node::Kind::And, std::move(n), Not());
        return n;
    }
    std::unique_ptr<Node> Not()
    {
        if (AcceptWord("NOT")) return Binary(Node::Kind::Not, Not(), nullptr);
        if (AcceptPunct("(")) {
            auto n = Or();
            if (!AcceptPunct(")")) Fail();
            return n;
        }
        return Condition();
    }

    // Reads a field reference or a literal into (field, value).
    void Operand(int& field, Variant& value)
    {
        const Token& t = Peek();
        ++pos_;
        if (t.kind == TokKind::String || (t.kind == TokKind::QuotedName && t.quote == '"')) {
            value = Variant(t.value);
            return;
        }
        bool negative = false;
        const Token* num = &t;
        if (IsPunct(t, "-") || IsPunct(t, "+")) {
            negative = t.value == "-";
            num = &Peek();
            ++pos_;
            if (num->kind != TokKind::Number) Fail();
        }
        if (num->kind == TokKind::Number) {
            double d = 0;
            const std::string& s = num->value;
            auto res = std::from_chars(s.data(), s.data() + s.size(), d);
            if (res.ec != std::errc() || res.ptr != s.data() + s.size()) Fail();
            value = negative ? Variant(-d) : Variant(d);
            return;
        }
        if (IsWord(t, "True")) return void(value = Variant(true));
        if (IsWord(t, "False")) return void(value = Variant(false));
        if (IsWord(t, "Null")) return void(value = Variant::Null());
        if (!sqltext::IsName(t) || IsKeyword(t)) Fail();
        for (std::size_t i = 0; i < fields_.size(); ++i)
            if (vb::EqualsNoCase(fields_[i], t.value)) return void(field = static_cast<int>(i));
        throw DatabaseError("'" + t.value + "' is not a valid field name in find criteria: " + std::string(text_));
    }

    static bool IsKeyword(const Token& t)
    {
        for (auto kw : {"AND", "OR", "NOT", "LIKE", "IS"})
            if (IsWord(t, kw)) return true;
        return false;
    }

    std::unique_ptr<Node> Condition()
    {
        auto n = std::make_unique<Node>();
        Operand(n->leftField, n->leftValue);
        if (AcceptWord("IS")) {
            n->kind = Node::Kind::IsNull;
            n->negate = AcceptWord("NOT");
            if (!AcceptWord("Null")) Fail();
            return n;
        }
        n->negate = AcceptWord("NOT");
        if (AcceptWord("LIKE")) {
            n->kind = Node::Kind::Like;
        } else {
            if (n->negate) Fail();
            const Token& t = Peek();
            static constexpr std::string_view ops[] = {"=", "==", "<>", "!=", "<", "<=", ">", ">="};
            bool known = false;
            for (auto op : ops)
                if (IsPunct(t, op)) known = true;
            if (!known) Fail();
            ++pos_;
            n->kind = Node::Kind::Compare;
            n->op = t.value == "==" ? "=" : (t.value == "!=" ? "<>" : t.value);
        }
        Operand(n->rightField, n->rightValue);
        return n;
    }

    std::string_view text_;
    const std::vector<std::string>& fields_;
    std::vector<Token> toks_;
    std::size_t pos_ = 0;
};

}  // namespace

Criteria::Criteria(std::string_view text, const std::vector<std::string>& fields)
    : root_(Parser(text, fields).Parse())
{}

Criteria::~Criteria() = default;
Criteria::Criteria(Criteria&&) noexcept = default;

bool Criteria::Matches(const std::vector<Variant>& row) const { return root_->Eval(row); }

}  // namespace ranvel
