#include "sqltokens.h"

#include <cctype>

#include "ranvel/platform/database.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::sqltext {

namespace {

bool IsWordStart(unsigned char c) { return std::isalpha(c) || c == '_' || c >= 0x80; }
bool IsWordChar(unsigned char c) { return std::isalnum(c) || c == '_' || c == '$' || c >= 0x80; }

// Reads a quoted run starting at text[i] (the opening quote); a doubled
// closing quote stands for one. Returns the index after the closing quote.
std::size_t ReadQuoted(std::string_view text, std::size_t i, char close, std::string& value)
{
    std::size_t j = i + 1;
    while (j < text.size()) {
        if (text[j] == close) {
            if (close != ']' && j + 1 < text.size() && text[j + 1] == close) {
                value += close;
                j += 2;
                continue;
            }
            return j + 1;
        }
        value += text[j++];
    }
    throw DatabaseError("Unterminated quote in: " + std::string(text));
}

}  // namespace

std::vector<Token> Tokenize(std::string_view text)
{
    std::vector<Token> out;
    std::size_t i = 0;
    const std::size_t n = text.size();
    while (i < n) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        if (std::isspace(c)) {
            ++i;
            continue;
        }
        if (c == '-' && i + 1 < n && text[i + 1] == '-') {
            while (i < n && text[i] != '\n') ++i;
            continue;
        }
        if (c == '/' && i + 1 < n && text[i + 1] == '*') {
            std::size_t e = text.find("*/", i + 2);
            i = e == std::string_view::npos ? n : e + 2;
            continue;
        }
        Token t{};
        t.begin = i;
        if (IsWordStart(c)) {
            std::size_t j = i + 1;
            while (j < n && IsWordChar(static_cast<unsigned char>(text[j]))) ++j;
            t.kind = TokKind::Word;
            t.value = std::string(text.substr(i, j - i));
            i = j;
        } else if (std::isdigit(c) || (c == '.' && i + 1 < n && std::isdigit(static_cast<unsigned char>(text[i + 1])))) {
            std::size_t j = i;
            while (j < n && std::isdigit(static_cast<unsigned char>(text[j]))) ++j;
            if (j < n && text[j] == '.') {
                ++j;
                while (j < n && std::isdigit(static_cast<unsigned char>(text[j]))) ++j;
            }
            if (j < n && (text[j] == 'e' || text[j] == 'E')) {
                std::size_t k = j + 1;
                if (k < n && (text[k] == '+' || text[k] == '-')) ++k;
                if (k < n && std::isdigit(static_cast<unsigned char>(text[k]))) {
                    while (k < n && std::isdigit(static_cast<unsigned char>(text[k]))) ++k;
                    j = k;
                }
            }
            t.kind = TokKind::Number;
            t.value = std::string(text.substr(i, j - i));
            i = j;
        } else if (c == '\'') {
            t.kind = TokKind::String;
            t.quote = '\'';
            i = ReadQuoted(text, i, '\'', t.value);
        } else if (c == '"' || c == '`' || c == '[') {
            t.kind = TokKind::QuotedName;
            t.quote = static_cast<char>(c);
            i = ReadQuoted(text, i, c == '[' ? ']' : static_cast<char>(c), t.value);
        } else {
            t.kind = TokKind::Punct;
            static constexpr std::string_view two[] = {"<>", "<=", ">=", "!=", "==", "||"};
            std::size_t len = 1;
            for (auto op : two)
                if (text.substr(i, 2) == op) len = 2;
            t.value = std::string(text.substr(i, len));
            i += len;
        }
        t.end = i;
        out.push_back(std::move(t));
    }
    return out;
}

bool IsWord(const Token& t, std::string_view kw) { return t.kind == TokKind::Word && vb::EqualsNoCase(t.value, kw); }

bool IsPunct(const Token& t, std::string_view p) { return t.kind == TokKind::Punct && t.value == p; }

bool IsName(const Token& t) { return t.kind == TokKind::Word || t.kind == TokKind::QuotedName; }

std::string QuoteName(std::string_view name)
{
    std::string r = "\"";
    for (char ch : name) {
        if (ch == '"') r += '"';
        r += ch;
    }
    r += '"';
    return r;
}

}  // namespace ranvel::sqltext
