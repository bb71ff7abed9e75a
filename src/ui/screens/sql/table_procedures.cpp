#include "ui/screens/sql/table_procedures.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QTimer>
#include <QVBoxLayout>
#include <exception>

#include "base/failure.h"
#include "sqlconv/connection_text.h"
#include "store/connection.h"
#include "ui/controls/button_row.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/flx_grid.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/cancel_button.h"
#include "ui/forms/record_lists.h"
#include "ui/screens/sql/row_feed.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

namespace {

constexpr int kGap = 6, kMargin = 16;
constexpr auto kNoneSelected = "No program is selected.";

/// Numbers of rows as people read them, whatever the machine's language.
QString Grouped(std::size_t number) {
    return QLocale(QLocale::English).toString(static_cast<qulonglong>(number));
}

/// Cells have a blank before their text, but for nulls.
std::string PaintedCell(const std::string& cell) {
    return cell.empty() ? cell : " " + ShownValue(std::string_view(cell).substr(1));
}

QString OneLine(const std::string& words) {
    return QString::fromStdString(words).simplified();
}

}  // namespace

TableProcedures::TableProcedures(const ScreenContext& context)
    : Form(context, "TableProcedures", "IDMS SQL UTILITY", kLargeForm) {
    FlxGrid_ = new FlxGrid("FlxGrid", "", App().host, this);
    FlxGrid_->setAccessibleName("Query Results");
    FlxGrid_->AllowSorting();
    FlxGrid_->SetPainted(PaintedCell);
    FlxGrid_->SetLongWork([this](const char* name, const std::function<void()>& work) {
        std::exception_ptr refusal;
        Context().commands.Run({name, Screen::TableProcedures}, [&] {
            try {
                App().host.RunInBackground([&work](const std::stop_token&) { work(); });
            } catch (const RuntimeFailure&) {
                refusal = std::current_exception();  // For whoever wanted the work.
            }
        });
        if (refusal) std::rethrow_exception(refusal);
    });
    lblStatus_ = new ElidedLabel("lblStatus", {}, this);
    auto* status = new QHBoxLayout;
    status->addWidget(lblStatus_, 1);
    AddCancelButton(Context(), *status, this);

    auto* top = new QHBoxLayout;
    top->setSpacing(kMargin);
    top->addLayout(Fields(), 2);
    top->addLayout(Statement(), 3);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, Body().top() + 12, kMargin, 10);
    rows->setSpacing(kGap);
    rows->addLayout(top);
    rows->addLayout(Buttons());
    rows->addWidget(MakeLabel(this, "lblResults", "Query Results"));
    rows->addWidget(FlxGrid_, 1);
    rows->addLayout(status);
    OnKeys(this, QKeySequence("Ctrl+Return"), [this] { Execute_Click(); });
}

QLineEdit* TableProcedures::AddLine(const char* name, const QString& toolTip) {
    auto* line = new QLineEdit(this);
    line->setObjectName(name);
    line->setToolTip(toolTip);
    return line;
}

QLayout* TableProcedures::Fields() {
    Tprocs_ = new QComboBox(this);
    Tprocs_->setObjectName("Tprocs");
    Tprocs_->setToolTip("The saved programs");
    Tprocs_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(Tprocs_, &QComboBox::activated, this, &TableProcedures::Tprocs_Click);
    txtProcName_ = AddLine("txtProcName", "Name to Identify the Table procedure");
    txtdsnName_ =
        AddLine("txtdsnName", "Name of the server's data source, or a connection text with \"=\" in it");
    txtUsername_ = AddLine("txtUsername", "Mainframe Username used to execute Table Procedure");
    txtPassword_ = AddLine("txtPassword", "Mainframe Password used to execute Table Procedure");
    txtPassword_->setEchoMode(QLineEdit::Password);

    auto* grid = new QGridLayout;
    grid->setSpacing(kGap);
    const std::pair<const char*, QWidget*> lines[] = {{"Select Program", Tprocs_},
                                                      {"New Program", txtProcName_},
                                                      {"DSN Name", txtdsnName_},
                                                      {"Username", txtUsername_},
                                                      {"Password", txtPassword_}};
    for (int row = 0; const auto& [words, control] : lines) {
        control->setAccessibleName(words);
        grid->addWidget(MakeLabel(this, QString("lbl") + control->objectName(), words), row, 0);
        grid->addWidget(control, row++, 1);
    }
    grid->setColumnStretch(1, 1);
    return grid;
}

