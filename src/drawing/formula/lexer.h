#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/model/names.h"

namespace norvelis::drawing {

struct Token {
    enum class Kind { Number, String, Word, Symbol, End } kind = Kind::End;
    std::string text;        ///< A word, a symbol, or what is between a string's quotes.
    std::string spelling;    ///< Its spelling in a formula's universal form.
    double number = 0;       ///< In internal units.
    Name unit = Name::None;  ///< Of a number.
};

/// The tokens of a formula with an End behind them; empty when it holds a character that formulas do not
/// have. A word is a name with its dots, index and sheet: "Char.Size[1]", "ThePage!PageHeight".
std::vector<Token> Tokens(std::string_view formula);

}  // namespace norvelis::drawing
