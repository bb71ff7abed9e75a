#include "sqlconv/table_procedures.h"

#include <algorithm>

namespace norvelis {

namespace {

constexpr std::size_t kShownCharacters = 10'000;

Recordset RowsNamed(Connection& store, std::string_view name) {
    return store.Select("Select * FROM tableprocedures where tableprocname = ?", {name});
}

void SetContent(Recordset& row, const TableProcedure& procedure) {
    row.Set("dsn", procedure.dsn);
    row.Set("username", procedure.username);
    row.Set("password", procedure.password);
    row.Set("tableprocsql", procedure.sql);
}

bool StartsCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

QueryEnd ReadRows(SqlResult& result, const std::stop_token& cancellation, const RowReceiver& receiver,
                  std::size_t limit) {
    receiver.fields(result.Fields());
    QueryEnd end;
    while (const auto* row = result.Next()) {
        ThrowIfCanceled(cancellation);
        if (end.rows == limit) {
            end.limited = true;
            return end;
        }
        receiver.row(*row);
        ++end.rows;
    }
    if (end.rows == 0) throw SqlFailure(0, "The statement gave no rows");
    end.moreResults = result.MoreResults();
    return end;
}

}  // namespace

std::vector<std::string> ProcedureNames(Connection& store) {
    std::vector<std::string> names;
    if (!store.IsOpen()) return names;
    for (auto row = store.Select("Select * FROM tableprocedures"); !row.Eof(); row.MoveNext())
        names.push_back(row.Text("tableprocname"));
    return names;
}

std::optional<TableProcedure> FindProcedure(Connection& store, std::string_view name) {
    if (!store.IsOpen()) return std::nullopt;
    const auto row = RowsNamed(store, name);
    if (row.Eof()) return std::nullopt;
    const auto orBlank = [&row](std::string_view column) { return row.Value(column).value_or(" "); };
    return TableProcedure{orBlank("tableprocname"), orBlank("tableprocsql"), orBlank("dsn"),
                          orBlank("username"), orBlank("password")};
}

void SaveProcedure(Connection& store, const TableProcedure& procedure) {
    if (!store.IsOpen()) return;
    auto row = store.Select("Select * FROM tableprocedures");
    row.AddNew();
    row.Set("tableprocname", procedure.name);
    SetContent(row, procedure);
    row.Update();
}

void UpdateProcedure(Connection& store, const TableProcedure& procedure) {
    if (!store.IsOpen()) return;
    auto row = RowsNamed(store, procedure.name);
    if (row.Eof()) return;
    SetContent(row, procedure);
    row.Update();
}

void DeleteProcedure(Connection& store, std::string_view name) {
    if (store.IsOpen()) store.Execute("Delete * FROM tableprocedures where tableprocname = ?", {name});
}

QueryEnd Execute(Connector& connector, const std::stop_token& cancellation, const TableProcedure& procedure,
                 const RowReceiver& receiver, std::size_t limit) {
    const ConnectRequest request{procedure.dsn, procedure.username, procedure.password, 0};
    const auto connection = connector.Connect(request, cancellation);
    const std::stop_callback onCancel(cancellation, [&connection] { connection->Cancel(); });
    ThrowIfCanceled(cancellation);
    SqlResult result = connection->Execute(procedure.sql);
    if (result.Fields().empty()) throw SqlFailure(0, "The statement ran and gave no result set");
    return ReadRows(result, cancellation, receiver, limit);
}

std::string ShownValue(std::string_view value) {
    if (value.size() <= kShownCharacters) return std::string(value);
    std::size_t characters = 0, cut = 0;
    while (cut < value.size() && (characters < kShownCharacters || !StartsCharacter(value[cut])))
        characters += StartsCharacter(value[cut++]);
    if (cut == value.size()) return std::string(value);
    const std::string_view rest = value.substr(cut);
    characters += static_cast<std::size_t>(std::ranges::count_if(rest, StartsCharacter));
    return std::string(value.substr(0, cut)) + "... (" + std::to_string(characters) + " characters)";
}

std::string CsvLine(const std::vector<std::optional<std::string>>& row) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0) line += ',';
        if (!row[i]) continue;
        if (!row[i]->empty() && row[i]->find_first_of(",\"\r\n") == std::string::npos) {
            line += *row[i];
            continue;
        }
        line += '"';
        for (const char c : *row[i]) {
            line += c;
            if (c == '"') line += c;
        }
        line += '"';
    }
    return line + '\n';
}

}  // namespace norvelis
