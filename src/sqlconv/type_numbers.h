#pragma once

#include <string_view>

namespace norvelis {

/// The classic number of a column's type, from the type that its driver reports by ODBC's number.
/// `isUnsigned` matters for the smallest whole numbers only.
int TypeNumber(int odbcType, bool isUnsigned);

/// The type text of a classic number: what a table's fields are shown with, and what new columns get.
std::string_view TypeText(int number);

}  // namespace norvelis
