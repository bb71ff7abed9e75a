#include "base/failure.h"

namespace norvelis {

namespace {

const char* ClassicText(FailureNumber number) {
    switch (number) {
        case FailureNumber::InvalidCall:
            return "Invalid procedure call or argument";
        case FailureNumber::Overflow:
            return "Overflow";
        case FailureNumber::SubscriptOutOfRange:
            return "Subscript out of range";
        case FailureNumber::TypeMismatch:
            return "Type mismatch";
        case FailureNumber::FileNotFound:
            return "File not found";
        case FailureNumber::DeviceIoError:
            return "Device I/O error";
        case FailureNumber::DiskFull:
            return "Disk full";
        case FailureNumber::InputPastEnd:
            return "Input past end of file";
        case FailureNumber::PermissionDenied:
            return "Permission denied";
        case FailureNumber::PathFileAccess:
            return "Path/File access error";
        case FailureNumber::PathNotFound:
            return "Path not found";
        case FailureNumber::StoreFailure:
            return "Dictionary store";
    }
    return "Application-defined error";
}

}  // namespace

RuntimeFailure::RuntimeFailure(FailureNumber number)
    : std::runtime_error(ClassicText(number)), number_(number) {}

RuntimeFailure::RuntimeFailure(FailureNumber number, const std::string& detail)
    : std::runtime_error(std::string(ClassicText(number)) + ": " + detail),
      detail_(detail),
      number_(number) {}

}  // namespace norvelis
