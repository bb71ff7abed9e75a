#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "drawing/formula/value.h"

// The functions that formulas know.
namespace norvelis::drawing {

using Values = std::span<const Value>;

struct Function {
    /// Most work on the values of their arguments alone; the others need the sheet, or not all arguments.
    enum class Kind { Plain, If, TextWidth, TextHeight, WalkGlue, Trigger };

    std::string_view word;
    std::size_t least, most;  ///< Arguments.
    Kind kind;
    std::optional<Value> (*plain)(Values arguments);  ///< Of a plain function; nothing when it has no value.
};

/// In any letter case; null when there is none of this name.
const Function* FindFunction(std::string_view word);

/// The number, or nothing when it is none or beyond all measure.
std::optional<Value> Finite(double number);

inline constexpr double kGreatest = 1e12;

}  // namespace norvelis::drawing