QLayout* TableProcedures::Statement() {
    txtSqlStatement_ = new QPlainTextEdit(this);
    txtSqlStatement_->setObjectName("txtSqlStatement");
    txtSqlStatement_->setAccessibleName("SQL Statement");
    txtSqlStatement_->setToolTip("Enter select statement to execute");
    txtSqlStatement_->setTabChangesFocus(true);
    txtSqlStatement_->setMinimumHeight(60);
    auto* column = new QVBoxLayout;
    column->setSpacing(kGap);
    column->addWidget(MakeLabel(this, "lblSqlStatement", "SQL Statement"));
    column->addWidget(txtSqlStatement_, 1);
    return column;
}

QLayout* TableProcedures::Buttons() {
    auto* row = new ButtonRow(this);
    for (SkinButton* button :
         {row->Add("Save", "SAVE AS NEW", "Save as New query", [this] { Save_Click(); }),
          row->Add("Update", "UPDATE", "Update this query", [this] { Update_Click(); }),
          row->Add("Delete", "DELETE", "Delete the saved query", [this] { Delete_Click(); }),
          row->Add("Execute", "EXECUTE", "Fire the query", [this] { Execute_Click(); })}) {
        Context().commands.DisableWhileBusy(button);
    }
    return row;
}

void TableProcedures::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

void TableProcedures::Load() {
    Form::Load();
    List();
}

void TableProcedures::List() {
    Tprocs_->clear();
    ReportFailure(App(), "List", [this] {
        for (const std::string& name : ProcedureNames(*App().gConnection))
            Tprocs_->addItem(QString::fromStdString(name));
    });
    Tprocs_->setCurrentIndex(-1);
}

std::string TableProcedures::Selected() const {
    return Tprocs_->currentText().toStdString();
}

TableProcedure TableProcedures::Typed(const std::string& name) const {
    return {name, txtSqlStatement_->toPlainText().toStdString(),
            TypedSource(txtdsnName_->text().toStdString(), source_), txtUsername_->text().toStdString(),
            txtPassword_->text().toStdString()};
}

void TableProcedures::Tprocs_Click() {
    if (deleting_) return;
    ReportFailure(App(), "Tprocs_Click", [this] {
        const auto procedure = FindProcedure(*App().gConnection, Selected());
        if (!procedure) return;
        ShowSource(procedure->dsn);
        txtUsername_->setText(QString::fromStdString(procedure->username));
        txtPassword_->setText(QString::fromStdString(procedure->password));
        txtSqlStatement_->setPlainText(QString::fromStdString(procedure->sql));
        lblStatus_->clear();
    });
}

void TableProcedures::ShowSource(const std::string& source) {
    source_ = source;
    txtdsnName_->setText(QString::fromStdString(ShownSource(source_)));
}

void TableProcedures::Save_Click() {
    const std::string name = txtProcName_->text().toStdString();
    if (name.empty()) return App().host.MessageBox(std::string(kBlankProcedureName));
    ReportFailure(App(), "Save", [&] {
        const TableProcedure typed = Typed(name);
        SaveProcedure(*App().gConnection, typed);
        ShowSource(typed.dsn);
        List();
        lblStatus_->setText(QString("Saved as %1.").arg(txtProcName_->text()));
    });
}

