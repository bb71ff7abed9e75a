#include "sqlconv/type_numbers.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <iterator>

namespace norvelis {

namespace {

struct TypePair {
    int odbc, number;
};

constexpr TypePair kNumbers[] = {{SQL_SMALLINT, 2},
                                 {SQL_INTEGER, 3},
                                 {SQL_REAL, 4},
                                 {SQL_DOUBLE, 5},
                                 {SQL_FLOAT, 5},
                                 {SQL_BIT, 11},
                                 {SQL_TINYINT, 16},
                                 {SQL_BIGINT, 20},
                                 {SQL_GUID, 72},
                                 {SQL_BINARY, 128},
                                 {SQL_CHAR, 129},
                                 {SQL_WCHAR, 130},
                                 {SQL_NUMERIC, 131},
                                 {SQL_DECIMAL, 131},
                                 {SQL_TYPE_DATE, 133},
                                 {SQL_TYPE_TIME, 134},
                                 {SQL_TYPE_TIMESTAMP, 135},
                                 {SQL_VARCHAR, 200},
                                 {SQL_LONGVARCHAR, 201},
                                 {SQL_WVARCHAR, 202},
                                 {SQL_WLONGVARCHAR, 203},
                                 {SQL_VARBINARY, 204},
                                 {SQL_LONGVARBINARY, 205}};

constexpr int kUnsignedTinyInt = 17, kAnythingElse = 12;

}  // namespace

int TypeNumber(int odbcType, bool isUnsigned) {
    if (odbcType == SQL_TINYINT && isUnsigned) return kUnsignedTinyInt;
    const auto* found = std::find_if(std::begin(kNumbers), std::end(kNumbers),
                                     [odbcType](const TypePair& pair) { return pair.odbc == odbcType; });
    return found != std::end(kNumbers) ? found->number : kAnythingElse;
}

std::string_view TypeText(int number) {
    switch (number) {
        case 2:
            return "SMALLINT";
        case 3:
        case 72:
            return "INT";
        case 4:
            return "FLOAT";
        case 5:
        case 131:
            return "DOUBLE";
        case 6:
        case 202:
            return "VARCHAR(255)";
        case 7:
        case 122:
        case 124:
            return "DATETIME";
        case 11:
            return "CHAR(1) BINARY";
        case 17:
            return "CHAR(255)";
        case 121:
            return "DATE";
        case 123:
        case 125:
            return "CHAR(50)";
        default:
            return "LONGTEXT";
    }
}

}  // namespace norvelis
