#pragma once

#include <functional>
#include <string>

#include "diagram/record_choice.h"

namespace norvelis::ui {

class ContextMenu;
class LongCommands;

/// A record that the person points at; without a name there is none.
struct PointedRecord {
    std::string schema, name;
};
using DrawChoice = std::function<void(const std::string& schema, const RecordChoice& choice)>;

/// The entries of a record's context menu that draw a part of its schema.
void AddDrawChoices(ContextMenu& menu, LongCommands& commands, const std::function<PointedRecord()>& record,
                    const DrawChoice& draw);

}  // namespace norvelis::ui
