#include "base/ini.h"

#include <optional>
#include <stdexcept>
#include <vector>

#include "base/paths.h"
#include "base/text.h"

namespace norvelis {

namespace {

constexpr std::size_t kLongestValue = 255;

std::string_view TrimLine(std::string_view line) {
    const auto first = line.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return line.substr(first, line.find_last_not_of(" \t\r\n") - first + 1);
}

std::optional<std::string_view> SectionOf(std::string_view line) {
    line = TrimLine(line);
    if (!line.starts_with('[') || line.find(']') == std::string_view::npos) return std::nullopt;
    return TrimLine(line.substr(1, line.find(']') - 1));
}

// The value of a line "key = value", if it is one for this key.
std::optional<std::string_view> ValueOf(std::string_view line, std::string_view key) {
    line = TrimLine(line);
    const auto equals = line.find('=');
    if (line.starts_with(';') || equals == std::string_view::npos) return std::nullopt;
    if (!EqualIgnoringCase(TrimLine(line.substr(0, equals)), key)) return std::nullopt;
    return TrimLine(line.substr(equals + 1));
}

// Lines with their ends, so that what is not touched is written back byte for byte.
std::vector<std::string> LinesWithEnds(const std::string& content) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (begin < content.size()) {
        const auto newline = content.find('\n', begin);
        const auto end = newline == std::string::npos ? content.size() : newline + 1;
        lines.push_back(content.substr(begin, end - begin));
        begin = end;
    }
    return lines;
}

struct Place {
    std::optional<std::size_t> line;  // where the key is
    std::optional<std::size_t> last;  // last non-blank line of the section
};

Place Find(const std::vector<std::string>& lines, std::string_view section, std::string_view key) {
    Place place;
    bool inside = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (const auto name = SectionOf(lines[i])) {
            if (place.last) break;
            inside = EqualIgnoringCase(*name, TrimLine(section));
        }
        if (!inside) continue;
        if (!TrimLine(lines[i]).empty()) place.last = i;
        if (ValueOf(lines[i], key)) {
            place.line = i;
            break;
        }
    }
    return place;
}

}  // namespace

std::string ReadINIValue(std::string_view section, std::string_view key, std::string_view file) {
    if (!FileExists(file)) return {};
    std::string content;
    try {
        content = ReadFile(file);
    } catch (const std::runtime_error&) {
        return {};
    }
    const auto lines = LinesWithEnds(content);
    const Place place = Find(lines, section, key);
    return place.line ? std::string(ValueOf(lines[*place.line], key)->substr(0, kLongestValue))
                      : std::string();
}

bool WriteINIValue(std::string_view section, std::string_view key, std::string_view value,
                   std::string_view file) {
    if (file.empty()) return false;
    try {
        auto lines = LinesWithEnds(FileExists(file) ? ReadFile(file) : std::string());
        const bool crlf = !lines.empty() && lines.front().ends_with("\r\n");
        const std::string end = crlf ? "\r\n" : "\n";
        if (!lines.empty() && !lines.back().ends_with('\n')) lines.back() += end;

        const std::string entry = std::string(key) + "=" + std::string(value) + end;
        const Place place = Find(lines, section, key);
        if (place.line) {
            lines[*place.line] = entry;
        } else if (place.last) {
            lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(*place.last) + 1, entry);
        } else {
            lines.push_back("[" + std::string(section) + "]" + end);
            lines.push_back(entry);
        }
        std::string content;
        for (const auto& line : lines) content += line;
        WriteFile(file, content);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

}  // namespace norvelis
