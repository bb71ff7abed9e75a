#pragma once

#include <QListWidget>

#include "browse/record_list.h"
#include "ui/controls/typed_prefix.h"

namespace norvelis::ui {

/// The owners or the members of a record. The tool tip of one has the names of the sets between the two; one
/// of another schema has that schema's name behind its own. Letters jump to the first that begins so, arrows
/// move the mark, a click or Return chooses. The mark is seen while the list has the keyboard.
class NeighborList : public QListWidget {
    Q_OBJECT

  public:
    NeighborList(const QString& name, const QString& spoken, QWidget* parent);

    void Show(const std::vector<Neighbor>& neighbors);

    /// The schema of a line of such a list when it is not that of the record on show; empty otherwise.
    static std::string OtherSchema(const QModelIndex& line);

    void keyboardSearch(const QString& letter) override;

  signals:
    void Chosen(const std::string& name);

  protected:
    void keyPressEvent(QKeyEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void focusInEvent(QFocusEvent*) override;
    void focusOutEvent(QFocusEvent*) override;

  private:
    void Choose(const QModelIndex& index);

    TypedPrefix typed_;
};

}  // namespace norvelis::ui
