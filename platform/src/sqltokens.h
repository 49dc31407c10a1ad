// A small tokenizer for SQL text and for find criteria. The database seam
// uses it to recognise the one-table selects it can make updatable, to read
// a saved query's stored text, and to parse the criteria of FindFirst.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ranvel::sqltext {

enum class TokKind {
    Word,        // bare identifier or keyword
    QuotedName,  // "name", [name] or `name`
    String,      // 'text'
    Number,      // 12, 1.5, 2e3
    Punct,       // operators and punctuation: = <> <= >= != ( ) , ; . * ...
};

struct Token {
    TokKind kind;
    std::string value;  // unquoted text for names and strings, else the text
    char quote = 0;     // opening quote character of QuotedName / String
    std::size_t begin = 0;
    std::size_t end = 0;  // one past the last character in the source
};

// Comments and blanks are skipped. An unterminated quote throws
// DatabaseError naming the text.
std::vector<Token> Tokenize(std::string_view text);

// A bare word equal to kw, case-insensitively.
bool IsWord(const Token& t, std::string_view kw);
bool IsPunct(const Token& t, std::string_view p);
// A bare word or a quoted name: something that can name a table or field.
bool IsName(const Token& t);

// "name" with embedded double quotes doubled.
std::string QuoteName(std::string_view name);

}  // namespace ranvel::sqltext
