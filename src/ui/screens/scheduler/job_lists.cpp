#include "ui/screens/scheduler/job_lists.h"

#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "ui/controls/button_row.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/long_commands.h"
#include "ui/screens/scheduler/job_tree_view.h"

namespace norvelis::ui {

JobLists::JobLists(AppState& app, LongCommands& commands, QWidget* parent)
    : QWidget(parent), app_(app), commands_(commands) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(5);
    tvwKestrimoor_ = MakeTree("tvwKestrimoor", "UN-Processed Schedules ", *column);
    tvwKestrimoor1_ = MakeTree("tvwKestrimoor1", "Processed Schedules ", *column);
    column->addLayout(SearchRow());
    auto* refresh = new ButtonRow(this);
    refresh->Add("cmdPopulate", "Refresh All", "Read all schedules again (F5)",
                 [this] { emit RefreshWanted(); });
    column->addLayout(refresh);
}

JobTreeView* JobLists::MakeTree(const char* name, const char* heading, QBoxLayout& column) {
    auto* tree = new JobTreeView(name, QString(heading).trimmed(), this);
    connect(tree, &JobTreeView::NodeClicked, this, &JobLists::NodeClicked);
    connect(tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this, tree](const QItemSelection& selected) {
                if (selected.isEmpty()) return;
                (tree == tvwKestrimoor_ ? tvwKestrimoor1_ : tvwKestrimoor_)->clearSelection();
            });
    AddMenu(*tree);
    column.addWidget(new QLabel(heading, this));
    column.addWidget(tree, 1);
    return tree;
}

void JobLists::AddMenu(JobTreeView& tree) {
    ContextMenu menu(&tree);
    menu.Add("&Open\tReturn", [&tree] {
        if (tree.currentIndex().isValid()) emit tree.clicked(tree.currentIndex());
    });
    menu.Add("&Copy into the editor", [this] { emit CopyWanted(); });
    menu.AddLine();
    commands_.DisableWhileBusy(menu.Add("Run &again", [this] { emit RunAgainWanted(); }));
    commands_.DisableWhileBusy(menu.Add("&Delete", QKeySequence::Delete, [this] { emit DeleteWanted(); }));
}

QBoxLayout* JobLists::SearchRow() {
    Text1_ = new QLineEdit(this);
    Text1_->setObjectName("Text1");
    Text1_->setAccessibleName("Schedule to locate");
    Text1_->setPlaceholderText("TYPE HERE");
    connect(Text1_, &QLineEdit::textChanged, this, [this] {
        search_.TextChanged();
        ShowSearchCaption();
    });
    connect(Text1_, &QLineEdit::returnPressed, this, &JobLists::Search);
    OnKeys(parentWidget(), QKeySequence::Find, [this] {
        Text1_->setFocus(Qt::ShortcutFocusReason);
        Text1_->selectAll();
    });
    auto* row = new ButtonRow(this);
    row->addWidget(Text1_, 1);
    cmdSearch_ = row->Add("cmdSearch", {}, "Search the schedules", [this] { Search(); });
    ShowSearchCaption();
    return row;
}

void JobLists::Fill(std::optional<std::int64_t> selected) {
    JobTrees trees = LoadJobTrees(*app_.gConnection, app_.random);
    tvwKestrimoor_->SetTree(std::move(trees.unprocessed));
    tvwKestrimoor1_->SetTree(std::move(trees.processed));
    if (!selected) return;
    tvwKestrimoor_->SelectJob(*selected);
    tvwKestrimoor1_->SelectJob(*selected);
}

std::vector<std::int64_t> JobLists::MarkedIds() const {
    std::vector<std::int64_t> ids = tvwKestrimoor_->MarkedIds();
    const auto more = tvwKestrimoor1_->MarkedIds();
    ids.insert(ids.end(), more.begin(), more.end());
    return ids;
}

void JobLists::Search() {
    const auto hit = search_.Click(app_.host, tvwKestrimoor_->Tree(), tvwKestrimoor1_->Tree(),
                                   Text1_->text().toStdString());
    ShowSearchCaption();
    if (hit) (hit->processed ? tvwKestrimoor1_ : tvwKestrimoor_)->ShowHit(hit->job, hit->field);
}

void JobLists::ShowSearchCaption() {
    cmdSearch_->setText(QString::fromStdString(search_.Caption()));
}

}  // namespace norvelis::ui
