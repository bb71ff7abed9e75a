#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace norvelis::ui {

class LongCommands;

/// A button that is disabled while its command runs loses the keyboard; it gets it back at the end, unless
/// the person went on somewhere else. Must be made before what is disabled.
class FocusReturn : public QObject {
  public:
    explicit FocusReturn(LongCommands& commands);

  private:
    void FocusMoved(QWidget* from, QWidget* to);
    void Return();

    bool busy_ = false;
    QPointer<QWidget> button_, instead_;  ///< Which lost the keyboard, and where it went.
};

}  // namespace norvelis::ui
