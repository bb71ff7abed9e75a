#include "ui/screens/sql/frm_convert_sql.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QScopeGuard>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>

#include "base/ini.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/log.h"
#include "core/places.h"
#include "core/settings.h"
#include "sqlconv/conversion.h"
#include "sqlconv/name_checks.h"
#include "sqlconv/record_tables.h"
#include "sqlconv/table_creation.h"
#include "store/connection.h"
#include "ui/controls/button_row.h"
#include "ui/controls/click_label.h"
#include "ui/controls/keys.h"
#include "ui/controls/name_grid.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/split.h"
#include "ui/controls/vbal_progress_bar.h"
#include "ui/controls/worded_mark.h"
#include "ui/forms/cancel_button.h"
#include "ui/forms/record_lists.h"
#include "ui/screens/sql/eb_dsn_combo.h"
#include "ui/screens/sql/frm_kept_tables.h"
#include "ui/screens/sql/frm_statements.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

namespace {

constexpr auto kSection = "frmConvertSQL", kAllSources = "AllDataSources",
               kKeepTables = "TypesKeysAndDialect";
constexpr auto kDatabaseName = "SQLdatabaseName";
constexpr auto kFirstStatus =
    "You must have a DSN connection to a SQL database. From ODBC create one on the System DSN.";
constexpr int kGap = 6, kMargin = 16;

}  // namespace

frmConvertSQL::frmConvertSQL(const ScreenContext& context)
    : Form(context, kSection, "CONVERT TO SQL ", kLargeForm),
      sql_(context.sql),
      lists_(new RecordLists(context, this)) {
    auto* left = Split(Qt::Vertical, lists_->Lists(), lists_->Grids(), 240, 190);
    auto* columns = Split(Qt::Horizontal, left, ServerSide(), 470, 540);
    connect(lists_, &RecordLists::SchemaChosen, this,
            [this](const std::string& schema) { lblIDMSDB_->setText(QString::fromStdString(schema)); });
    connect(lists_, &RecordLists::RecordChosen, this, [this](const std::string& name) {
        ReportFailure(App(), "Show record",
                      [&] { lists_->ShowRecord(name, ReadListedRecord(*App().gConnection, name).details); });
    });
    connect(&Context().commands, &LongCommands::BusyChanged, this, &frmConvertSQL::EnableButtons);
    OnKeys(this, QKeySequence::Refresh, [this] {
        if (cboDSN_->isEnabled()) cboDSN_->Refresh();
    });

    loglbl_ = MakeLabel(this, "loglbl", {});
    loglbl_->setWordWrap(true);
    loglbl_->setTextFormat(Qt::PlainText);
    loglbl_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    loglbl_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    constexpr int kStatusLines = 3;
    loglbl_->setFixedHeight(kStatusLines * fontMetrics().lineSpacing());
    loglbl_->setAccessibleName("Status");
    progress_ = new vbalProgressBar("vbalProgressBar1", this);
    progress_->setFixedWidth(220);
    auto* status = new QHBoxLayout;
    status->addWidget(loglbl_, 1);
    status->addWidget(progress_);
    AddCancelButton(Context(), *status, this);

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, Body().top() + 12, kMargin, 10);
    rows->setSpacing(kGap);
    rows->addWidget(columns, 1);
    rows->addLayout(status);
    MakeEnabled(false);
}

QWidget* frmConvertSQL::ServerSide() {
    auto* side = new QWidget(this);
    side->setObjectName("Frame1");
    QLabel* frame = MakeLabel(side, "lblFrame", "SQL Database Conversion");
    QFont bold = frame->font();
    bold.setWeight(QFont::DemiBold);
    frame->setFont(bold);
    FlxGrid7_ = new NameGrid("FlxGrid7", "RECORD", "Show &fields", App().host, side);
    FlxGrid7_->setAccessibleName("Tables of the server");
    connect(FlxGrid7_, &NameGrid::Chosen, this, &frmConvertSQL::FlxGrid7_Click);
    FlxGrid6_ = new FlxGrid("FlxGrid6", "FIELD|TYPE", App().host, side);
    FlxGrid6_->setAccessibleName("Fields of the table");
    lblTable_ = MakeLabel(side, "lblTable", {});

    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap);
    column->addWidget(frame);
    column->addLayout(SourceRows());
    column->addWidget(Split(Qt::Horizontal, FlxGrid7_, FlxGrid6_, 240, 290), 1);
    column->addWidget(lblTable_);
    column->addLayout(DatabaseRows());
    return side;
}

