#pragma once

#include <QMenu>

#include "diagram/drawing_state.h"

class QActionGroup;

namespace norvelis::ui {

/// What the next drawings of the screens look like: their pages, the colors of boxes and of lines. What is
/// picked is kept in the INI file.
class LookMenu : public QMenu {
    Q_OBJECT

  public:
    LookMenu(const std::string& ini, QWidget* parent);

  private:
    void BeginGroup();  ///< Of which one entry is checked.
    /// One of several: what is checked when the options have it, and what picking it does to them.
    void Add(const char* name, const QString& caption, const std::function<bool(const DrawOptions&)>& has,
             const std::function<void(DrawOptions&)>& pick);
    void ShowKept();

    const std::string& ini_;
    QActionGroup* group_ = nullptr;  ///< The one that entries are added to.
    std::vector<std::pair<QAction*, std::function<bool(const DrawOptions&)>>> entries_;
};

}  // namespace norvelis::ui
