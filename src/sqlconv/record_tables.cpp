#include "sqlconv/record_tables.h"

#include <stdexcept>

#include "base/failure.h"
#include "base/text.h"
#include "dictionary/records.h"
#include "sqlconv/names.h"

namespace norvelis {

namespace {

constexpr int kMostFields = 150;

struct Field {
    std::string name, picture;
};

std::string KeyName(const Recordset& record) {
    return record.Value("reckey").value_or("RecKey") + "-ID";
}

/// The fields that become columns: fillers have no name, and what has no picture is a group.
std::vector<Field> ColumnFieldsOf(Connection& store, std::string_view recordName) {
    std::vector<Field> fields;
    auto row = dictionary::FieldsOf(store, recordName);
    for (; !row.Eof(); row.MoveNext()) {
        std::string name(Trim(row.Text("fieldname"))), picture(Trim(row.Text("fieldpicture")));
        if (UpperCase(name) == "FILLER" || picture.empty()) continue;
        fields.push_back({std::move(name), std::move(picture)});
    }
    return fields;
}

}  // namespace

std::vector<std::string> RecordsOf(Connection& store, std::string_view schemaname) {
    std::vector<std::string> records;
    auto row = dictionary::RecordsByName(store, schemaname);
    for (; !row.Eof(); row.MoveNext()) records.emplace_back(Trim(row.Text("Recordname")));
    return records;
}

std::string DatabaseStatement(std::string_view databaseName) {
    return "CREATE DATABASE " + std::string(databaseName);
}

std::string RecordTableStatement(Connection& store, std::string_view recordName,
                                 std::string_view databaseName) {
    auto row = dictionary::RecordsNamed(store, recordName);
    if (row.Eof()) return {};
    const std::vector<Field> fields = ColumnFieldsOf(store, recordName);
    if (fields.size() > kMostFields) throw RuntimeFailure(FailureNumber::SubscriptOutOfRange);

    std::string statement =
        "Create Table " + CleanName(databaseName) + ".dbo." + CleanName(recordName) + " (";
    for (; !row.Eof(); row.MoveNext()) {
        statement += CleanName(KeyName(row)) + " INT IDENTITY(1,1) NOT NULL, ";
        int counter = 0;
        for (const auto& field : fields) {
            statement += CleanName(field.name) + "_" + std::to_string(++counter) + " " +
                         SqlTypeFor(field.picture) + ", ";
        }
    }
    std::string closed(Trim(statement));
    closed.pop_back();
    return closed + ")";
}

void ReadStatements(Connection& store, std::string_view schemaname, std::string_view databaseName,
                    const StatementReceiver& take) {
    take({}, DatabaseStatement(databaseName));
    for (const auto& record : RecordsOf(store, schemaname)) {
        std::string statement;
        try {
            statement = RecordTableStatement(store, record, databaseName);
        } catch (const RuntimeFailure& failure) {
            throw std::runtime_error("Record " + record + ": Run-time error '" +
                                     std::to_string(static_cast<int>(failure.Number())) +
                                     "': " + failure.what());
        }
        if (!statement.empty()) take(record, statement);
    }
}

TableNames NamesOf(Connection& store, std::string_view recordName) {
    TableNames names;
    for (auto row = dictionary::RecordsNamed(store, recordName); !row.Eof(); row.MoveNext())
        names.keys.push_back(KeyName(row));
    for (auto& field : ColumnFieldsOf(store, recordName)) names.fields.push_back(std::move(field.name));
    return names;
}

}  // namespace norvelis
