#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "sqlconv/data_sources.h"
#include "sqlconv/kept_tables.h"
#include "sqlconv/server_tables.h"
#include "ui/forms/form.h"
#include "ui/forms/progress_view.h"

class QAbstractButton;
class QBoxLayout;
class QLineEdit;

namespace norvelis::ui {

class EBDSNCombo;
class FlxGrid;
class NameGrid;
class RecordLists;
class SkinButton;
class vbalProgressBar;

/// The conversion screen: the dictionary's schemas and records on the left; on the right a data source, its
/// tables and their fields, and the conversion of the chosen schema to empty tables of a new database. What
/// waits for the server is a long command.
class frmConvertSQL : public Form, public ProgressView {
    Q_OBJECT

  public:
    explicit frmConvertSQL(const ScreenContext& context);

    void Load() override;
    ProgressView* Progress() override { return this; }
    void ShowStatus(const QString& text) override;
    void ShowProgress(Bar bar, const ProgressBar& state) override;

  protected:
    void LoadINISettings() override;
    void SaveINISettings() override;

  private:
    QWidget* ServerSide();
    QLayout* SourceRows();
    QLayout* DatabaseRows();
    QAbstractButton* AddKind(QBoxLayout& row, const char* name, const QString& words);

    /// The choices of a server kind: a click on one turns it on, or off when it was on.
    void KindClicked(ServerKind kind, bool on);
    void allSources_Click(bool on);
    void ChooseKind(const QAbstractButton* chosen);
    void ShowHidden(const QString& before);

    void cmdConnectDBmysql_Click();
    void cmdDisconnect_Click();
    void cmdStatements_Click();
    void cmdCopyDB_Click();
    void FlxGrid7_Click();

    /// The other conversion: tables with types, keys and relations, shown before they are created.
    std::optional<tables::KeptTables> ReadKeptTables();
    void ShowKeptTables(bool create);
    void CreateTables(const std::string& schema, const std::string& database);

    void Run(const std::string& name, const std::function<void()>& command);
    void Connect();
    void Disconnect();
    void ShowTableFields(const ServerTable& table);
    void ClearServerGrids();
    void MakeEnabled(bool connected);
    void EnableButtons();
    void SetStatus(const std::string& text);

    SqlState& sql_;
    RecordLists* lists_;
    EBDSNCombo* cboDSN_;
    QAbstractButton *Sql_, *sqlExpress_, *allSources_, *chkKeepTables_;
    SkinButton *cmdConnectDBmysql_, *cmdDisconnect_;
    NameGrid* FlxGrid7_;
    FlxGrid* FlxGrid6_;
    QLabel *lblTable_, *lblIDMSDB_, *lblTwoDatabases_, *loglbl_;
    QLineEdit* txtDBNameIDMS_;
    vbalProgressBar* progress_;

    std::vector<ServerTable> tables_;    ///< In the rows of FlxGrid7.
    std::optional<std::size_t> wanted_;  ///< The table whose fields are to be shown next.
    bool showingFields_ = false;
    bool connected_ = false;  ///< To the person; a connection itself lasts for a command.
};

}  // namespace norvelis::ui
