#include "sqlconv/diagnostics.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace norvelis {

namespace {

constexpr SQLSMALLINT kRecords = 8;

/// The messages one after the other; a driver that repeats itself is heard once.
std::string WordsOf(const std::vector<Diagnostic>& diagnostics) {
    std::string words;
    for (const auto& diagnostic : diagnostics) {
        if (words.find(diagnostic.message) != std::string::npos) continue;
        words += (words.empty() ? "" : "\r\n") + diagnostic.message;
        if (!diagnostic.state.empty()) words += " (" + diagnostic.state + ")";
    }
    return words.empty() ? "the driver refused without a reason" : words;
}

}  // namespace

SqlFailure::SqlFailure(std::vector<Diagnostic> diagnostics)
    : std::runtime_error(WordsOf(diagnostics)), diagnostics_(std::move(diagnostics)) {
    if (!diagnostics_.empty()) number_ = diagnostics_.front().native;
}

void ThrowIfCanceled(const std::stop_token& cancellation) {
    if (cancellation.stop_requested()) throw SqlFailure(0, "The command was canceled");
}

std::vector<Diagnostic> DiagnosticsOf(short handleType, void* handle) {
    std::vector<Diagnostic> diagnostics;
    for (SQLSMALLINT record = 1; record <= kRecords; ++record) {
        SQLCHAR state[6] = {};
        SQLCHAR message[4096] = {};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        const SQLRETURN result = SQLGetDiagRec(handleType, handle, record, state, &native, message,
                                               static_cast<SQLSMALLINT>(sizeof message), &length);
        if (!SQL_SUCCEEDED(result)) break;
        const auto kept =
            std::clamp<std::size_t>(length > 0 ? static_cast<std::size_t>(length) : 0, 0, sizeof message - 1);
        std::string text(reinterpret_cast<const char*>(message), kept);
        while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
        diagnostics.push_back({reinterpret_cast<const char*>(state), native, std::move(text)});
    }
    return diagnostics;
}

std::string OdbcErrorText(const Diagnostic& diagnostic) {
    return "ODBC Error " + diagnostic.state + std::string(kLineBreak) + std::to_string(diagnostic.native) +
           " : " + diagnostic.message;
}

}  // namespace norvelis
