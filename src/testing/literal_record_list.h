#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "testing/literal_extraction.h"

// The list screen at its plainest, step by step over tables in memory: the yardstick for browse/record_list.
// It knows no store and shares nothing with src/browse.
namespace norvelis::literal {

/// What the controls of the screen hold.
struct ListScreen {
    std::vector<std::string> FlxGrid0, FlxGrid3, FromList, ToList;
    std::map<std::string, std::string> labels;  ///< By control name; missing is empty.
    std::vector<std::array<std::string, 2>> FlxGrid4;
    std::vector<std::array<std::string, 6>> flxgrid5;
};

void LoadSchemaList(ListScreen& screen, const Dictionary& tables);
void LoadRecordsList(ListScreen& screen, const Dictionary& tables, std::string_view schema);
void ShowRecord(ListScreen& screen, const Dictionary& tables, std::string_view name);

}  // namespace norvelis::literal
