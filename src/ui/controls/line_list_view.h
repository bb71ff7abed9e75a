#pragma once

#include <QAbstractItemView>
#include <QPersistentModelIndex>

namespace norvelis::ui {

/// A list of lines that all have one height, of which one is selected. Nothing is kept or laid out for a
/// line, so a million of them come up at once; the platform's own list walks through all at every change.
class LineListView : public QAbstractItemView {
  public:
    explicit LineListView(QWidget* parent);

    /// What an empty list says in place of its lines.
    void SetEmptyText(const QString& text);

    QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint) override;
    QModelIndex indexAt(const QPoint& place) const override;
    void doItemsLayout() override;

    int LineHeight() const { return lineHeight_; }

  protected:
    /// How far the lines reach to the right; asked at every change of the lines.
    virtual int WidestLine() const = 0;

    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex&) const override { return false; }
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void updateGeometries() override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    int Count() const { return model() ? model()->rowCount() : 0; }

    QString emptyText_;
    int lineHeight_ = 1, lineWidth_ = 0;
    QPersistentModelIndex underMouse_;
};

}  // namespace norvelis::ui
