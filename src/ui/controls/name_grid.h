#pragma once

#include "ui/controls/flx_grid.h"
#include "ui/controls/typed_prefix.h"

namespace norvelis::ui {

/// A grid of names in one column, for choosing one: letters jump to the first name that begins so, arrows
/// move the mark, a click or Return chooses. An empty name cannot be chosen.
class NameGrid : public FlxGrid {
    Q_OBJECT

  public:
    /// `choose` is what choosing does, for the context menu.
    NameGrid(const QString& name, std::string_view heading, const QString& choose, Host& host,
             QWidget* parent);

    /// The mark stays on its name while that is among them, and otherwise goes to the first one.
    void SetNames(const std::vector<std::string>& names);
    /// Marks a name; the first one when it is not among them.
    void Mark(const QString& name);

    void keyboardSearch(const QString& letter) override;

  signals:
    void Chosen(const std::string& name);

  protected:
    void keyPressEvent(QKeyEvent*) override;

  private:
    void Choose(const QModelIndex& index);

    TypedPrefix typed_;
};

}  // namespace norvelis::ui
