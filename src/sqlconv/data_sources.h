#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sqlconv/diagnostics.h"

namespace norvelis {

struct DataSource {
    std::string name;
    std::string driver;  ///< The driver's description; under unixODBC the text of the source's "Driver=".
};

struct DataSourceList {
    std::vector<DataSource> shown;
    std::size_t hidden = 0;             ///< Sources that the filter left out.
    std::optional<Diagnostic> trouble;  ///< What ended the list early.
};

/// The data sources of the machine, in the driver manager's order; with a filter only those of exactly this
/// driver, letter case included. SqlFailure when the driver manager gives no environment.
DataSourceList DataSources(std::string_view driverFilter = {});

/// The file of the driver that a description or a name of odbcinst.ini means: a path as it is; empty when the
/// driver manager knows no such driver.
std::string DriverFile(std::string_view driver);

/// The choices of a server kind and the driver filters that they set. Turning a choice off selects the other,
/// with a filter of its own.
enum class ServerKind { Sql, SqlExpress };
std::string_view DriverFilterFor(ServerKind kind, bool turnedOn);

}  // namespace norvelis
