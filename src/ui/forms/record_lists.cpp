#include "ui/forms/record_lists.h"

#include <algorithm>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "browse/record_list.h"
#include "core/log.h"
#include "core/places.h"
#include "ui/controls/name_grid.h"
#include "ui/controls/split.h"

namespace norvelis::ui {

namespace {

constexpr auto kLogModule = "Formlistview";

}  // namespace

RecordLists::RecordLists(const ScreenContext& context, QWidget* form)
    : QObject(form),
      app_(context.app),
      FlxGrid0_(new NameGrid("FlxGrid0", kSchemaListHeading, "&List records", app_.host, form)),
      FlxGrid3_(new NameGrid("FlxGrid3", kRecordListHeading, "Sho&w record", app_.host, form)),
      FlxGrid4_(new FlxGrid("FlxGrid4", kListDetailsHeading, app_.host, form)),
      flxgrid5_(new FlxGrid("flxgrid5", kLayoutHeading, app_.host, form)),
      lists_(Split(Qt::Vertical, FlxGrid0_, FlxGrid3_, 110, 320)),
      grids_(Split(Qt::Horizontal, FlxGrid4_, flxgrid5_, 232, 368)) {
    FlxGrid0_->setToolTip("Select Schema Dictionary to list records below");
    FlxGrid0_->setAccessibleName("Schemas");
    FlxGrid3_->setAccessibleName("Records");
    FlxGrid4_->setAccessibleName("Record Details");
    flxgrid5_->setAccessibleName("Record Layout");
    lists_->setStretchFactor(1, 1);
    grids_->setStretchFactor(1, 1);
    connect(FlxGrid0_, &NameGrid::Chosen, this, [this](const std::string& schema) {
        const clsHourglass hourglass(app_.host);
        LoadRecordsList(schema);
    });
    connect(FlxGrid3_, &NameGrid::Chosen, this, [this](const std::string& name) {
        const clsHourglass hourglass(app_.host);
        emit RecordChosen(name);
    });
    // The dictionary may be another one behind a command.
    connect(&context.commands, &LongCommands::BusyChanged, this, [this](bool busy) {
        if (!busy && app_.gConnection->IsOpen()) LoadSchemaList();
    });
}

void RecordLists::Load(const std::function<void()>& loadForm) {
    const auto log = [this](std::string_view line) {
        WriteToProcessLog(app_, kLogModule, "Form_Load", line);
    };
    log("Entered form Formlistview.....");
    log("loading skins.....");
    loadForm();
    if (!FileExists(app_.AppPath(places::kStore))) log("Database does not exist.....");
    log("Initialize load....");
    LoadSchemaList();
    log("Done.....");
}

void RecordLists::LoadSchemaList() {
    ReportFailure(app_, "LoadSchemaList", [this] {
        const std::vector<std::string> schemas = norvelis::LoadSchemaList(app_);
        FlxGrid0_->SetNames(schemas);
        if (schema_ && std::ranges::find(schemas, *schema_) != schemas.end()) {
            FlxGrid3_->SetNames(norvelis::LoadRecordsList(*app_.gConnection, *schema_));
            emit RecordChosen(record_);
        } else if (!schemas.empty()) {
            LoadRecordsList(schemas.front());
        } else {
            Choose(std::nullopt, {}, {});
        }
    });
}

void RecordLists::ShowRecordOf(const std::string& schema, const std::string& record) {
    ReportFailure(app_, "LoadRecordsList", [&] {
        FlxGrid0_->SetNames(norvelis::LoadSchemaList(app_));
        FlxGrid0_->Mark(QString::fromStdString(schema));
        Choose(schema, norvelis::LoadRecordsList(*app_.gConnection, schema), record);
    });
}

// Cells have a blank at their left.
void RecordLists::MarkField(const std::string& field) {
    constexpr int kNameColumn = 1;  // Of kLayoutHeading.
    for (int row = 0; row < flxgrid5_->model()->rowCount(); ++row) {
        const QModelIndex name = flxgrid5_->model()->index(row, kNameColumn);
        if (!SameName(name.data().toString().toStdString(), " " + field)) continue;
        flxgrid5_->selectRow(row);
        return flxgrid5_->setFocus();
    }
}

void RecordLists::LoadRecordsList(const std::string& schema) {
    ReportFailure(app_, "LoadRecordsList", [&] {
        const auto records = norvelis::LoadRecordsList(*app_.gConnection, schema);
        Choose(schema, records, records.empty() ? std::string() : records.front());
    });
}

void RecordLists::Choose(const std::optional<std::string>& schema, const std::vector<std::string>& records,
                         const std::string& record) {
    schema_ = schema;
    FlxGrid3_->SetNames(records);
    FlxGrid3_->Mark(QString::fromStdString(record));
    emit SchemaChosen(Schema());
    emit RecordChosen(record);
}

void RecordLists::ShowRecord(const std::string& name, const RecordDetails& details) {
    record_ = name;
    FlxGrid4_->SetRows(details.items);
    flxgrid5_->SetRows(details.layout);
}

void ReportFailure(AppState& app, std::string_view procedure, const std::function<void()>& work) {
    try {
        work();
    } catch (const RuntimeFailure& failure) {
        WriteToErrorLog(app, kLogModule, procedure, failure.what(), static_cast<int>(failure.Number()));
    }
}

}  // namespace norvelis::ui
