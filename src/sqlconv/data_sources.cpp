#include "sqlconv/data_sources.h"

#include <sql.h>
#include <sqlext.h>

#include "base/text.h"
#include "sqlconv/handles.h"

namespace norvelis {

namespace {

constexpr SQLSMALLINT kNameBuffer = 255, kAttributeBuffer = 4096;

std::string_view Taken(const SQLCHAR* buffer, SQLSMALLINT length) {
    return {reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(length)};
}

/// The value of "key=value" among the texts that end with a null each, the list with another.
std::string AttributeValue(const char* attributes, std::string_view key) {
    for (std::string_view part = attributes; !part.empty(); part = attributes) {
        const auto equals = part.find('=');
        if (equals != std::string_view::npos && EqualIgnoringCase(Trim(part.substr(0, equals)), key))
            return std::string(Trim(part.substr(equals + 1)));
        attributes += part.size() + 1;
    }
    return {};
}

}  // namespace

DataSourceList DataSources(std::string_view driverFilter) {
    const EnvironmentHandle environment(OdbcVersion::Two);
    DataSourceList list;
    SQLCHAR name[kNameBuffer] = {}, driver[kNameBuffer] = {};
    SQLSMALLINT nameLength = 0, driverLength = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    SQLRETURN result = SQL_SUCCESS;
    while ((result = SQLDataSources(environment.Get(), direction, name, kNameBuffer, &nameLength, driver,
                                    kNameBuffer, &driverLength)) == SQL_SUCCESS) {
        direction = SQL_FETCH_NEXT;
        const std::string_view description = Taken(driver, driverLength);
        if (driverFilter.empty() || description == driverFilter) {
            list.shown.push_back({std::string(Taken(name, nameLength)), std::string(description)});
        } else {
            ++list.hidden;
        }
    }
    if (result != SQL_NO_DATA) {
        const auto diagnostics = DiagnosticsOf(SQL_HANDLE_ENV, environment.Get());
        if (!diagnostics.empty()) list.trouble = diagnostics.front();
    }
    return list;
}

std::string DriverFile(std::string_view driver) {
    if (driver.find('/') != std::string_view::npos) return std::string(driver);
    const EnvironmentHandle environment(OdbcVersion::Three);
    SQLCHAR name[kNameBuffer] = {}, attributes[kAttributeBuffer] = {};
    SQLSMALLINT nameLength = 0, attributesLength = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(SQLDrivers(environment.Get(), direction, name, kNameBuffer, &nameLength, attributes,
                                    kAttributeBuffer, &attributesLength))) {
        direction = SQL_FETCH_NEXT;
        if (EqualIgnoringCase(Taken(name, nameLength), driver))
            return AttributeValue(reinterpret_cast<const char*>(attributes), "Driver");
    }
    return {};
}

std::string_view DriverFilterFor(ServerKind kind, bool turnedOn) {
    if (kind == ServerKind::Sql) return turnedOn ? "SQL Server" : "SQL Server Client 10.0";
    return turnedOn ? "SQL Server Client 10.0" : "SQL Server Client";
}

}  // namespace norvelis
