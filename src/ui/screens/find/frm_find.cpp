#include "ui/screens/find/frm_find.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/text.h"
#include "browse/found_name.h"
#include "ui/controls/button_row.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/flx_grid.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/worded_mark.h"

namespace norvelis::ui {

namespace {

constexpr std::size_t kMostRows = 500;
constexpr int kMargin = 16;
constexpr auto kHint = "Part of a name, * and ? are wild cards; field: set: index: area: id: before it";
constexpr auto kAllKinds = "record: field: set: index: area: id: schema: in front look for these alone";

}  // namespace

frmFind::frmFind(const ScreenContext& context)
    : Form(context, "frmFind", "FIND ANYTHING", QSize(850, 510)),
      FlxGrid_(new FlxGrid("FlxGrid", "WHAT|NAME|WHERE|SCHEMA", context.app.host, this)),
      lblCount_(new ElidedLabel("lblCount", {}, this)) {
    FlxGrid_->setAccessibleName("Found");
    FlxGrid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    FlxGrid_->verticalHeader()->hide();  // A press on a row marks all of it.
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, Body().top() + 12, kMargin, kMargin);
    column->addWidget(SearchRow());
    column->addWidget(FlxGrid_, 1);
    auto* buttons = new ButtonRow(this);
    buttons->addWidget(lblCount_, 1);
    SkinButton* go = buttons->Add("cmdGo", "GO THERE", "To its place: tree, row of the fields (Return)",
                                  [this] { GoTo(Place::Best); });
    SkinButton* tree = buttons->Add("cmdTree", "IN THE TREE", "To its record in the tree (Ctrl+Return)",
                                    [this] { GoTo(Place::Tree); });
    SkinButton* report =
        buttons->Add("cmdReport", "IN THE REPORT", "To its line in the report (Shift+Return)",
                     [this] { GoTo(Place::Report); });
    column->addLayout(buttons);

    ContextMenu menu(FlxGrid_);
    menu.AddLine();
    menu.Add("&Go there\tReturn", go);
    menu.Add("Show in the &tree\tCtrl+Return", tree);
    menu.Add("Show in the re&port\tShift+Return", report);
    menu.Add("&Where used", [this] { ShowWhereUsed(); });
    connect(FlxGrid_, &QAbstractItemView::activated, this, [this] { GoTo(Place::Best); });
    OnKeys(this, QKeySequence("Ctrl+Return"), [this] { GoTo(Place::Tree); });
    OnKeys(this, QKeySequence("Shift+Return"), [this] { GoTo(Place::Report); });
    OnKeys(this, QKeySequence::Refresh, [this] { ReadNames(); });
    context.commands.DisableWhileBusy(OnKeys(this, Qt::Key_Escape, &QWidget::close));  // Then it cancels.
    connect(&context.commands, &LongCommands::BusyChanged, this, [this](bool busy) {
        if (!busy && isVisible() && App().gConnection->IsOpen()) ReadNames();
    });
}

QWidget* frmFind::SearchRow() {
    txtFind_ = new QLineEdit(this);
    txtFind_->setObjectName("txtFind");
    txtFind_->setAccessibleName("Name to find");
    txtFind_->setPlaceholderText(kHint);
    txtFind_->setToolTip(kAllKinds);
    txtFind_->setTextMargins(5, 0, 5, 0);
    txtFind_->installEventFilter(this);
    auto* whereUsed = new WordedCheck("chkWhereUsed", "Where use&d: fields of this name or ending", this);
    chkWhereUsed_ = whereUsed->Button();
    connect(txtFind_, &QLineEdit::textChanged, this, &frmFind::Search);
    connect(txtFind_, &QLineEdit::returnPressed, this, [this] { GoTo(Place::Best); });
    connect(chkWhereUsed_, &QCheckBox::toggled, this, &frmFind::Search);
    auto* row = new QWidget(this);
    auto* parts = new QHBoxLayout(row);
    parts->setContentsMargins(0, 0, 0, 0);
    parts->addWidget(txtFind_, 1);
    parts->addLayout(whereUsed);
    return row;
}

QWidget* frmFind::OpensAt() const {
    return txtFind_;
}

