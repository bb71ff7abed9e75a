#include "store/recordset.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/text.h"
#include "store/connection.h"
#include "store/statements.h"

namespace norvelis {

namespace {

constexpr std::array<std::string_view, 4> kOptionalColumns = {"Hyperlink", "Hyperlinkname", "comments",
                                                              "duration"};

using Row = std::vector<std::optional<std::string>>;

}  // namespace

struct Recordset::State {
    std::shared_ptr<Connection> connection;
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

    std::size_t Size() const { return table.empty() ? copies.size() : rowIds.size(); }

    std::optional<std::size_t> IndexOf(std::string_view column) const {
        const auto found = std::find_if(columns.begin(), columns.end(),
                                        [&](const auto& c) { return EqualIgnoringCase(c, column); });
        if (found == columns.end()) return std::nullopt;
        return static_cast<std::size_t>(found - columns.begin());
    }

    RuntimeFailure NoColumn(std::string_view column) const {
        return {FailureNumber::StoreFailure, connection->Path() + ": no column " + std::string(column) +
                                                 (table.empty() ? "" : " in table " + table)};
    }
};

Recordset::Recordset(std::unique_ptr<State> state) : state_(std::move(state)) {}
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

Recordset Connection::Select(std::string_view statement, std::initializer_list<std::string_view> values) {
    const StatementText& text = Statements::TextOf(*this, statement);
    sqlite3_stmt* prepared = Statements::Prepare(*this, text.sql);
    auto state = std::make_unique<Recordset::State>();
    state->connection = shared_from_this();
    state->table = text.table;
    Run run(*this, prepared);
    run.BindAll(values);
    if (!text.table.empty()) {
        state->columns = ColumnsOf(text.table);
        while (run.Step()) state->rowIds.push_back(run.Integer(0));
        return Recordset(std::move(state));
    }
    const int count = sqlite3_column_count(prepared);
    for (int i = 0; i < count; ++i) state->columns.emplace_back(sqlite3_column_name(prepared, i));
    while (run.Step()) {
        Row row;
        for (int i = 0; i < count; ++i) row.push_back(run.Column(i));
        state->copies.push_back(std::move(row));
    }
    return Recordset(std::move(state));
}

bool Recordset::Eof() const {
    return !state_ || state_->position >= state_->Size();
}
void Recordset::MoveFirst() {
    state_->position = 0;
}
void Recordset::MoveNext() {
    ++state_->position;
}
std::size_t Recordset::RecordCount() const {
    return state_ ? state_->Size() : 0;
}

void Recordset::Read() const {
    State& s = *state_;
    if (Eof())
        throw RuntimeFailure(FailureNumber::StoreFailure,
                             s.connection->Path() + ": read past the last row of " + s.table);
    const int changes =
        s.connection->IsOpen() ? sqlite3_total_changes(Connection::Statements::DatabaseOf(*s.connection)) : 0;
    if (s.rowPosition == s.position && s.rowChanges == changes) return;
    if (s.table.empty()) {
        s.row = s.copies[s.position];
    } else {
        Run run(*s.connection, Connection::Statements::Prepare(
                                   *s.connection, "SELECT * FROM " + s.table + " WHERE rowid = ?"));
        run.Bind(1, s.rowIds[s.position]);
        s.row.assign(s.columns.size(), std::nullopt);
        if (run.Step()) {
            for (std::size_t i = 0; i < s.columns.size(); ++i) s.row[i] = run.Column(static_cast<int>(i));
        }
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
        Run run(*s.connection, Connection::Statements::Prepare(*s.connection, sql));
        int position = 0;
        for (const auto& [name, value] : s.pending) run.Bind(++position, value);
        if (!s.adding) run.Bind(++position, s.rowIds[s.position]);
        run.Step();
    }
    if (s.adding) {
        s.rowIds.push_back(sqlite3_last_insert_rowid(Connection::Statements::DatabaseOf(*s.connection)));
        s.position = s.rowIds.size() - 1;
    }
    s.adding = false;
    s.pending.clear();
}

void Recordset::Close() {
    state_.reset();
}

}  // namespace norvelis
