#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_set>

#include "sqlconv/tables/limits.h"

namespace norvelis::tables {

/// Names of the dictionary as names of tables and columns.
class Names {
  public:
    Names(bool lowerCase, const Limits& limits) : lowerCase_(lowerCase), limits_(limits) {}

    /// Hyphens and blanks become underscores, as do characters that no server takes in a name; any other
    /// character stays, and is for the dialect to quote.
    std::string Of(std::string_view dictionaryName) const;

    /// The name, cut when it is too long for the server: then it ends in a hash of the whole, so that it is
    /// the same each time and another one for another name.
    std::string Fitting(const std::string& name) const;

  private:
    bool lowerCase_;
    const Limits& limits_;
};

/// The names that are taken in one table, or in a schema. Letter case does not count.
class UsedNames {
  public:
    UsedNames() = default;
    /// Upper-case words with blanks between them that are taken from the start, and what no name may begin
    /// with: an underscore comes before that.
    explicit UsedNames(std::string_view taken, std::string_view takenPrefix = {});

    /// The first of the candidates that is free, or the last of them with a number behind it. Takes it.
    std::string Take(const Names& names, std::initializer_list<std::string> candidates);

  private:
    std::string Allowed(const std::string& name) const;
    bool TakeFree(const std::string& name);

    std::string takenPrefix_;
    std::unordered_set<std::string> used_;
};

}  // namespace norvelis::tables
