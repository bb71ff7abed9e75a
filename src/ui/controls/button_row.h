#pragma once

#include <QHBoxLayout>
#include <functional>

namespace norvelis::ui {

class SkinButton;

/// A screen's commands side by side: buttons in reading order, among them what else belongs there.
class ButtonRow : public QHBoxLayout {
  public:
    static constexpr int kGap = 6;

    explicit ButtonRow(QWidget* form);

    SkinButton* Add(const QString& name, const QString& caption, const QString& toolTip,
                    const std::function<void()>& command);

  private:
    QWidget* form_;
};

}  // namespace norvelis::ui
