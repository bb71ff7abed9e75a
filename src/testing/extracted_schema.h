#pragma once

#include <string>

#include "base/paths.h"
#include "dictionary/schema_contents.h"
#include "extract/driver.h"
#include "testing/test_store.h"

namespace norvelis {

/// Extracts a report into the store of the application folder, beside what is there.
inline void ExtractInto(TestApp& test, const std::string& report) {
    const std::string file = test.folder.Path("report.txt");
    WriteFile(file, report);
    ExtractionDriver driver = SchedulerDriver(test.app, *test.app.gConnection);
    process_Classic_Extract_Report(test.app, driver, ValidateReportFile(file));
}

/// What the dictionary holds of a report's schema.
inline dictionary::SchemaContents SchemaOf(const std::string& report) {
    TestApp test;
    ExtractInto(test, report);
    return dictionary::ReadSchema(*test.app.gConnection, test.app.gSchemaName);
}

}  // namespace norvelis
