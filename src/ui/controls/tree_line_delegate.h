#pragma once

#include <QStyledItemDelegate>

#include "ui/controls/record_tree_model.h"

namespace norvelis::ui {

/// Paints a line of a record tree: guides of the branches it hangs from, its opening sign, its text.
class TreeLineDelegate : public QStyledItemDelegate {
  public:
    TreeLineDelegate(const RecordTreeModel& lines, QObject* parent)
        : QStyledItemDelegate(parent), lines_(lines) {}

    static constexpr int kIndentation = 400 / 15;  ///< Points a level.
    static constexpr int kTextMargin = 4;
    static int TextLeft(int level) { return level * kIndentation + kTextMargin; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  private:
    static void PaintIncomplete(QPainter& painter, const QRect& place);
    void PaintGuides(QPainter& painter, const QStyleOptionViewItem& line, NodeIndex node, int level) const;

    const RecordTreeModel& lines_;
};

}  // namespace norvelis::ui
