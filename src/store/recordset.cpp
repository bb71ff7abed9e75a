#include "store/recordset.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "store/database.h"
#include "store/statement_run.h"

namespace norvelis {

namespace {

constexpr std::array<std::string_view, 4> kOptionalColumns = {"Hyperlink", "Hyperlinkname", "comments",
                                                              "duration"};

using Row = std::vector<std::optional<std::string>>;

}  // namespace

struct Recordset::State {
    State(std::shared_ptr<Database> owner, std::string source)
        : database(std::move(owner)), table(std::move(source)) {}

    std::shared_ptr<Database> database;
    std::string table;                 // empty for rows that are a fixed copy
    std::vector<std::string> columns;  // in the order of the values of a row
    std::vector<std::int64_t> rowIds;
    std::vector<Row> copies;
    std::size_t position = 0;

    // The row last read, and how many changes the store had seen then: a later change may be to this row.
    mutable Row row;
    mutable std::size_t rowPosition = SIZE_MAX;
    mutable int rowChanges = -1;

    bool adding = false;
    std::vector<std::pair<std::string, std::string>> pending;  // column as the store spells it, value

    std::string RowStatement() const { return "SELECT * FROM " + table + " WHERE rowid = ?"; }

    Row ReadRow(const StatementRun& run) const {
        Row values;
        values.reserve(columns.size());
        for (std::size_t i = 0; i < columns.size(); ++i) values.push_back(run.Column(static_cast<int>(i)));
        return values;
    }

    std::size_t Size() const { return table.empty() ? copies.size() : rowIds.size(); }

    std::optional<std::size_t> IndexOf(std::string_view column) const {
        const auto found = std::find_if(columns.begin(), columns.end(),
                                        [&](const auto& c) { return EqualIgnoringCase(c, column); });
        if (found == columns.end()) return std::nullopt;
        return static_cast<std::size_t>(found - columns.begin());
    }

    RuntimeFailure NoColumn(std::string_view column) const {
        return {FailureNumber::StoreFailure, database->Path() + ": no column " + std::string(column) +
                                                 (table.empty() ? "" : " in table " + table)};
    }
};

Recordset::Recordset(std::shared_ptr<Database> database, const StatementText& text,
                     std::initializer_list<std::string_view> values)
    : state_(std::make_unique<State>(std::move(database), text.table)) {
    State& s = *state_;
    StatementRun run(*s.database, text.sql);
    run.BindAll(values);
    if (!s.table.empty()) {
        s.columns = StatementRun(*s.database, s.RowStatement()).ColumnNames();
        while (run.Step()) s.rowIds.push_back(run.Integer(0));
        return;
    }
    s.columns = run.ColumnNames();
    while (run.Step()) s.copies.push_back(s.ReadRow(run));
}

Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

bool Recordset::Eof() const {
    return state_->position >= state_->Size();
}
void Recordset::MoveNext() {
    ++state_->position;
}
std::size_t Recordset::RecordCount() const {
    return state_->Size();
}

void Recordset::Read() const {
    State& s = *state_;
    if (Eof())
        throw RuntimeFailure(FailureNumber::StoreFailure,
                             s.database->Path() + ": read past the last row of " + s.table);
    const int changes = s.database->Changes();
    if (s.rowPosition == s.position && s.rowChanges == changes) return;
    if (s.table.empty()) {
        s.row = s.copies[s.position];
    } else {
        StatementRun run(*s.database, s.RowStatement());
        run.Bind(1, s.rowIds[s.position]);
        s.row = run.Step() ? s.ReadRow(run) : Row(s.columns.size());
    }
    s.rowPosition = s.position;
    s.rowChanges = changes;
}

std::optional<std::string> Recordset::Value(std::string_view column) const {
    const auto index = state_->IndexOf(column);
    if (!index) {
        const bool optional = std::any_of(kOptionalColumns.begin(), kOptionalColumns.end(),
                                          [&](auto name) { return EqualIgnoringCase(name, column); });
        if (optional) return std::nullopt;
        throw state_->NoColumn(column);
    }
    Read();
    return state_->row[*index];
}

std::string Recordset::Text(std::string_view column) const {
    return Value(column).value_or("");
}

void Recordset::AddNew() {
    state_->adding = true;
    state_->pending.clear();
}

void Recordset::Set(std::string_view column, std::string_view value) {
    const auto index = state_->IndexOf(column);
    if (!index) throw state_->NoColumn(column);
    const std::string& name = state_->columns[*index];
    const auto known = std::find_if(state_->pending.begin(), state_->pending.end(),
                                    [&](const auto& p) { return p.first == name; });
    if (known != state_->pending.end()) {
        known->second = value;
    } else {
        state_->pending.emplace_back(name, value);
    }
}

void Recordset::Update() {
    State& s = *state_;
    std::string sql;
    if (s.adding) {
        std::string names, marks;
        for (const auto& [name, value] : s.pending) {
            names += (names.empty() ? "\"" : ", \"") + name + "\"";
            marks += marks.empty() ? "?" : ", ?";
        }
        sql = "INSERT INTO " + s.table +
              (names.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + marks + ")");
    } else {
        if (s.pending.empty() || Eof()) return;
        for (const auto& [name, value] : s.pending) sql += (sql.empty() ? "\"" : ", \"") + name + "\" = ?";
        sql = "UPDATE " + s.table + " SET " + sql + " WHERE rowid = ?";
    }
    {
        StatementRun run(*s.database, sql);
        int position = 0;
        for (const auto& [name, value] : s.pending) run.Bind(++position, value);
        if (!s.adding) run.Bind(++position, s.rowIds[s.position]);
        run.Step();
    }
    if (s.adding) {
        s.rowIds.push_back(s.database->LastRowId());
        s.position = s.rowIds.size() - 1;
    }
    s.adding = false;
    s.pending.clear();
}

}  // namespace norvelis
