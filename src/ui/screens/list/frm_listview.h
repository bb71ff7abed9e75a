#pragma once

#include <functional>
#include <string>

#include "browse/record_list.h"
#include "ui/forms/draw_choices.h"
#include "ui/forms/form.h"

class QAbstractItemView;

namespace norvelis::ui {

class RecordLists;
class RecordNetwork;

/// A schema walked set by set: its records in a list, and the chosen one between its owners and its members,
/// each of which can be chosen in its turn.
class frm_Listview : public Form {
    Q_OBJECT

  public:
    explicit frm_Listview(const ScreenContext& context);

    void Load() override;
    QWidget* OpensAt() const override;
    void Take(const ScreenRequest& request) override;  ///< ShowInList.

  private:
    void AddCommands(QAbstractItemView& names);
    void AddDrawing(ContextMenu& menu, const std::function<PointedRecord()>& record);
    void Choose(const std::string& name);  ///< To which one can come back.
    void ShowRecord(const std::string& name);

    RecordLists* lists_;
    RecordNetwork* network_;
    RecordTrail trail_;
    std::string shown_;  ///< The record in the box.
};

}  // namespace norvelis::ui
