#include "sqlconv/tables/options.h"

#include <algorithm>
#include <regex>
#include <unordered_set>

#include "base/name_key.h"
#include "base/text.h"
#include "base/whole_number.h"

namespace norvelis::tables {

namespace {

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    for (const char c : std::string(text) + ' ') {
        if (c != ' ' && c != '\t' && c != ',') {
            word += c;
        } else if (!word.empty()) {
            words.push_back(std::move(word));
            word.clear();
        }
    }
    return words;
}

std::string_view TrimTabs(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string Quoted(std::string_view word) {
    return "\"" + std::string(word) + "\"";
}

/// What says more of a column than its type.
bool IsConstraint(const std::string& word) {
    static const std::unordered_set<std::string> constraints = {
        "NOT",        "NULL",       "PRIMARY",   "KEY",      "UNIQUE",         "CHECK",  "DEFAULT",
        "REFERENCES", "CONSTRAINT", "GENERATED", "IDENTITY", "AUTO_INCREMENT", "COLLATE"};
    return constraints.contains(UpperCase(word));
}

bool HasConstraint(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '(' || c == ')'; }, ' ');
    return std::ranges::any_of(WordsOf(text), IsConstraint);
}

/// A type goes to the server as it is written, so it must be no more than a type: words, and sizes in
/// parentheses behind the first ones.
bool IsType(const std::string& text) {
    static const std::regex type(
        "[A-Za-z_][A-Za-z0-9_]*( [A-Za-z_][A-Za-z0-9_]*)*"
        "( ?\\(( ?[0-9]+ ?(, ?[0-9]+ ?)?|MAX|max)\\)( [A-Za-z_][A-Za-z0-9_]*)*)?");
    return std::regex_match(text, type) && !HasConstraint(text);
}

class Reader {
  public:
    explicit Reader(std::string_view schema) : schema_(schema) {}