void frmFind::Take(const ScreenRequest& request) {
    if (!std::holds_alternative<FindAnything>(request)) return;
    ReadNames();
    App().host.OpenScreen(Screen::Find, false);
    txtFind_->setFocus(Qt::ShortcutFocusReason);
    txtFind_->selectAll();
}

// What was marked stays marked when the dictionary still has it.
void frmFind::ReadNames() {
    const FoundName marked = Marked() ? *Marked() : FoundName{};
    try {
        index_ = FindIndex(*App().gConnection);
    } catch (const RuntimeFailure& failure) {
        index_ = {};
        notRead_ = failure.what();
        return Search();
    }
    notRead_.clear();
    Search();
    const auto again = std::ranges::find(found_, marked);
    if (again != found_.end()) Mark(static_cast<int>(again - found_.begin()));
}

void frmFind::Search() {
    const std::string typed = txtFind_->text().toStdString();
    FindIndex::Answer answer;
    if (!typed.empty()) {
        const FindText wanted = ReadFindText(typed);
        answer =
            chkWhereUsed_->isChecked() ? index_.WhereUsed(wanted, kMostRows) : index_.Find(wanted, kMostRows);
    }
    found_ = std::move(answer.best);
    std::vector<std::array<std::string, 4>> rows;
    for (const FoundName& found : found_)
        rows.push_back({std::string(NameOf(found.kind)), found.name, WhereOf(found), found.schema});
    FlxGrid_->SetRows(rows);
    Mark(0);
    ShowCount(answer.count);
}

void frmFind::Mark(int row) {
    FlxGrid_->setCurrentIndex(FlxGrid_->model()->index(row, 0));
}

void frmFind::ShowCount(std::size_t count) {
    const QString typed = txtFind_->text();
    if (!notRead_.isEmpty()) return lblCount_->setText(notRead_);
    if (typed.isEmpty()) return lblCount_->setText({});
    if (count == 0 && chkWhereUsed_->isChecked())
        return lblCount_->setText("No field has a name that is " + typed + " or ends so");
    if (count == 0) return lblCount_->setText("Nothing has a name with " + typed);
    if (count <= found_.size()) return lblCount_->setText(QString("%L1 found").arg(count));
    lblCount_->setText(
        QString("%L1 found, the best %L2 listed: type more of the name").arg(count).arg(found_.size()));
}

const FoundName* frmFind::Marked() const {
    const auto row = static_cast<std::size_t>(FlxGrid_->currentIndex().row());
    return row < found_.size() ? &found_[row] : nullptr;
}

void frmFind::ShowWhereUsed() {
    if (!Marked()) return;
    chkWhereUsed_->setChecked(true);
    txtFind_->setText(QString::fromStdString(Marked()->name));
}

void frmFind::GoTo(Place place) {
    if (!Marked()) return;
    const FoundName found = *Marked();
    try {
        if (IsInDictionary(*App().gConnection, found)) {
            close();
            return Request(found, place);
        }
    } catch (const RuntimeFailure& failure) {
        return App().host.MessageBox(failure.what());
    }
    ReadNames();
    App().host.MessageBox(WordsForGone(found));
}

void frmFind::Request(const FoundName& found, Place place) const {
    if (place == Place::Report) {
        const bool isSet = found.kind == FindKind::Set || found.kind == FindKind::Index;
        const bool isSchema = found.kind == FindKind::Schema;
        const bool isField = found.kind == FindKind::Field;
        Context().request(ShowReport{.record = isSet ? std::string() : found.record,
                                     .field = isField ? found.name : std::string(),
                                     .set = isSet ? found.name : std::string(),
                                     .line = isSchema ? 1U : 0U,
                                     .schema = found.schema});
    } else if (place == Place::Best && found.kind == FindKind::Field) {
        Context().request(ShowInList{found});
    } else {
        Context().request(ShowInTree{found});
    }
}

// What moves about in a list moves its mark while the person types.
bool frmFind::eventFilter(QObject* object, QEvent* event) {
    if (object == txtFind_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
            QApplication::sendEvent(FlxGrid_, event);
            return true;
        }
    }
    return Form::eventFilter(object, event);
}

}  // namespace norvelis::ui
