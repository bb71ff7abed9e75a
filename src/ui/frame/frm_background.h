#pragma once

#include <QWidget>

#include "core/host.h"

namespace norvelis::ui {

class vbalProgressBar;

/// The progress form: has no visible duty, holds the bars that long work counts in.
class frmbackground : public QWidget {
  public:
    frmbackground();
    void ShowProgress(Bar bar, const ProgressBar& state);

  private:
    vbalProgressBar *vbalProgressBar_, *vbalProgressBar1_, *vbalProgressBar3_;
};

}  // namespace norvelis::ui
