#include "sqlconv/streaming.h"

#include "base/text.h"
#include "sqlconv/data_sources.h"

namespace norvelis {

namespace {

struct StreamingWord {
    std::string_view driverFile;  ///< A part of the file's name in lower case.
    std::string_view key, value;
};

constexpr StreamingWord kStreamingWords[] = {
    {"psqlodbc", "UseDeclareFetch", "1"}, {"psqlodbc", "Fetch", "500"}, {"sqlite", "StepAPI", "1"}};

std::string DriverOf(const ConnectionText& text) {
    if (text.Has("DRIVER")) return text.Value("DRIVER");
    const std::string name = text.Value("DSN");
    for (const auto& source : DataSources().shown) {
        if (EqualIgnoringCase(source.name, name)) return source.driver;
    }
    return {};
}

}  // namespace

void AskToStream(ConnectionText& text) {
    std::string file = LowerCase(DriverFile(DriverOf(text)));
    file.erase(0, file.rfind('/') + 1);
    for (const auto& word : kStreamingWords) {
        if (file.find(word.driverFile) != std::string::npos && !text.Has(word.key))
            text.Set(word.key, word.value);
    }
}

}  // namespace norvelis
