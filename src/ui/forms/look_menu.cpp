#include "ui/forms/look_menu.h"

#include <QActionGroup>

#include "diagram/drawing_look.h"

namespace norvelis::ui {

LookMenu::LookMenu(const std::string& ini, QWidget* parent) : QMenu(parent), ini_(ini) {
    setObjectName("mnuLook");
    const auto addPages = [this](const char* name, const QString& caption, bool byArea) {
        Add(
            name, caption, [byArea](const DrawOptions& look) { return look.pageForEachArea == byArea; },
            [byArea](DrawOptions& look) { look.pageForEachArea = byArea; });
    };
    const auto addBoxes = [this](const char* name, const QString& caption, BoxMeaning meaning) {
        Add(
            name, caption, [meaning](const DrawOptions& look) { return look.meaning == meaning; },
            [meaning](DrawOptions& look) { look.meaning = meaning; });
    };
    const auto addLines = [this](const char* name, const QString& caption, bool byOwner) {
        Add(
            name, caption, [byOwner](const DrawOptions& look) { return look.linesByOwner == byOwner; },
            [byOwner](DrawOptions& look) { look.linesByOwner = byOwner; });
    };
    BeginGroup();
    addPages("mnuOnePage", "Schema on &one page", false);
    addPages("mnuPageForArea", "A &page for each area", true);
    BeginGroup();
    addBoxes("mnuBoxesUsual", "&Boxes as the settings say", BoxMeaning::None);
    addBoxes("mnuBoxesByArea", "Boxes colored by &area", BoxMeaning::Area);
    addBoxes("mnuBoxesByMode", "Boxes colored by location &mode", BoxMeaning::LocationMode);
    BeginGroup();
    addLines("mnuLinesRandom", "&Lines in random colors", false);
    addLines("mnuLinesByOwner", "Lines colored by their o&wner", true);
    connect(this, &QMenu::aboutToShow, this, &LookMenu::ShowKept);
    ShowKept();
}

void LookMenu::BeginGroup() {
    if (group_) addSeparator();
    group_ = new QActionGroup(this);
}

void LookMenu::Add(const char* name, const QString& caption,
                   const std::function<bool(const DrawOptions&)>& has,
                   const std::function<void(DrawOptions&)>& pick) {
    QAction* entry = addAction(caption, this, [this, pick] {
        DrawOptions look;
        TakeKeptLook(ini_, look);
        pick(look);
        KeepLook(ini_, look);
        ShowKept();
    });
    entry->setObjectName(name);
    entry->setCheckable(true);
    group_->addAction(entry);
    entries_.emplace_back(entry, has);
}

void LookMenu::ShowKept() {
    DrawOptions look;
    TakeKeptLook(ini_, look);
    for (const auto& [entry, has] : entries_) entry->setChecked(has(look));
}

}  // namespace norvelis::ui
