#include "sqlconv/names.h"

#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include "sqlconv/type_numbers.h"

namespace norvelis {
namespace {

TEST(Names, AreCleanedInOrder) {
    const std::pair<const char*, const char*> cases[] = {{"UNIT-PRICE", "UNIT_PRICE"},
                                                         {"A B(C)", "A_B_C_"},
                                                         {"DATE", "DATE_c"},
                                                         {"Select", "Select_c"},
                                                         {"not null", "not_null"},
                                                         {"DATE)", "DATE_"},
                                                         {"(DATE", "_DATE"},
                                                         {"SETS", "SETS"},
                                                         {"datetime", "datetime_c"},
                                                         {"O'BRIEN;", "O'BRIEN;"},
                                                         {"", ""},
                                                         {"default", "default_c"},
                                                         {"null-", "null_"},
                                                         {"\xC3\x89-1", "\xC3\x89_1"}};
    for (const auto& [name, clean] : cases) EXPECT_EQ(CleanName(name), clean) << name;
}

TEST(Names, ReservedWordsMayNotBeUsed) {
    for (const char* word : {"int", "Update", "NULL", "not null", "set", "select", "float", "double", "date",
                             "datetime", "default"})
        EXPECT_FALSE(IsReservedWord(word)) << word;
    for (const char* word : {"", "integer", "table", "create", " date", "dates"})
        EXPECT_TRUE(IsReservedWord(word));
}

TEST(Types, FollowTheBeginningOfThePicture) {
    const std::pair<const char*, const char*> cases[] = {
        {"9(6)", "INT"}, {"X(200)", "CHAR(50)"}, {"S9(7)V99", "INT"}, {" X", "CHAR(50)"}, {"V99", "INT"},
        {"ZZV9", "INT"}, {"XV9", "CHAR(50)"},    {"A(3)", ""},        {"112", ""},        {"x(3)", ""},
        {"", ""},        {"SV", "INT"},          {"V(9)", ""},        {"-9(4)", ""},      {"1V9", "INT"}};
    for (const auto& [picture, type] : cases) EXPECT_EQ(SqlTypeFor(picture), type) << picture;
}

TEST(Types, OfDriversHaveClassicNumbersAndTexts) {
    struct Case {
        int odbc;
        bool isUnsigned;
        int number;
        const char* text;
    };
    const Case cases[] = {{SQL_SMALLINT, true, 2, "SMALLINT"},
                          {SQL_INTEGER, false, 3, "INT"},
                          {SQL_REAL, false, 4, "FLOAT"},
                          {SQL_DOUBLE, false, 5, "DOUBLE"},
                          {SQL_FLOAT, false, 5, "DOUBLE"},
                          {SQL_BIT, true, 11, "CHAR(1) BINARY"},
                          {SQL_TINYINT, false, 16, "LONGTEXT"},
                          {SQL_TINYINT, true, 17, "CHAR(255)"},
                          {SQL_BIGINT, false, 20, "LONGTEXT"},
                          {SQL_GUID, false, 72, "INT"},
                          {SQL_BINARY, false, 128, "LONGTEXT"},
                          {SQL_CHAR, true, 129, "LONGTEXT"},
                          {SQL_WCHAR, false, 130, "LONGTEXT"},
                          {SQL_NUMERIC, false, 131, "DOUBLE"},
                          {SQL_DECIMAL, false, 131, "DOUBLE"},
                          {SQL_TYPE_DATE, true, 133, "LONGTEXT"},
                          {SQL_TYPE_TIME, false, 134, "LONGTEXT"},
                          {SQL_TYPE_TIMESTAMP, false, 135, "LONGTEXT"},
                          {SQL_VARCHAR, false, 200, "LONGTEXT"},
                          {SQL_LONGVARCHAR, false, 201, "LONGTEXT"},
                          {SQL_WVARCHAR, false, 202, "VARCHAR(255)"},
                          {SQL_WLONGVARCHAR, false, 203, "LONGTEXT"},
                          {SQL_VARBINARY, false, 204, "LONGTEXT"},
                          {SQL_LONGVARBINARY, false, 205, "LONGTEXT"},
                          {SQL_INTERVAL_DAY, false, 12, "LONGTEXT"},
                          {0, false, 12, "LONGTEXT"}};
    for (const auto& [odbc, isUnsigned, number, text] : cases) {
        EXPECT_EQ(TypeNumber(odbc, isUnsigned), number) << odbc;
        EXPECT_EQ(TypeText(number), text) << odbc;
    }
    // Numbers that no driver's type gives, but that the table has.
    EXPECT_EQ(TypeText(7), "DATETIME");
    EXPECT_EQ(TypeText(121), "DATE");
    EXPECT_EQ(TypeText(125), "CHAR(50)");
}

}  // namespace
}  // namespace norvelis