QLayout* frmConvertSQL::SourceRows() {
    cboDSN_ = new EBDSNCombo("cboDSN", App(), this);
    cboDSN_->setToolTip("The data source of the server (F5 reads the list again)");
    auto* source = new QHBoxLayout;
    source->addWidget(MakeLabel(this, "lblDSN", "DSN Name :"));
    source->addWidget(cboDSN_, 1);

    auto* kinds = new QHBoxLayout;
    Sql_ = AddKind(*kinds, "Sql", "SQL Server");
    connect(Sql_, &QAbstractButton::clicked, this, [this](bool on) { KindClicked(ServerKind::Sql, on); });
    sqlExpress_ = AddKind(*kinds, "sqlExpress", "SQL Express");
    connect(sqlExpress_, &QAbstractButton::clicked, this,
            [this](bool on) { KindClicked(ServerKind::SqlExpress, on); });
    allSources_ = AddKind(*kinds, "allSources", "All data sources");
    connect(allSources_, &QAbstractButton::clicked, this, &frmConvertSQL::allSources_Click);
    kinds->addStretch();

    auto* buttons = new ButtonRow(this);
    cmdConnectDBmysql_ = buttons->Add("cmdConnectDBmysql", "CONNECT", "Show the tables of the data source",
                                      [this] { cmdConnectDBmysql_Click(); });
    cmdDisconnect_ = buttons->Add("cmdDisconnect", "DISCONNECT", "Leave the data source",
                                  [this] { cmdDisconnect_Click(); });

    auto* rows = new QVBoxLayout;
    rows->setSpacing(kGap);
    rows->addLayout(source);
    rows->addLayout(kinds);
    rows->addLayout(buttons);
    return rows;
}

QAbstractButton* frmConvertSQL::AddKind(QBoxLayout& row, const char* name, const QString& words) {
    auto* kind = new SkinRadio(name, "Radio", words, this);
    kind->setAutoExclusive(false);  // A click on the chosen one chooses another.
    row.addWidget(kind);
    row.addWidget(new ClickLabel(QString("lbl%1").arg(name), words, this, [kind] { kind->click(); }));
    row.addSpacing(kGap);
    return kind;
}

QLayout* frmConvertSQL::DatabaseRows() {
    lblIDMSDB_ = MakeLabel(this, "lblIDMSDB", {});
    txtDBNameIDMS_ = new QLineEdit(this);
    txtDBNameIDMS_->setObjectName("txtDBNameIDMS");
    txtDBNameIDMS_->setAccessibleName("Name of the new database");
    txtDBNameIDMS_->setToolTip("Name of the database to be created");
    lblTwoDatabases_ = MakeLabel(this, "lblTwoDatabases", {});
    lblTwoDatabases_->setWordWrap(true);
    lblTwoDatabases_->hide();
    connect(txtDBNameIDMS_, &QLineEdit::textChanged, this, [this](const QString& name) {
        const std::string warning = TwoDatabasesWarning(Trim(name.toStdString()));
        lblTwoDatabases_->setText(QString::fromStdString(warning));
        lblTwoDatabases_->setVisible(!warning.empty());
    });
    auto* names = new QHBoxLayout;
    names->setSpacing(kGap);
    names->addWidget(MakeLabel(this, "lblSchema", "Schema :"));
    names->addWidget(lblIDMSDB_, 1);
    names->addWidget(MakeLabel(this, "lblDatabase", "New database :"));
    names->addWidget(txtDBNameIDMS_, 2);

    auto* keep = new WordedCheck("chkKeepTables", "&Types, keys and dialect of the server", this);
    chkKeepTables_ = keep->Button();
    chkKeepTables_->setToolTip("Tables that keep what the dictionary knows, shown before they are created");

    auto* buttons = new ButtonRow(this);
    auto* statements =
        buttons->Add("cmdStatements", "STATEMENTS", "Read the statements before anything is created",
                     [this] { cmdStatements_Click(); });
    auto* convert = buttons->Add("cmdCopyDB", "CONVERT TO SQL",
                                 "Create the database, and an empty table for each record of the schema",
                                 [this] { cmdCopyDB_Click(); });
    for (SkinButton* button : {statements, convert}) Context().commands.DisableWhileBusy(button);

    auto* rows = new QVBoxLayout;
    rows->setSpacing(kGap);
    rows->addLayout(names);
    rows->addWidget(lblTwoDatabases_);
    rows->addLayout(keep);
    rows->addLayout(buttons);
    return rows;
}

