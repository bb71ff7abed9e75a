#pragma once

#include "core/host.h"

class QString;

namespace norvelis::ui {

/// Where a screen shows the status line and the bars of the commands that name it.
class ProgressView {
  public:
    virtual ~ProgressView() = default;
    virtual void ShowStatus(const QString& text) = 0;
    virtual void ShowProgress(Bar bar, const ProgressBar& state) = 0;
};

}  // namespace norvelis::ui