void TableProcedures::Update_Click() {
    if (Tprocs_->currentIndex() < 0) return lblStatus_->setText(kNoneSelected);
    ReportFailure(App(), "Update", [this] {
        const TableProcedure typed = Typed(Selected());
        UpdateProcedure(*App().gConnection, typed);
        ShowSource(typed.dsn);
        lblStatus_->setText(QString("Updated %1.").arg(Tprocs_->currentText()));
    });
}

void TableProcedures::Delete_Click() {
    if (Tprocs_->currentIndex() < 0) return lblStatus_->setText(kNoneSelected);
    deleting_ = true;
    const auto done = qScopeGuard([this] { deleting_ = false; });
    ReportFailure(App(), "Delete", [this] {
        const QString name = Tprocs_->currentText();
        DeleteProcedure(*App().gConnection, Selected());
        List();
        lblStatus_->setText(QString("Deleted %1.").arg(name));
    });
}

void TableProcedures::Execute_Click() {
    bool ran = false;
    Context().commands.Run({"Execute", Screen::TableProcedures}, [&] {
        ran = true;
        RunStatement(Typed({}));
    });
    if (ran) FlxGrid_->EndRows();  // Sorting may be long work of its own.
}

void TableProcedures::RunStatement(const TableProcedure& procedure) {
    Host& host = App().host;
    host.SetAfterCancel("The rows that had come by then are shown.");
    lblStatus_->setText("Waiting for the server...");
    RowFeed feed;
    QTimer timer;
    constexpr int kMilliseconds = 40;
    connect(&timer, &QTimer::timeout, this, [&] { ShowRows(feed); });
    timer.start(kMilliseconds);
    QueryEnd end;
    std::string refusal;
    try {
        host.RunInBackground([&](const std::stop_token& stop) {
            end = norvelis::Execute(Context().sql.connector, stop, procedure, feed.Receiver());
        });
    } catch (const SqlFailure& failure) {
        refusal = failure.what();
    }
    timer.stop();
    const std::stop_token canceled = host.Cancellation();
    while (!canceled.stop_requested() && ShowRows(feed)) host.Yield();
    if (canceled.stop_requested()) {
        const QString words = QString("Canceled after %1 rows.").arg(Grouped(RowCount()));
        lblStatus_->setText(words);
        host.Status(words.toStdString());  // In place of words that wait to be shown.
        host.Yield();
    }
    if (refusal.empty()) return ReportRows(end);
    lblStatus_->setText(OneLine(refusal));
    host.MessageBox(std::string(kExecuteError));
}

/// Shows what has come, for no longer than a screen may stand still; false when there is nothing more.
bool TableProcedures::ShowRows(RowFeed& feed) {
    constexpr int kMilliseconds = 10;
    QElapsedTimer since;
    since.start();
    if (const auto headings = feed.TakeHeadings()) FlxGrid_->BeginRows(*headings);
    const std::size_t before = RowCount();
    bool more = true;
    while (more && !since.hasExpired(kMilliseconds)) {
        std::vector<std::string> cells = feed.TakeCells();
        more = !cells.empty();
        if (more) FlxGrid_->AddRows(std::move(cells));
    }
    if (RowCount() > before) lblStatus_->setText(QString("%1 rows, others come...").arg(Grouped(RowCount())));
    return more;
}

std::size_t TableProcedures::RowCount() const {
    return static_cast<std::size_t>(FlxGrid_->model()->rowCount());
}

void TableProcedures::ReportRows(const QueryEnd& end) {
    QString words = end.rows == 1 ? QString("1 row.") : QString("%1 rows.").arg(Grouped(end.rows));
    if (end.limited) words = QString("Stopped at %1 rows; there are more.").arg(Grouped(end.rows));
    if (end.moreResults) words += " The statement gave more than one result; this is the first.";
    lblStatus_->setText(words);
}

void TableProcedures::ShowStatus(const QString& text) {
    if (!text.isEmpty()) lblStatus_->setText(text);
}

}  // namespace norvelis::ui
