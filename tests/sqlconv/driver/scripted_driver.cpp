// An ODBC driver for tests. It calls itself Microsoft SQL Server, appends each call to the file named by
// SCRIPTED_DRIVER_LOG, and answers from the script named by SCRIPTED_DRIVER_SCRIPT:
//
//   connect wait MS             the connect takes that long; "connect hang" never ends
//   connect error STATE NATIVE WORDS
//   on TEXT                     what follows answers statements that begin so; SQLTables is "SQLTables"
//   column NAME TYPE            ODBC's number of the type, " unsigned" behind it
//   row A|B|C                   values; \N is null
//   rows COUNT MS               that many rows of their number, so far apart
//   wait MS                     before the answer; ended by SQLCancel
//   error STATE NATIVE WORDS
//
// A statement that no "on" fits succeeds without rows. Only the calls that are made on it are here.
#include <sql.h>
#include <sqlext.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

struct Refusal {
    std::string state, words;
    int native = 0;
};

struct Column {
    std::string name;
    int type = SQL_VARCHAR;
    bool isUnsigned = false;
};

struct Answer {
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;
    long generated = 0, pause = 0, wait = 0;
    std::optional<Refusal> error;
};

struct Handle {
    std::optional<Refusal> refusal;
    Answer answer;
    long position = 0;
    std::size_t given = 0;  // Bytes of the present value that were handed over.
    int column = 0;
    std::atomic<bool> canceled = false;
};

Handle* Of(SQLHANDLE handle) {
    return static_cast<Handle*>(handle);
}

void Log(const std::string& line) {
    if (const char* file = std::getenv("SCRIPTED_DRIVER_LOG"))
        std::ofstream(file, std::ios::app) << line << '\n';
}

std::string TextOf(const SQLCHAR* text, SQLINTEGER length) {
    if (text == nullptr) return "(null)";
    const auto* begin = reinterpret_cast<const char*>(text);
    return length == SQL_NTS ? std::string(begin) : std::string(begin, static_cast<std::size_t>(length));
}

std::string Rest(std::istringstream& words) {
    std::string rest;
    std::getline(words >> std::ws, rest);
    return rest;
}

Refusal ReadRefusal(std::istringstream& words) {
    Refusal refusal;
    words >> refusal.state >> refusal.native;
    refusal.words = Rest(words);
    return refusal;
}

std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> values(1);
    for (const char c : text) {
        if (c == '|') {
            values.emplace_back();
        } else {
            values.back() += c;
        }
    }
    return values;
}

void AddLine(Answer& answer, const std::string& line) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word == "column") {
        Column column;
        words >> column.name >> column.type;
        column.isUnsigned = line.ends_with(" unsigned");
        answer.columns.push_back(column);
    } else if (word == "row") {
        answer.rows.push_back(Split(Rest(words)));
    } else if (word == "rows") {
        words >> answer.generated >> answer.pause;
    } else if (word == "wait") {
        words >> answer.wait;
    } else if (word == "error") {
        answer.error = ReadRefusal(words);
    }
}

std::ifstream Script() {
    const char* file = std::getenv("SCRIPTED_DRIVER_SCRIPT");
    return std::ifstream(file != nullptr ? file : "");
}

Answer AnswerTo(const std::string& statement) {
    std::ifstream script = Script();
    Answer answer;
    bool mine = false, found = false;
    for (std::string line; std::getline(script, line);) {
        if (line.starts_with("on ")) {
            mine = !found && statement.starts_with(line.substr(3));
            found = found || mine;
        } else if (mine) {
            AddLine(answer, line);
        }
    }
    return answer;
}

/// False when the statement was canceled meanwhile.
bool Wait(Handle& statement, long milliseconds) {
    for (; milliseconds > 0 && !statement.canceled; milliseconds -= 5)
        std::this_thread::sleep_for(std::chrono::milliseconds(std::min(milliseconds, 5L)));
    if (!statement.canceled) return true;
    statement.refusal = Refusal{"HY008", "Operation canceled", 0};
    return false;
}

SQLRETURN Run(SQLHSTMT handle, const std::string& statement) {
    Handle& to = *Of(handle);
    to.refusal.reset();
    to.canceled = false;
    to.answer = AnswerTo(statement);
    to.position = 0;
    if (!Wait(to, to.answer.wait)) return SQL_ERROR;
    to.refusal = to.answer.error;
    return to.refusal ? SQL_ERROR : SQL_SUCCESS;
}

