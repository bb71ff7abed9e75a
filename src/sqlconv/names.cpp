#include "sqlconv/names.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "sqlconv/type_numbers.h"

namespace norvelis {

namespace {

// "not null" never meets a cleaned name, which has no blanks; it belongs to the list all the same.
constexpr std::array<std::string_view, 11> kReservedWords = {
    "int", "update", "null", "not null", "set", "select", "float", "double", "date", "datetime", "default"};

constexpr int kIntNumber = 3, kCharNumber = 123;

}  // namespace

bool IsReservedWord(std::string_view text) {
    return std::find(kReservedWords.begin(), kReservedWords.end(), LowerCase(text)) == kReservedWords.end();
}

std::string CleanName(std::string_view text) {
    std::string name(text);
    for (const char replaced : {' ', '-', '('}) std::replace(name.begin(), name.end(), replaced, '_');
    if (!IsReservedWord(name)) name += "_c";
    // Only now: a closing parenthesis saves a word from being taken for a reserved one.
    std::replace(name.begin(), name.end(), ')', '_');
    return name;
}

std::string SqlTypeFor(std::string_view picture) {
    picture = Trim(picture);
    const char first = picture.empty() ? '\0' : picture.front();
    if (first == 'X') return std::string(TypeText(kCharNumber));
    if (first == '9' || first == 'S' || picture.find("V9") != std::string_view::npos)
        return std::string(TypeText(kIntNumber));
    return {};
}

}  // namespace norvelis
