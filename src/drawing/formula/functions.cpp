#include "drawing/formula/functions.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/text.h"

namespace norvelis::drawing {

namespace {

using Kind = Function::Kind;
using Result = std::optional<Value>;

constexpr std::size_t kMany = 64;

bool IsTrue(const Value& value) {
    return value.number != 0;
}
bool Less(const Value& a, const Value& b) {
    return a.number < b.number;
}
Result Truth(bool holds) {
    return Value::Of(holds ? 1.0 : 0.0);
}

Result First(Values v) {
    return v[0];
}

Result Rgb(Values v) {
    const auto part = [&v](std::size_t i) { return static_cast<int>(std::clamp(v[i].number, 0.0, 255.0)); };
    return Value::Of(fmt::format("#{:02X}{:02X}{:02X}", part(0), part(1), part(2)));
}

Result Sum(Values v) {
    double sum = 0;
    for (const Value& each : v) sum += each.number;
    return Finite(sum);
}

Result Round(Values v) {
    const double scale = std::pow(10, std::clamp(std::trunc(v[1].number), -12.0, 12.0));
    return Finite(std::round(v[0].number * scale) / scale);
}

Result Modulus(Values v) {
    const double a = v[0].number, b = v[1].number;
    return b == 0 ? std::nullopt : Finite(a - b * std::floor(a / b));
}

constexpr Function kFunctions[] = {
    {"GUARD", 1, 1, Kind::Plain, First},
    {"THEMEGUARD", 1, 1, Kind::Plain, First},
    {"SETATREF", 1, 3, Kind::Plain, First},
    {"RGB", 3, 3, Kind::Plain, Rgb},
    {"MIN", 1, kMany, Kind::Plain,
     [](Values v) -> Result { return *std::min_element(v.begin(), v.end(), Less); }},
    {"MAX", 1, kMany, Kind::Plain,
     [](Values v) -> Result { return *std::max_element(v.begin(), v.end(), Less); }},
    {"SUM", 1, kMany, Kind::Plain, Sum},
    {"AND", 1, kMany, Kind::Plain, [](Values v) { return Truth(std::all_of(v.begin(), v.end(), IsTrue)); }},
    {"OR", 1, kMany, Kind::Plain, [](Values v) { return Truth(std::any_of(v.begin(), v.end(), IsTrue)); }},
    {"NOT", 1, 1, Kind::Plain, [](Values v) { return Truth(!IsTrue(v[0])); }},
    {"ABS", 1, 1, Kind::Plain, [](Values v) { return Finite(std::fabs(v[0].number)); }},
    {"SIGN", 1, 1, Kind::Plain,
     [](Values v) -> Result { return Value::Of((v[0].number > 0) - (v[0].number < 0) + 0.0); }},
    {"ROUND", 2, 2, Kind::Plain, Round},
    {"INT", 1, 1, Kind::Plain, [](Values v) { return Finite(std::floor(v[0].number)); }},
    {"MODULUS", 2, 2, Kind::Plain, Modulus},
    {"SQRT", 1, 1, Kind::Plain, [](Values v) { return Finite(std::sqrt(v[0].number)); }},
    {"SIN", 1, 1, Kind::Plain, [](Values v) { return Finite(std::sin(v[0].number)); }},
    {"COS", 1, 1, Kind::Plain, [](Values v) { return Finite(std::cos(v[0].number)); }},
    {"TAN", 1, 1, Kind::Plain, [](Values v) { return Finite(std::tan(v[0].number)); }},
    {"ATAN2", 2, 2, Kind::Plain, [](Values v) { return Finite(std::atan2(v[0].number, v[1].number)); }},
    {"PI", 0, 0, Kind::Plain, [](Values) -> Result { return Value::Of(std::numbers::pi); }},
    {"IF", 3, 3, Kind::If, nullptr},
    {"TEXTWIDTH", 1, 2, Kind::TextWidth, nullptr},
    {"TEXTHEIGHT", 2, 2, Kind::TextHeight, nullptr},
    {"_WALKGLUE", 3, 3, Kind::WalkGlue, nullptr},
    {"_XFTRIGGER", 1, 1, Kind::Trigger, nullptr},
    {"DEPENDSON", 1, kMany, Kind::Trigger, nullptr},
};

}  // namespace

const Function* FindFunction(std::string_view word) {
    const auto found =
        std::find_if(std::begin(kFunctions), std::end(kFunctions),
                     [word](const Function& each) { return EqualIgnoringCase(each.word, word); });
    return found == std::end(kFunctions) ? nullptr : found;
}

std::optional<Value> Finite(double number) {
    if (!std::isfinite(number) || std::fabs(number) > kGreatest) return std::nullopt;
    return Value::Of(number);
}

}  // namespace norvelis::drawing
