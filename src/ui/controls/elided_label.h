#pragma once

#include <QLabel>

namespace norvelis::ui {

/// A line of text that may be longer than its place, such as a path or a status. It keeps the whole text;
/// only the painting shortens it, in the middle. The tool tip is the one that was set, then the whole text
/// unless that is its end.
class ElidedLabel : public QLabel {
  public:
    ElidedLabel(const QString& name, const QString& text, QWidget* parent);

    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent*) override;
};

}  // namespace norvelis::ui
