#pragma once

#include <optional>
#include <string_view>

#include "store/inserter.h"

namespace norvelis {

/// Rows as an extraction leaves them, as far as a conversion reads them.
inline void AddRecord(Connection& store, std::string_view schema, std::string_view record,
                      std::optional<std::string_view> key) {
    Inserter rows(store, "Record_Details", {"schemaname", "Recordname", "recordtype", "reckey"});
    const std::optional<std::string_view> values[] = {schema, record, "Record", key};
    rows.Add(values);
}

inline void AddField(Connection& store, std::string_view schema, std::string_view record,
                     std::string_view field, std::string_view picture) {
    Inserter rows(store, "Record_layout", {"schemaname", "Recordname", "fieldname", "fieldpicture"});
    const std::optional<std::string_view> values[] = {schema, record, field, picture};
    rows.Add(values);
}

/// CUSTOMER with a key, a filler, a group and two fields.
inline void AddCustomer(Connection& store, std::string_view schema = "SALES") {
    AddRecord(store, schema, "CUSTOMER", "CUST-NUM");
    AddField(store, schema, "CUSTOMER", "CUST-NUM", "9(6)");
    AddField(store, schema, "CUSTOMER", "CUST-NAME", "X(30)");
    AddField(store, schema, "CUSTOMER", "FILLER", "X(4)");
    AddField(store, schema, "CUSTOMER", "PHONE", "");
}

inline constexpr std::string_view kCustomerStatement =
    "Create Table SALES.dbo.CUSTOMER (CUST_NUM_ID INT IDENTITY(1,1) NOT NULL, CUST_NUM_1 INT, CUST_NAME_2 "
    "CHAR(50))";

}  // namespace norvelis
