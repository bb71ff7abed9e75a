#pragma once

#include <QProgressBar>
#include <algorithm>

#include "core/host.h"

namespace norvelis::ui {

/// A bar that shows the state of a progress bar of core/progress.h: a line of text over the value.
class vbalProgressBar : public QProgressBar {
  public:
    vbalProgressBar(const QString& name, QWidget* parent);

    void Show(const ProgressBar& state);

    QString text() const override { return text_; }
    QSize sizeHint() const override { return {200, std::max(20, fontMetrics().height() + 4)}; }

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    QString text_;
};

}  // namespace norvelis::ui