void frmConvertSQL::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

void frmConvertSQL::SaveINISettings() {
    cboDSN_->WriteProperties(kSection);
    WriteINIValue(kSection, kAllSources, allSources_->isChecked() ? "True" : "False", App().gLocalIni);
    WriteINIValue(kSection, kKeepTables, chkKeepTables_->isChecked() ? "True" : "False", App().gLocalIni);
}

void frmConvertSQL::Load() {
    lists_->Load([this] { Form::Load(); });
    if (!FileExists(App().AppPath(places::kStore))) return;
    ReportFailure(App(), "Form_Load", [this] {
        const auto database = ReadSetting(App(), kDatabaseName);
        if (database) txtDBNameIDMS_->setText(QString::fromStdString(database->value));
    });
    const bool all = EqualIgnoringCase(ReadINIValue(kSection, kAllSources, App().gLocalIni), "True");
    chkKeepTables_->setChecked(
        EqualIgnoringCase(ReadINIValue(kSection, kKeepTables, App().gLocalIni), "True"));
    cboDSN_->ReadProperties(kSection);
    ChooseKind(all ? allSources_ : Sql_);
    cboDSN_->SetDriverFilter(all ? std::string_view() : DriverFilterFor(ServerKind::Sql, true));
    SetStatus(kFirstStatus);
    ShowHidden(kFirstStatus);
}

void frmConvertSQL::ChooseKind(const QAbstractButton* chosen) {
    for (QAbstractButton* kind : {Sql_, sqlExpress_, allSources_}) kind->setChecked(kind == chosen);
}

void frmConvertSQL::KindClicked(ServerKind kind, bool on) {
    ChooseKind((kind == ServerKind::Sql) == on ? Sql_ : sqlExpress_);
    cboDSN_->SetDriverFilter(DriverFilterFor(kind, on));
    ShowHidden({});
}

void frmConvertSQL::allSources_Click(bool on) {
    if (!on) return KindClicked(ServerKind::Sql, true);
    ChooseKind(allSources_);
    cboDSN_->SetDriverFilter({});
    SetStatus(kFirstStatus);
}

/// A list that the filter left empty says so, behind what the status line says already.
void frmConvertSQL::ShowHidden(const QString& before) {
    if (cboDSN_->Count() > 0 || cboDSN_->Hidden() == 0) return;
    const QString words =
        cboDSN_->Hidden() == 1
            ? QString("One data source has another driver than \"%1\"; \"All data sources\" shows it.")
                  .arg(QString::fromStdString(cboDSN_->DriverFilter()))
            : QString("%2 data sources have other drivers than \"%1\"; \"All data sources\" shows them.")
                  .arg(QString::fromStdString(cboDSN_->DriverFilter()))
                  .arg(cboDSN_->Hidden());
    SetStatus((before.isEmpty() ? words : before + "\n" + words).toStdString());
}

void frmConvertSQL::cmdConnectDBmysql_Click() {
    Run("Connect", [this] { Connect(); });
}

void frmConvertSQL::cmdDisconnect_Click() {
    Run("Disconnect", [this] { Disconnect(); });
}

