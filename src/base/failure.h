#pragma once

#include <stdexcept>
#include <string>

namespace norvelis {

/// The classic numbers of run-time failures; logs, boxes and exit messages show them.
enum class FailureNumber {
    InvalidCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    FileNotFound = 53,
    DeviceIoError = 57,
    DiskFull = 61,
    InputPastEnd = 62,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    StoreFailure = 3709,  ///< The dictionary store refused; the text says what and why.
};

/// A failure that no handler on the way takes. It ends the command; whoever is at the top (the frame, the
/// command line) shows number and text once. what() is the text for a person.
class RuntimeFailure : public std::runtime_error {
  public:
    /// With the classic text of the number.
    explicit RuntimeFailure(FailureNumber number);
    /// With the classic text, a colon and `detail` (a file name, what was expected).
    RuntimeFailure(FailureNumber number, const std::string& detail);

    FailureNumber Number() const { return number_; }
    const std::string& Detail() const { return detail_; }  ///< Empty with the classic text alone.

  private:
    std::string detail_;
    FailureNumber number_;
};

}  // namespace norvelis