    Options Read(std::string_view text) {
        while (!text.empty()) {
            ++line_;
            const auto end = text.find('\n');
            ReadLine(TrimTabs(text.substr(0, end)));
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
        return std::move(options_);
    }

  private:
    void ReadLine(std::string_view line) {
        if (line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
        if (line.empty() || line.front() == ';' || line.front() == '#') return;
        if (line.front() == '[') return BeginSection(line);
        const auto equals = line.find('=');
        if (equals == std::string_view::npos)
            return Mistake(Quoted(line) + " is neither a [section] nor an option = value");
        const std::string option = LowerCase(TrimTabs(line.substr(0, equals)));
        std::string_view value = line.substr(equals + 1);
        value = TrimTabs(value.substr(0, value.find(';')));
        if (ignored_) return;
        if (field_ != nullptr) return SetField(option, value);
        if (record_ != nullptr) return SetRecord(option, value);
        SetSchema(option, value);
    }

    void BeginSection(std::string_view line) {
        record_ = nullptr;
        field_ = nullptr;
        ignored_ = true;
        if (line.back() != ']') return Mistake(Quoted(line) + " has no ] at its end");
        const auto words = WordsOf(line.substr(1, line.size() - 2));
        const std::string kind = words.empty() ? "" : LowerCase(words[0]);
        if (kind == "schema" && words.size() <= 2) {
            otherSchema_ = words.size() == 2 && !SameName(words[1], schema_);
        } else if (kind == "record" && words.size() == 2) {
            record_ = &RecordAt(words[1]);
        } else if (kind == "field" && words.size() == 3) {
            RecordOptions& record = RecordAt(words[1]);
            field_ = &record.fields[NameKey(words[2])];
            field_->line = line_;
        } else {
            return Mistake(Quoted(line) +
                           " is none of [schema NAME], [record NAME] and [field RECORD FIELD]");
        }
        ignored_ = otherSchema_;
    }

    /// What is set for another schema is read for its mistakes and forgotten.
    RecordOptions& RecordAt(const std::string& name) {
        if (otherSchema_) return forgotten_;
        RecordOptions& record = options_.records[NameKey(name)];
        if (record.line == 0) record.line = line_;
        return record;
    }

    void SetSchema(const std::string& option, std::string_view value) {
        if (option == "case") return Choose(value, "lower", "dictionary", options_.lowerCase);
        if (option == "suffix") return Choose(value, "drop", "keep", options_.dropSuffix);
        if (option == "text") return Choose(value, "char", "varchar", options_.types.fixedText);
        if (option == "widen-binary") return Choose(value, "yes", "no", options_.types.widenBinary);
        if (option == "check-unsigned") return Choose(value, "yes", "no", options_.checkUnsigned);
        if (option == "order-columns") return Choose(value, "yes", "no", options_.orderColumns);
        if (option == "occurs-columns") return SetOccursColumns(value);
        Mistake(Quoted(option) + " is no option of a schema");
    }

    void SetOccursColumns(std::string_view value) {
        const auto most = WholeNumber<long>(value);
        if (!most || *most < 0) return Mistake(Quoted(value) + " is no number of columns");
        options_.occursColumns = *most;
    }

    void SetRecord(const std::string& option, std::string_view value) {
        if (option == "leave-out") return Choose(value, "yes", "no", record_->leaveOut);
        if (option == "name") return SetName(value, record_->name);
        if (option != "key") return Mistake(Quoted(option) + " is no option of a record");
        record_->key = WordsOf(value);
        record_->keyLine = line_;
        if (record_->key->size() == 1 && EqualIgnoringCase(record_->key->front(), "none"))
            record_->key->clear();
    }

    void SetField(const std::string& option, std::string_view value) {
        if (option == "leave-out") return Choose(value, "yes", "no", field_->leaveOut);
        if (option == "occurs") return Choose(value, "columns", "table", field_->occursAsColumns);
        if (option == "name") return SetName(value, field_->name);
        if (option != "type") return Mistake(Quoted(option) + " is no option of a field");
        if (!IsType(std::string(value))) return Mistake(Quoted(value) + " is no type");
        field_->type = value;
    }

    void SetName(std::string_view value, std::string& name) {
        if (value.empty()) return Mistake("a name is empty");
        name = value;
    }

    void Choose(std::string_view value, std::string_view on, std::string_view off, bool& chosen) {
        if (EqualIgnoringCase(value, on)) {
            chosen = true;
        } else if (EqualIgnoringCase(value, off)) {
            chosen = false;
        } else {
            Mistake(Quoted(value) + " is neither " + std::string(on) + " nor " + std::string(off));
        }
    }

    void Mistake(const std::string& words) { options_.mistakes.push_back({line_, words}); }

    std::string_view schema_;
    Options options_;
    std::size_t line_ = 0;
    bool otherSchema_ = false, ignored_ = false;
    RecordOptions forgotten_;
    RecordOptions* record_ = nullptr;
    FieldOptions* field_ = nullptr;
};

}  // namespace

const RecordOptions* Options::Record(std::string_view name) const {
    const auto found = records.find(NameKey(name));
    return found == records.end() ? nullptr : &found->second;
}

Options ReadOptions(std::string_view text, std::string_view schema) {
    return Reader(schema).Read(text);
}

std::string_view SampleOptions() {
    return R"(; Options of "sql script" and "sql convert --tables keep". A line that begins with ; is a comment: remove
; the ; before an option to set it. What is shown is what holds without the file, but for names and keys.
; Options before the first [schema NAME] are for all schemas, those behind it for that schema alone.

[schema]
; case = lower             ; names in lower case, or as in the dictionary: dictionary
; suffix = keep            ; drop: CUST-NAME-0415 becomes cust_name, where each field of the record ends in its id
; text = varchar           ; char: texts of fixed length
; widen-binary = no        ; yes: COMP fields get the next larger type, for compilers that use all bits
; check-unsigned = no      ; yes: numbers without a sign refuse negative values
; order-columns = yes      ; no: no column SET_seq for sets in the order NEXT, PRIOR, FIRST or LAST
; occurs-columns = 0       ; fields that OCCUR up to so many times become columns NAME_1, NAME_2 ...

; [record CUSTOMER]
; name = customers         ; of its table
; key = CUST-NUM-0415      ; the fields of the primary key; none: a key column of the table's own
; leave-out = no           ; yes: no table for it

; [field CUSTOMER CUST-BALANCE-0415]
; name = balance           ; of its column
; type = DECIMAL(11,2)     ; in the words of the server
; leave-out = no           ; yes: no column for it
; occurs = table           ; columns: NAME_1, NAME_2 ... in place of a table

; [schema OTHERSCHM]
)";
}

}  // namespace norvelis::tables
