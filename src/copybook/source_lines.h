#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvelis::copybook {

/// Lines of COBOL in fixed form: columns 8 to 72, comments from column 7. What is longer goes on in the next
/// line, broken between words. Lines end with LF.
class SourceLines {
  public:
    void AddComment(std::string_view text);

    /// Level and name from 1-based column `column`, then the clauses, and a period.
    void AddEntry(std::size_t column, const std::string& name, const std::vector<std::string>& clauses);
    /// The same as a comment.
    void AddEntryAsComment(const std::string& name, const std::vector<std::string>& clauses);

    std::string Take() { return std::move(text_); }

  private:
    std::string text_;
};

}  // namespace norvelis::copybook