void frmConvertSQL::FlxGrid7_Click() {
    wanted_ = static_cast<std::size_t>(FlxGrid7_->currentIndex().row());
    if (showingFields_) return;  // Whoever shows them goes on with the newest.
    Run("Show fields", [this] {
        showingFields_ = true;
        const auto done = qScopeGuard([this] { showingFields_ = false; });
        while (wanted_) ShowTableFields(tables_.at(*std::exchange(wanted_, std::nullopt)));
    });
    wanted_.reset();
}

void frmConvertSQL::cmdStatements_Click() {
    const std::string schema = lists_->Schema(), database(Trim(txtDBNameIDMS_->text().toStdString()));
    if (schema.empty()) return SetStatus("You must select a schema of the dictionary first.");
    if (chkKeepTables_->isChecked()) return ShowKeptTables(false);
    if (database.empty()) return SetStatus("You must type the name of the new database first.");
    std::vector<std::array<std::string, 2>> statements;
    std::string ending;
    bool read = false;
    Run("Reading the statements", [&] {
        try {
            ReadStatements(*App().gConnection, schema, database,
                           [&](const std::string& record, const std::string& statement) {
                               App().host.Yield();
                               statements.push_back({record, statement});
                           });
        } catch (const std::runtime_error& failure) {
            ending = failure.what();
        }
        read = true;
    });
    if (!read) return;
    frmStatements window(Context());
    window.Load();
    window.Show(statements, ending);
    window.ShowAndWait();
}

void frmConvertSQL::cmdCopyDB_Click() {
    if (chkKeepTables_->isChecked()) return ShowKeptTables(true);
    Run("Convert to SQL", [this] {
        Conversion conversion{sql_,
                              cboDSN_->DSN(),
                              {[this](const std::string& text) { SetStatus(text); }, [this] { Disconnect(); },
                               [this] { Connect(); }},
                              {},
                              {},
                              {}};
        if (!ConvertSchema(conversion, lists_->Schema(), txtDBNameIDMS_->text().toStdString())) return;
        txtDBNameIDMS_->setText(QString::fromStdString(conversion.createdDatabase));
        ReportFailure(App(), "cmdCopyDB_Click",
                      [&] { WriteSetting(App(), kDatabaseName, conversion.createdDatabase); });
    });
}

std::optional<tables::KeptTables> frmConvertSQL::ReadKeptTables() {
    std::optional<tables::KeptTables> kept;
    const std::string schema = lists_->Schema(), source = cboDSN_->DSN();
    if (schema.empty()) {
        SetStatus("You must select a schema of the dictionary first.");
    } else if (source.empty()) {
        SetStatus("You must select a DSN from the List Box above....");
    } else {
        Run("Reading the tables", [&] {
            try {
                kept.emplace(KeptTablesFor(sql_, source, schema, {}));
            } catch (const SqlFailure& failure) {
                SetStatus(failure.what());
            }
        });
    }
    return kept;
}

void frmConvertSQL::ShowKeptTables(bool create) {
    const auto kept = ReadKeptTables();
    if (!kept) return;
    std::string database(Trim(txtDBNameIDMS_->text().toStdString()));
    if (!kept->dialect.HasDatabases()) database.clear();
    frmKeptTables window(Context(), *kept);
    window.Load();
    if (create)
        window.OfferCreation(database.empty() ? "The tables go where the data source " + cboDSN_->DSN() +
                                                    " leads; no database is created."
                                              : "The database " + database + " is created for the tables.");
    window.ShowAndWait();
    if (window.Wanted()) CreateTables(kept->model.schema, database);
}

void frmConvertSQL::CreateTables(const std::string& schema, const std::string& database) {
    Run("Convert to SQL", [&] {
        TableCreation creation(sql_, cboDSN_->DSN());
        creation.database = database;
        creation.screen.status = [this](const std::string& text) { SetStatus(text); };
        if (!CreateKeptTables(creation, schema)) return;
        if (database.empty()) {
            Connect();
        } else {
            ReportFailure(App(), "cmdCopyDB_Click", [&] { WriteSetting(App(), kDatabaseName, database); });
        }
        SetStatus("IDMS conversion to SQL was successful. Created " +
                  std::to_string(creation.created.size()) + " tables.");
    });
}

