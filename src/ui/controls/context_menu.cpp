#include "ui/controls/context_menu.h"

#include <QAbstractButton>
#include <QAction>
#include <QEvent>

namespace norvelis::ui {

namespace {

/// An action that is enabled as its button is.
class ButtonAction : public QAction {
  public:
    ButtonAction(const QString& caption, QAbstractButton* button, QObject* parent)
        : QAction(caption, parent), button_(button) {
        connect(this, &QAction::triggered, button, &QAbstractButton::click);
        button->installEventFilter(this);
        Follow();
    }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::EnabledChange) Follow();
        return false;
    }

  private:
    void Follow() { setEnabled(button_->isEnabled()); }

    QAbstractButton* button_;
};

}  // namespace

ContextMenu::ContextMenu(QWidget* control) : control_(control) {
    control->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QAction* ContextMenu::Add(const QString& caption, const std::function<void()>& command) {
    return Add(caption, {}, command);
}

QAction* ContextMenu::Add(const QString& caption, const QKeySequence& keys,
                          const std::function<void()>& command) {
    auto* action = new QAction(caption, control_);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setShortcutVisibleInContextMenu(true);
    QObject::connect(action, &QAction::triggered, control_, command);
    control_->addAction(action);
    return action;
}

void ContextMenu::Add(const QString& caption, QAbstractButton* button) {
    control_->addAction(new ButtonAction(caption, button, control_));
}

void ContextMenu::Add(QAction* shared) {
    if (shared) control_->addAction(shared);
}

void ContextMenu::AddLine() {
    auto* line = new QAction(control_);
    line->setSeparator(true);
    control_->addAction(line);
}

}  // namespace norvelis::ui