SQLSMALLINT Give(const std::string& text, SQLPOINTER to, SQLSMALLINT size) {
    if (to != nullptr && size > 0) {
        const auto count = std::min(text.size(), static_cast<std::size_t>(size - 1));
        std::memcpy(to, text.data(), count);
        static_cast<char*>(to)[count] = '\0';
    }
    return static_cast<SQLSMALLINT>(text.size());
}

std::string Number(SQLPOINTER value) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(value));
}

}  // namespace

extern "C" {

SQLRETURN SQLAllocHandle(SQLSMALLINT, SQLHANDLE, SQLHANDLE* handle) {
    *handle = new Handle;
    return SQL_SUCCESS;
}
SQLRETURN SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle) {
    delete Of(handle);
    return SQL_SUCCESS;
}
SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}
SQLRETURN SQLSetConnectAttr(SQLHDBC, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    if (attribute == SQL_ATTR_LOGIN_TIMEOUT) Log("login timeout " + Number(value));
    if (attribute == SQL_ATTR_CONNECTION_TIMEOUT) Log("connection timeout " + Number(value));
    return SQL_SUCCESS;
}
SQLRETURN SQLGetConnectAttr(SQLHDBC, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER size,
                            SQLINTEGER* length) {
    if (attribute != SQL_ATTR_CURRENT_CATALOG) return SQL_ERROR;
    const auto given = Give("master", value, static_cast<SQLSMALLINT>(size));
    if (length != nullptr) *length = given;
    return SQL_SUCCESS;
}

SQLRETURN SQLDriverConnect(SQLHDBC handle, SQLHWND, SQLCHAR* text, SQLSMALLINT length, SQLCHAR* out,
                           SQLSMALLINT size, SQLSMALLINT* outLength, SQLUSMALLINT) {
    Log("connect " + TextOf(text, length));
    std::ifstream script = Script();
    for (std::string line; std::getline(script, line) && !line.starts_with("on ");) {
        std::istringstream words(line);
        std::string connect, what;
        words >> connect >> what;
        long milliseconds = 0;
        if (what == "hang") std::this_thread::sleep_for(std::chrono::hours(1));
        if (what == "wait" && words >> milliseconds)
            std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        if (what == "error") {
            Of(handle)->refusal = ReadRefusal(words);
            return SQL_ERROR;
        }
    }
    const auto given = Give(TextOf(text, length), out, size);
    if (outLength != nullptr) *outLength = given;
    return SQL_SUCCESS;
}
SQLRETURN SQLDisconnect(SQLHDBC) {
    Log("disconnect");
    return SQL_SUCCESS;
}
SQLRETURN SQLGetInfo(SQLHDBC, SQLUSMALLINT kind, SQLPOINTER value, SQLSMALLINT size, SQLSMALLINT* length) {
    std::string text;
    if (kind == SQL_DBMS_NAME) text = "Microsoft SQL Server";
    if (kind == SQL_IDENTIFIER_QUOTE_CHAR) text = "\"";
    if (kind == SQL_DRIVER_ODBC_VER) text = "03.00";
    const auto given = Give(text, value, size);
    if (length != nullptr) *length = given;
    return SQL_SUCCESS;
}

SQLRETURN SQLSetStmtAttr(SQLHSTMT, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    if (attribute == SQL_ATTR_QUERY_TIMEOUT) Log("query timeout " + Number(value));
    if (attribute == SQL_ATTR_MAX_ROWS) Log("most rows " + Number(value));
    return SQL_SUCCESS;
}
SQLRETURN SQLGetStmtAttr(SQLHSTMT, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
    // The driver manager asks for the four descriptors of a new statement.
    if (value != nullptr) *static_cast<SQLPOINTER*>(value) = nullptr;
    return SQL_SUCCESS;
}
SQLRETURN SQLExecDirect(SQLHSTMT handle, SQLCHAR* text, SQLINTEGER length) {
    const std::string statement = TextOf(text, length);
    Log("execute " + statement);
    return Run(handle, statement);
}
SQLRETURN SQLTables(SQLHSTMT handle, SQLCHAR* catalogue, SQLSMALLINT length, SQLCHAR*, SQLSMALLINT, SQLCHAR*,
                    SQLSMALLINT, SQLCHAR* type, SQLSMALLINT typeLength) {
    Log("tables " + TextOf(catalogue, length) + " " + TextOf(type, typeLength));
    return Run(handle, "SQLTables");
}
SQLRETURN SQLCancel(SQLHSTMT handle) {
    Log("cancel");
    Of(handle)->canceled = true;
    return SQL_SUCCESS;
}

