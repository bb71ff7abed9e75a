#pragma once

#include <QKeySequence>
#include <QString>
#include <functional>

class QAbstractButton;
class QAction;
class QWidget;

namespace norvelis::ui {

/// Fills a control's context menu. Keys that are handled elsewhere may be shown behind a tab in the caption
/// ("Refresh\tF5"). The commands live as long as the control.
class ContextMenu {
  public:
    explicit ContextMenu(QWidget* control);

    QAction* Add(const QString& caption, const std::function<void()>& command);
    /// With keys that work while the control has the focus.
    QAction* Add(const QString& caption, const QKeySequence& keys, const std::function<void()>& command);
    /// What a button does; to be chosen when the button can be pressed.
    void Add(const QString& caption, QAbstractButton* button);
    /// A command of another menu; nothing for null.
    void Add(QAction* shared);
    void AddLine();

  private:
    QWidget* control_;
};

}  // namespace norvelis::ui
