#include "copybook/copybook.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "copybook/names.h"
#include "copybook/record_layout.h"
#include "copybook/source_lines.h"

namespace norvelis::copybook {

namespace {

constexpr std::size_t kRecordColumn = 8, kFieldColumn = 12, kIndent = 4, kLastFieldColumn = 36;

void KeepNames(NameTable& names, const std::vector<Entry>& entries) {
    for (const Entry& entry : entries) {
        names.Keep(entry.item.name);
        KeepNames(names, entry.children);
    }
}

/// The usage as a compiler takes it; DISPLAY goes without saying.
std::string UsageClause(const Item& item) {
    return item.usage.form == cobol::Usage::Form::Display ? "" : item.usage.word;
}

class RecordWriter {
  public:
    RecordWriter(const dictionary::SchemaContents& schema, const dictionary::RecordContents& record,
                 const std::string& name)
        : schema_(schema), record_(record), name_(name), layout_(LayOut(record)) {
        KeepNames(names_, layout_.entries);
    }

    std::string Write() {
        WriteHeading();
        if (layout_.bytes == 0) {
            lines_.AddComment("The dictionary has no fields of this record.");
            const long bytes = std::max(LengthOf(record_), 1L);
            lines_.AddEntry(kRecordColumn, "01  " + name_, {fmt::format("PIC X({})", bytes)});
            WriteEntries(layout_.entries, kFieldColumn, true);
            return lines_.Take();
        }
        lines_.AddEntry(kRecordColumn, "01  " + name_, {});
        WriteEntries(layout_.entries, kFieldColumn, false);
        WriteLength();
        return lines_.Take();
    }

  private:
    void WriteHeading() {
        std::string schema = "Schema " + schema_.name;
        if (!Trim(schema_.version).empty()) schema += " version " + std::string(Trim(schema_.version));
        lines_.AddComment(
            fmt::format("Record {}{}{}", record_.name, record_.id.empty() ? "" : ", id ", record_.id));
        lines_.AddComment(schema);
        std::string facts;
        const auto add = [&facts](std::string_view words, std::string_view value) {
            value = Trim(value);
            if (!value.empty()) facts += fmt::format("{}{}{}", facts.empty() ? "" : ", ", words, value);
        };
        add("length ", record_.length);
        add("", record_.lengthKind);
        add("", std::string(Trim(record_.mode)) + " " + std::string(Trim(record_.key)));
        add("area ", record_.area);
        if (!facts.empty()) lines_.AddComment(facts);
        lines_.AddComment("");
        lines_.AddComment(
            "Not in the dictionary: levels 88 and their values, REDEFINES (given here by position), the "
            "item of DEPENDING ON, levels 11 to 49, SIGN, SYNC, JUSTIFIED, BLANK WHEN ZERO, VALUE.");
        lines_.AddComment("");
    }

    void WriteEntries(const std::vector<Entry>& entries, std::size_t column, bool asComment) {
        for (const Entry& entry : entries) WriteEntry(entry, column, asComment);
    }

    void WriteEntry(const Entry& entry, std::size_t column, bool asComment) {
        const Item& item = entry.item;
        const std::string name = item.IsFiller() ? "FILLER" : names_.NameFor(item.name);
        for (const std::string& remark : entry.remarks) lines_.AddComment(remark);
        if (!item.IsFiller() && !SameName(item.name, name))
            lines_.AddComment("In the dictionary: " + item.name);
        const bool isAtMost = item.usage.least < item.usage.most;
        if (isAtMost)
            lines_.AddComment(fmt::format(
                "OCCURS {} TO {} in the report; the item that it depends on is not in the dictionary.",
                item.usage.least, item.usage.most));
        if (!item.usage.otherWords.empty() && !isAtMost)
            lines_.AddComment("The report adds: " + item.usage.otherWords);
        const std::string levelAndName = fmt::format("{:02}  {}", entry.level, name);
        const bool isComment = asComment || entry.isLeftOut || entry.bytes == 0;
        if (isComment) {
            lines_.AddEntryAsComment(levelAndName, Clauses(entry));
        } else {
            lines_.AddEntry(column, levelAndName, Clauses(entry));
        }
        WriteEntries(entry.children, std::min(column + kIndent, kLastFieldColumn), isComment);
    }

    std::vector<std::string> Clauses(const Entry& entry) {
        const Item& item = entry.item;
        std::vector<std::string> clauses;
        if (!entry.redefines.empty()) clauses.push_back("REDEFINES " + names_.NameFor(entry.redefines));
        if (item.occurs > 1) clauses.push_back(fmt::format("OCCURS {} TIMES", item.occurs));
        if (entry.isUnknown) {
            clauses.push_back(fmt::format("PIC X({})", std::max(entry.bytes, 1L)));
            return clauses;
        }
        if (item.IsGroup()) return clauses;
        if (!item.picture.empty()) clauses.push_back("PIC " + item.picture);
        if (const std::string usage = UsageClause(item); !usage.empty()) clauses.push_back(usage);
        if (entry.signIsSeparate) clauses.emplace_back("SIGN TRAILING SEPARATE");
        return clauses;
    }

    void WriteLength() {
        const long length = LengthOf(record_);
        if (length == 0 || length == layout_.bytes) return;
        lines_.AddComment(fmt::format("The report gives the record {} {}, these entries take {}.", length,
                                      length == 1 ? "byte" : "bytes", layout_.bytes));
    }

    const dictionary::SchemaContents& schema_;
    const dictionary::RecordContents& record_;
    const std::string name_;
    const RecordLayout layout_;
    NameTable names_{"-ITEM"};
    SourceLines lines_;
};

}  // namespace

std::vector<Copybook> CopybooksOf(const dictionary::SchemaContents& schema) {
    NameTable names{"-RECORD"};
    for (const auto& record : schema.records) names.Keep(record.name);
    std::vector<Copybook> copybooks;
    for (const auto& record : schema.records) {
        const std::string name = names.NameFor(record.name);
        copybooks.push_back({record.name, name, RecordWriter(schema, record, name).Write()});
    }
    return copybooks;
}

}  // namespace norvelis::copybook
