#include "ui/frame/frm_background.h"

#include <QVBoxLayout>

#include "ui/controls/vbal_progress_bar.h"

namespace norvelis::ui {

frmbackground::frmbackground() {
    setObjectName("frmbackground");
    auto* column = new QVBoxLayout(this);
    for (const auto& [bar, name] :
         {std::pair(&vbalProgressBar_, "vbalProgressBar"), std::pair(&vbalProgressBar1_, "vbalProgressBar1"),
          std::pair(&vbalProgressBar3_, "vbalProgressBar3")}) {
        *bar = new vbalProgressBar(name, this);
        column->addWidget(*bar);
    }
}

void frmbackground::ShowProgress(Bar bar, const ProgressBar& state) {
    (bar == Bar::BackgroundText ? vbalProgressBar_ : vbalProgressBar3_)->Show(state);
}

}  // namespace norvelis::ui
