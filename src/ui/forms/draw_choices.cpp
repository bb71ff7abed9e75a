#include "ui/forms/draw_choices.h"

#include <QAction>

#include "ui/controls/context_menu.h"
#include "ui/forms/long_commands.h"

namespace norvelis::ui {

void AddDrawChoices(ContextMenu& menu, LongCommands& commands, const std::function<PointedRecord()>& record,
                    const DrawChoice& draw) {
    const auto add = [&](const char* caption, RecordChoice::Kind kind) {
        commands.DisableWhileBusy(menu.Add(caption, [record, draw, kind] {
            const PointedRecord pointed = record();
            if (pointed.name.empty()) return;
            RecordChoice choice;
            choice.kind = kind;
            choice.name = pointed.name;
            draw(pointed.schema, choice);
        }));
    };
    add("Draw arou&nd", RecordChoice::Kind::Around);
    add("Draw i&ts area", RecordChoice::Kind::AreaOf);
}

}  // namespace norvelis::ui
