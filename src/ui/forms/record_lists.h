#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "browse/record_details.h"
#include "ui/forms/screen_context.h"

class QSplitter;

namespace norvelis::ui {

class FlxGrid;
class NameGrid;

/// The left side of the list and the conversion screen: the schemas of the dictionary (FlxGrid0), the records
/// of the chosen one (FlxGrid3), and details and fields of the chosen record (FlxGrid4, flxgrid5). The screen
/// puts the two parts where it has space for them, and answers RecordChosen by ShowRecord.
class RecordLists : public QObject {
    Q_OBJECT

  public:
    RecordLists(const ScreenContext& context, QWidget* form);

    QSplitter* Lists() const { return lists_; }  ///< The schemas above the records.
    QSplitter* Grids() const { return grids_; }  ///< The details beside the fields.

    /// The load of a screen: its skin (`loadForm`, which is Form::Load), then the lists, with the lines of
    /// the process log, which are the same for both screens.
    void Load(const std::function<void()>& loadForm);

    /// Reads the schemas again and chooses the first. While the schema chosen before is there, it and the
    /// record on show stay, read again. A missing store is reported in a box.
    void LoadSchemaList();
    /// Chooses a schema, and of its records the first.
    void LoadRecordsList(const std::string& schema);

    /// Chooses a schema, which is there, and a record of it.
    void ShowRecordOf(const std::string& schema, const std::string& record);
    /// Marks the row of a field of the record on show and gives it the keyboard.
    void MarkField(const std::string& field);

    /// Fills the grids for this record, which may have been chosen elsewhere.
    void ShowRecord(const std::string& name, const RecordDetails& details);

    std::string Schema() const { return schema_.value_or(""); }  ///< The chosen one.
    NameGrid& Records() const { return *FlxGrid3_; }

  signals:
    void SchemaChosen(const std::string& schema);
    void RecordChosen(const std::string& name);  ///< Empty: there is none to be shown.

  private:
    void Choose(const std::optional<std::string>& schema, const std::vector<std::string>& records,
                const std::string& record);

    AppState& app_;
    NameGrid *FlxGrid0_, *FlxGrid3_;
    FlxGrid *FlxGrid4_, *flxgrid5_;
    QSplitter *lists_, *grids_;
    std::optional<std::string> schema_;
    std::string record_;
};

/// Does what a click asks for. A store that refuses is reported through the error log, and the screen keeps
/// what it had shown until then.
void ReportFailure(AppState& app, std::string_view procedure, const std::function<void()>& work);

}  // namespace norvelis::ui
