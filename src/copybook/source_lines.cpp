#include "copybook/source_lines.h"

#include <algorithm>

#include "base/text.h"

namespace norvelis::copybook {

namespace {

constexpr std::size_t kLastColumn = 72;
constexpr std::size_t kClauseColumn = 42, kNextLineColumn = 20;
constexpr std::string_view kCommentStart = "      * ";

/// Columns of UTF-8 text: one for each character.
std::size_t Width(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](unsigned char c) { return (c & 0xC0) != 0x80; }));
}

void PadTo(std::string& line, std::size_t column) {
    const std::size_t width = Width(line);
    if (width + 1 < column) line.append(column - 1 - width, ' ');
}

/// A text in one line: what would end it or is no character to be seen becomes a blank.
std::string Visible(std::string_view text) {
    std::string line(text);
    std::ranges::replace_if(
        line, [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
    return line;
}

}  // namespace

void SourceLines::AddComment(std::string_view text) {
    std::string line(kCommentStart);
    bool isEmpty = true;
    const std::string visible = Visible(text);
    std::string_view rest = Trim(visible);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        const std::string_view word = rest.substr(0, end);
        if (!isEmpty && Width(line) + 1 + Width(word) > kLastColumn) {
            text_ += line + '\n';
            line = kCommentStart;
            isEmpty = true;
        }
        if (!isEmpty) line += ' ';
        line += word;
        isEmpty = false;
        rest = Trim(rest.substr(end));
    }
    text_ += std::string(TrimEnd(line)) + '\n';
}

void SourceLines::AddEntry(std::size_t column, const std::string& name,
                           const std::vector<std::string>& clauses) {
    std::string line(column - 1, ' ');
    line += name;
    bool isFirst = true;
    for (std::size_t i = 0; i < clauses.size(); ++i) {
        const std::size_t period = i + 1 == clauses.size() ? 1 : 0;
        if (isFirst) PadTo(line, kClauseColumn - 1);
        if (Width(line) + 1 + Width(clauses[i]) + period > kLastColumn) {
            text_ += std::string(TrimEnd(line)) + '\n';
            const bool fits = kClauseColumn - 1 + Width(clauses[i]) + period <= kLastColumn;
            line.assign((fits ? kClauseColumn : kNextLineColumn) - 1, ' ');
        } else {
            line += ' ';
        }
        line += clauses[i];
        isFirst = false;
    }
    text_ += line + ".\n";
}

void SourceLines::AddEntryAsComment(const std::string& name, const std::vector<std::string>& clauses) {
    std::string entry = name;
    for (const std::string& clause : clauses) entry += ' ' + clause;
    AddComment(entry + '.');
}

}  // namespace norvelis::copybook
