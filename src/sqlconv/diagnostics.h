#pragma once

#include <stdexcept>
#include <stop_token>
#include <string>
#include <vector>

namespace norvelis {

/// One record of what the driver manager, a driver or a server says about a failed call.
struct Diagnostic {
    std::string state;  ///< Five characters, such as "42S01".
    long native = 0;    ///< The server's own number.
    std::string message;
};

/// A refusal of a server or of the driver manager. what() is the server's words for a person.
class SqlFailure : public std::runtime_error {
  public:
    explicit SqlFailure(std::vector<Diagnostic> diagnostics);
    /// A failure of ours with a number and without diagnostics.
    SqlFailure(long number, const std::string& words) : std::runtime_error(words), number_(number) {}

    /// The server's number of the first diagnostic.
    long Number() const { return number_; }
    const std::vector<Diagnostic>& Diagnostics() const { return diagnostics_; }

  private:
    std::vector<Diagnostic> diagnostics_;
    long number_ = 0;
};

/// SqlFailure "The command was canceled" once a stop was requested.
void ThrowIfCanceled(const std::stop_token& cancellation);

/// What the handle has to say about its last call, most important first; empty when it says nothing.
/// `handleType` is the number that ODBC gives the kind of handle.
std::vector<Diagnostic> DiagnosticsOf(short handleType, void* handle);

/// "ODBC Error " + state, a line end, native number, " : " and the message: the form of the source list.
std::string OdbcErrorText(const Diagnostic& diagnostic);

}  // namespace norvelis
