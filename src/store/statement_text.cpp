#include "store/statement_text.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "base/dates.h"
#include "base/failure.h"
#include "base/text.h"

namespace norvelis {

namespace {

bool IsWordLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// Words, numbers, quoted texts, # literals and single signs; blanks fall away between them.
std::vector<std::string> Tokens(std::string_view text) {
    std::vector<std::string> tokens;
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        std::size_t end = i + 1;
        if (std::isspace(static_cast<unsigned char>(c))) {
            i = end;
            continue;
        }
        if (IsWordLetter(c)) {
            while (end < text.size() && IsWordLetter(text[end])) ++end;
        } else if (c == '\'' || c == '"' || c == '#' || c == '[') {
            const auto close = text.find(c == '[' ? ']' : c, end);
            end = close == std::string_view::npos ? text.size() : close + 1;
        } else if ((c == '<' || c == '>' || c == '!') && end < text.size() &&
                   (text[end] == '=' || text[end] == '>')) {
            ++end;
        }
        tokens.emplace_back(text.substr(i, end - i));
        i = end;
    }
    return tokens;
}

std::string DateLiteral(const std::string& token) {
    const auto date = ParseDateTime(std::string_view(token).substr(1, token.size() - 2));
    if (!date) throw RuntimeFailure(FailureNumber::TypeMismatch, token + " is no date");
    return std::to_string(*date);
}

std::string Word(const std::vector<std::string>& tokens, std::size_t i) {
    return i < tokens.size() ? LowerCase(tokens[i]) : std::string();
}

}  // namespace

StatementText Translate(std::string_view classic) {
    std::vector<std::string> tokens = Tokens(classic);
    const std::string verb = Word(tokens, 0);

    if (verb == "delete" && Word(tokens, 1) == "*") tokens.erase(tokens.begin() + 1);

    // UPDATE has one `set` that is the keyword: the word behind its table.
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const std::string word = Word(tokens, i);
        if (word == "set" && !(verb == "update" && i == 2)) tokens[i] = "\"set\"";
        if (word == "true") tokens[i] = "1";
        if (word == "false") tokens[i] = "0";
        if (tokens[i].starts_with('#')) tokens[i] = DateLiteral(tokens[i]);
    }

    StatementText result;
    const auto joined = [&] {
        std::string sql;
        for (const auto& token : tokens) sql += (sql.empty() ? "" : " ") + token;
        return sql;
    };
    if (verb != "select") {
        result.sql = joined();
        return result;
    }

    const bool ordered = std::any_of(tokens.begin(), tokens.end(),
                                     [](const auto& t) { return EqualIgnoringCase(t, "order"); });
    if (tokens.size() > 3 && Word(tokens, 1) == "*" && Word(tokens, 2) == "from") {
        result.table = tokens[3];
        tokens[1] = "rowid";
        result.sql = joined() + (ordered ? ", rowid" : " ORDER BY rowid");
    } else if (tokens.size() > 5 && Word(tokens, 1) == "distinct" && Word(tokens, 2) == "(" && !ordered) {
        // "distinct(c)": the engine would give the values in the order of an index.
        const std::string column = tokens[3];
        tokens.erase(tokens.begin() + 1, tokens.begin() + 5);
        tokens.insert(tokens.begin() + 1, column);
        result.sql = joined() + " GROUP BY " + column + " ORDER BY min(rowid)";
    } else {
        result.sql = joined();
    }
    return result;
}

}  // namespace norvelis
