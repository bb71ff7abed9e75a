#pragma once

#include <initializer_list>
#include <string>
#include <utility>

namespace norvelis {

/// One report line with texts at 1-based columns.
inline std::string LineOf(std::initializer_list<std::pair<std::size_t, std::string>> texts) {
    std::string line;
    for (const auto& [column, text] : texts) {
        if (line.size() < column - 1) line.resize(column - 1, ' ');
        line.replace(column - 1, text.size(), text);
    }
    return line + "\n";
}

inline std::string HeaderOf(const std::string& schema) {
    return LineOf({{1, "1"},
                   {2, "IDMSRPTS RELEASE 5"},
                   {60, "11/24/26"},
                   {80, "SCHEMA=" + schema + " VERSION=100"}}) +
           "\n\n\n\n\n\n\n\n\n";
}

/// Name, identity, mode and area lines.
inline std::string RecordHead(const std::string& name, const std::string& mode) {
    return LineOf({{2, "RECORD NAME........ " + name}, {60, "RLGTH= 120"}}) +  //
           LineOf({{2, "RECORD ID.......... 415"}}) +                          //
           LineOf({{2, "RECORD LENGTH...... FIXED"}}) +                        //
           LineOf({{2, "LOCATION MODE...... " + mode}}) +                      //
           LineOf({{2, "WITHIN............. NORTH-AREA"}});
}

inline std::string FieldLine(const std::string& level, const std::string& name) {
    return LineOf({{2, level}, {5, name}, {39, "DISPLAY"}, {87, "X(8)"}, {112, "1"}, {127, "8"}});
}

inline std::string ControlItem(const std::string& index, const std::string& order = "ASC") {
    return LineOf({{45, "SET CONTROL ITEM FOR --------      " + index}, {100, order}});
}

inline std::string SetLine(const std::string& name) {
    return LineOf({{1, " SET...... " + name}});
}
inline std::string OwnerLine(const std::string& name) {
    return LineOf({{1, " OWNER.... " + name}});
}
inline std::string MemberLine(const std::string& name, const std::string& first, const std::string& second) {
    return LineOf({{1, " MEMBER... " + name}, {34, first}, {52, second}});
}

}  // namespace norvelis