SQLRETURN SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count) {
    *count = static_cast<SQLSMALLINT>(Of(handle)->answer.columns.size());
    return SQL_SUCCESS;
}
SQLRETURN SQLDescribeCol(SQLHSTMT handle, SQLUSMALLINT number, SQLCHAR* name, SQLSMALLINT size,
                         SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* columnSize, SQLSMALLINT* decimals,
                         SQLSMALLINT* nullable) {
    const Column& column = Of(handle)->answer.columns.at(number - 1u);
    const auto given = Give(column.name, name, size);
    if (length != nullptr) *length = given;
    if (type != nullptr) *type = static_cast<SQLSMALLINT>(column.type);
    if (columnSize != nullptr) *columnSize = 50;
    if (decimals != nullptr) *decimals = 0;
    if (nullable != nullptr) *nullable = SQL_NULLABLE;
    return SQL_SUCCESS;
}
SQLRETURN SQLColAttribute(SQLHSTMT handle, SQLUSMALLINT number, SQLUSMALLINT attribute, SQLPOINTER,
                          SQLSMALLINT, SQLSMALLINT*, SQLLEN* value) {
    if (attribute != SQL_DESC_UNSIGNED || value == nullptr) return SQL_ERROR;
    *value = Of(handle)->answer.columns.at(number - 1u).isUnsigned ? SQL_TRUE : SQL_FALSE;
    return SQL_SUCCESS;
}
SQLRETURN SQLFetch(SQLHSTMT handle) {
    Handle& statement = *Of(handle);
    const auto listed = static_cast<long>(statement.answer.rows.size());
    if (statement.position >= std::max(listed, statement.answer.generated)) return SQL_NO_DATA;
    if (!Wait(statement, statement.answer.pause)) return SQL_ERROR;
    ++statement.position;
    statement.column = 0;
    if (statement.answer.pause > 0) Log("fetch " + std::to_string(statement.position));
    return SQL_SUCCESS;
}
SQLRETURN SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT, SQLPOINTER to, SQLLEN size,
                     SQLLEN* length) {
    Handle& statement = *Of(handle);
    const auto row = static_cast<std::size_t>(statement.position - 1);
    const std::string value = row < statement.answer.rows.size() ? statement.answer.rows[row].at(number - 1u)
                                                                 : std::to_string(statement.position);
    if (value == "\\N") {
        *length = SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    if (statement.column != number) statement.given = 0;
    statement.column = number;
    const std::string rest = value.substr(statement.given);
    const auto room = static_cast<std::size_t>(size - 1), count = std::min(rest.size(), room);
    std::memcpy(to, rest.data(), count);
    static_cast<char*>(to)[count] = '\0';
    statement.given += count;
    *length = static_cast<SQLLEN>(rest.size());
    return rest.size() > room ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}
SQLRETURN SQLMoreResults(SQLHSTMT) {
    return SQL_NO_DATA;
}

SQLRETURN SQLGetDiagRec(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT record, SQLCHAR* state, SQLINTEGER* native,
                        SQLCHAR* message, SQLSMALLINT size, SQLSMALLINT* length) {
    const auto& refusal = Of(handle)->refusal;
    if (record != 1 || !refusal) return SQL_NO_DATA;
    Give(refusal->state, state, 6);
    *native = refusal->native;
    const auto given = Give(refusal->words, message, size);
    if (length != nullptr) *length = given;
    return SQL_SUCCESS;
}
// Without it the driver manager does not pass on what SQLGetDiagRec says.
SQLRETURN SQLGetDiagField(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT, SQLPOINTER, SQLSMALLINT,
                          SQLSMALLINT*) {
    return SQL_NO_DATA;
}
}
