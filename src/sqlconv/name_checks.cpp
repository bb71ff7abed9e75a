#include "sqlconv/name_checks.h"

#include <cctype>

#include "sqlconv/names.h"
#include "sqlconv/record_tables.h"

namespace norvelis {

namespace {

bool IsNameCharacter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x80 && (std::isalnum(byte) || c == '_' || c == '#' || c == '@' || c == '$');
}

/// The whole character that begins at `position` of UTF-8 text, as a message can show it.
std::string CharacterAt(std::string_view text, std::size_t position) {
    const auto byte = static_cast<unsigned char>(text[position]);
    if (byte < 0x20 || byte == 0x7F) return "the control character " + std::to_string(byte);
    std::size_t length = 1;
    while (position + length < text.size() &&
           (static_cast<unsigned char>(text[position + length]) & 0xC0) == 0x80)
        ++length;
    return "the character \"" + std::string(text.substr(position, length)) + '"';
}

/// The first character of the cleaned name that no SQL name holds; empty when there is none.
std::string StrangeCharacter(std::string_view dictionaryName) {
    const std::string name = CleanName(dictionaryName);
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (!IsNameCharacter(name[i])) return CharacterAt(name, i);
    }
    return {};
}

}  // namespace

std::string RefusedDatabaseName(std::string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool lineBreak = name[i] == '\r' || name[i] == '\n' || name[i] == '\0';
        if (lineBreak || std::string_view(";'\"`[]").find(name[i]) != std::string_view::npos)
            return "the database name holds " + CharacterAt(name, i);
    }
    for (const char* mark : {"--", "/*", "*/"}) {
        if (name.find(mark) != std::string_view::npos)
            return std::string("the database name holds the comment mark ") + mark;
    }
    return {};
}

std::string TwoDatabasesWarning(std::string_view name) {
    const std::string cleaned = CleanName(name);
    if (cleaned == name) return {};
    return "\"" + DatabaseStatement(name) + "\" and \"Create Table " + cleaned +
           ".dbo.\" name two databases.";
}

std::string RefusedRecordName(Connection& store, std::span<const std::string> records) {
    for (const auto& record : records) {
        if (const auto strange = StrangeCharacter(record); !strange.empty())
            return "the name of record " + record + " holds " + strange;
        const TableNames names = NamesOf(store, record);
        for (const auto& key : names.keys) {
            if (const auto strange = StrangeCharacter(key); !strange.empty())
                return "record " + record + ": the key name " + key + " holds " + strange;
        }
        for (const auto& field : names.fields) {
            if (const auto strange = StrangeCharacter(field); !strange.empty())
                return "record " + record + ": the name of field " + field + " holds " + strange;
        }
    }
    return {};
}

}  // namespace norvelis
