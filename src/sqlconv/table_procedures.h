#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "sqlconv/connector.h"
#include "sqlconv/diagnostics.h"
#include "store/connection.h"

// Named SQL statements with the login to run them under, kept in the store's table of table procedures.
namespace norvelis {

struct TableProcedure {
    std::string name, sql;
    std::string dsn;  ///< Name of a data source, or a connection text with "=" in it.
    std::string username, password;
};

/// The saved names in the store's order.
std::vector<std::string> ProcedureNames(Connection& store);
/// The first of this name, a single blank in the place of what it lacks.
std::optional<TableProcedure> FindProcedure(Connection& store, std::string_view name);
/// Adds a row; one of the same name stays beside it.
void SaveProcedure(Connection& store, const TableProcedure& procedure);
/// Rewrites all but the name of the first of this name; nothing happens when there is none.
void UpdateProcedure(Connection& store, const TableProcedure& procedure);
/// Deletes every row of the name.
void DeleteProcedure(Connection& store, std::string_view name);

inline constexpr std::string_view kBlankProcedureName = "New Program name is blank";
inline constexpr std::string_view kExecuteError = "Execute Error Encountered. Fix the Select statement.";
inline constexpr std::size_t kMostResultRows = 1'000'000;

/// Takes the rows as they are fetched, in the thread that fetches them.
struct RowReceiver {
    std::function<void(const std::vector<SqlField>& fields)> fields;
    std::function<void(const std::vector<std::optional<std::string>>& row)> row;
};

struct QueryEnd {
    std::size_t rows = 0;
    bool limited = false;      ///< There are more rows than were asked for.
    bool moreResults = false;  ///< The statement gave further results, which nobody reads.
};

/// Runs a statement and hands its rows over, at most `limit` of them. SqlFailure when the server refuses,
/// when the statement gives no row, and after a stop was requested; the rows handed over until then stay
/// valid.
QueryEnd Execute(Connector& connector, const std::stop_token& cancellation, const TableProcedure& procedure,
                 const RowReceiver& receiver, std::size_t limit = kMostResultRows);

/// A value as a screen shows it: beyond 10,000 characters it is cut, and its length is added.
std::string ShownValue(std::string_view value);

/// A row as a line of comma-separated values with its line end. Null is nothing between the commas, an empty
/// text two quotes.
std::string CsvLine(const std::vector<std::optional<std::string>>& row);

}  // namespace norvelis
