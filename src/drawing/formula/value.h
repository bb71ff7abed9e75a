#pragma once

#include <string>
#include <utility>

namespace norvelis::drawing {

/// What a formula gives: a number in internal units, or a text (a colour is a text "#RRGGBB").
struct Value {
    double number = 0;
    std::string text;
    bool isText = false;

    static Value Of(double number) { return {number, {}, false}; }
    static Value Of(std::string text) { return {0, std::move(text), true}; }
    bool operator==(const Value&) const = default;
};

}  // namespace norvelis::drawing
