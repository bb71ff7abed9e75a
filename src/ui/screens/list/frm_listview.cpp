#include "ui/screens/list/frm_listview.h"

#include <QVBoxLayout>

#include "base/text.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/keys.h"
#include "ui/controls/name_grid.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/split.h"
#include "ui/forms/record_lists.h"
#include "ui/screens/list/neighbor_list.h"
#include "ui/screens/list/record_network.h"

namespace norvelis::ui {

namespace {

constexpr int kListsWidth = 200, kMargin = 16;

}  // namespace

frm_Listview::frm_Listview(const ScreenContext& context)
    : Form(context, "frm_Listview", "RECORDS LISTVIEW", QSize(850, 510)),
      lists_(new RecordLists(context, this)),
      network_(new RecordNetwork(this)) {
    QSplitter* record = Split(Qt::Vertical, network_, lists_->Grids(), 250, 180);
    QSplitter* sides =
        Split(Qt::Horizontal, lists_->Lists(), record, kListsWidth, Body().width() - kListsWidth);
    sides->setStretchFactor(1, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, Body().top() + 12, kMargin, kMargin);
    column->addWidget(sides);

    connect(lists_, &RecordLists::RecordChosen, this, &frm_Listview::Choose);
    connect(network_, &RecordNetwork::Chosen, this, &frm_Listview::Choose);
    SkinButton* cmdBack = &network_->cmdBack();
    connect(cmdBack, &QPushButton::clicked, this, [this] { ShowRecord(trail_.Back()); });
    AddCommands(lists_->Records());
    AddCommands(network_->FromList());
    AddCommands(network_->ToList());
    ContextMenu box(&network_->Box());
    AddDrawing(box, [this]() -> PointedRecord { return {lists_->Schema(), shown_}; });
    for (const char* keys : {"Backspace", "Alt+Left"})
        OnKeys(this, QKeySequence(keys), [cmdBack] { cmdBack->click(); });
    OnKeys(this, QKeySequence::Refresh, [this] { lists_->LoadSchemaList(); });
    OnKeys(this, QKeySequence::Find, [this] { lists_->Records().setFocus(Qt::ShortcutFocusReason); });
}

void frm_Listview::AddCommands(QAbstractItemView& names) {
    ContextMenu menu(&names);
    menu.Add("Show in re&port", [this, &names] {
        const std::string name = names.currentIndex().data().toString().toStdString();
        if (!name.empty()) Context().request(ShowReport{name});
    });
    AddDrawing(menu, [this, &names]() -> PointedRecord {
        const QModelIndex at = names.currentIndex();
        const std::string other = NeighborList::OtherSchema(at);
        return {other.empty() ? lists_->Schema() : other, at.data().toString().toStdString()};
    });
    menu.Add("&Back\tBackspace", &network_->cmdBack());
}

void frm_Listview::AddDrawing(ContextMenu& menu, const std::function<PointedRecord()>& record) {
    AddDrawChoices(menu, Context().commands, record,
                   [this](const std::string& schema, const RecordChoice& choice) {
                       Context().request(DrawChosen{schema, choice});
                   });
}

void frm_Listview::Load() {
    lists_->Load([this] { Form::Load(); });
}

QWidget* frm_Listview::OpensAt() const {
    return &lists_->Records();
}

void frm_Listview::Take(const ScreenRequest& request) {
    const auto* show = std::get_if<ShowInList>(&request);
    if (!show) return;
    const FoundName& found = show->found;
    App().host.OpenScreen(Screen::Listview, false);
    lists_->ShowRecordOf(std::string(Trim(found.schema)), std::string(Trim(found.record)));
    if (found.kind == FindKind::Field) lists_->MarkField(found.name);
}

void frm_Listview::Choose(const std::string& name) {
    if (!name.empty()) trail_.Choose(name);
    ShowRecord(name);
}

void frm_Listview::ShowRecord(const std::string& name) {
    ReportFailure(App(), "ShowRecord", [&] {
        ChosenRecord chosen;
        if (!name.empty()) chosen = norvelis::ShowRecord(*App().gConnection, name, lists_->Schema());
        lists_->ShowRecord(name, chosen.record.details);
        shown_ = name;
        network_->Show(chosen);
    });
    network_->cmdBack().setEnabled(trail_.CanGoBack());
}

}  // namespace norvelis::ui