/// A command that waits for the server or reads much, which the person may cancel.
void frmConvertSQL::Run(const std::string& name, const std::function<void()>& command) {
    Context().commands.Run({name, Screen::ConvertSql}, [&] {
        sql_.cancellation = App().host.Cancellation();
        const auto ended = qScopeGuard([this] { sql_.cancellation = {}; });
        ReportFailure(App(), name, command);
        if (sql_.cancellation.stop_requested()) {
            SetStatus(name + " was canceled.");
            App().host.Status(name + " was canceled.");  // In place of words that wait to be shown.
        }
        App().host.Yield();
    });
}

void frmConvertSQL::Connect() {
    ClearServerGrids();
    const std::string source = cboDSN_->DSN();
    sql_.gSqlDsn = source;
    if (source.empty()) return SetStatus("You must select a DSN from the List Box above....");
    SetStatus("Connecting to " + source + "...");
    try {
        const SqlSession session(sql_, source);
        tables_ = TablesOf(sql_, source);
        constexpr auto kConnected = "Connecting to the SQL database succesfully...";
        SetStatus(kConnected);
        WriteToProcessLog(App(), "Conversion", "Connection", kConnected);
        MakeEnabled(true);
        std::vector<std::string> names;
        for (const auto& table : tables_) names.push_back(table.shown);
        FlxGrid7_->SetNames(names);
        FlxGrid7_->setCurrentIndex(FlxGrid7_->model()->index(0, 0));
        if (!tables_.empty()) ShowTableFields(tables_.front());
    } catch (const SqlFailure& failure) {
        SetStatus(failure.what());
    }
}

void frmConvertSQL::Disconnect() {
    DisconnectSql(sql_);
    SetStatus("Disconnecting to the SQL database succesfully...");
    WriteToProcessLog(App(), "Conversion", "DisConnection",
                      "disConnecting to the SQL database succesfully...");
    ClearServerGrids();
    MakeEnabled(false);
}

void frmConvertSQL::ShowTableFields(const ServerTable& table) {
    FlxGrid6_->SetRows(std::vector<std::array<std::string, 2>>());
    const std::string spelled = table.schema.empty() ? table.name : table.schema + "." + table.name;
    lblTable_->setText("Table on the server : " + QString::fromStdString(spelled));
    const clsHourglass hourglass(App().host);
    try {
        std::vector<std::array<std::string, 2>> rows;
        for (const auto& field : FieldsOf(sql_, table)) rows.push_back({field.name, field.type});
        FlxGrid6_->SetRows(rows);
    } catch (const SqlFailure& failure) {
        if (!sql_.cancellation.stop_requested()) App().host.MessageBox(FieldsFailureText(failure));
    }
}

void frmConvertSQL::ClearServerGrids() {
    tables_.clear();
    wanted_.reset();
    FlxGrid7_->SetNames({});
    FlxGrid6_->SetRows(std::vector<std::array<std::string, 2>>());
    lblTable_->clear();
}

void frmConvertSQL::MakeEnabled(bool connected) {
    connected_ = connected;
    EnableButtons();
}

void frmConvertSQL::EnableButtons() {
    const bool busy = Context().commands.Busy();
    cmdConnectDBmysql_->setEnabled(!connected_ && !busy);
    cmdDisconnect_->setEnabled(connected_ && !busy);
    cboDSN_->setEnabled(!busy);  // A command connects to it more than once.
    for (QAbstractButton* kind : {Sql_, sqlExpress_, allSources_}) kind->setEnabled(!busy);
}

void frmConvertSQL::SetStatus(const std::string& text) {
    loglbl_->setText(QString::fromStdString(text).remove('\r'));
    loglbl_->setToolTip(loglbl_->text().toHtmlEscaped());
}

// A command's end leaves its last words on the line.
void frmConvertSQL::ShowStatus(const QString& text) {
    if (!text.isEmpty()) SetStatus(text.toStdString());
}

void frmConvertSQL::ShowProgress(Bar bar, const ProgressBar& state) {
    if (bar == Bar::TreeviewValue) progress_->Show(state);
}

}  // namespace norvelis::ui
