#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"

namespace norvelis {

/// The lines of a file of cases, each cut at " | " and trimmed; "#" begins a comment.
inline std::vector<std::vector<std::string>> ReadCases(const std::string& name) {
    std::ifstream file(std::string(NORVELIS_SOURCE "/tests/sqlconv/cases/") + name);
    std::vector<std::vector<std::string>> cases;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') continue;
        std::vector<std::string> parts;
        for (std::size_t from = 0, to = 0; to != std::string::npos; from = to + 1) {
            to = line.find('|', from);
            parts.emplace_back(Trim(std::string_view(line).substr(from, to - from)));
        }
        cases.push_back(std::move(parts));
    }
    if (cases.empty()) throw std::runtime_error("no cases in " + name);
    return cases;
}

/// What a case expects of a dialect: the part that begins with its name, else the one for all.
inline std::string ExpectedOf(const std::vector<std::string>& parts, std::size_t forAll,
                              std::string_view dialect) {
    for (std::size_t i = forAll + 1; i < parts.size(); ++i) {
        if (parts[i].starts_with(std::string(dialect) + " ")) return parts[i].substr(dialect.size() + 1);
    }
    return parts.at(forAll);
}

}  // namespace norvelis
