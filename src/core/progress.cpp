#include "core/progress.h"

#include <algorithm>
#include <cmath>

namespace norvelis {

void Progress::SetText(Bar bar, std::string_view text) {
    At(bar).Text = text;
    Report(bar);
}

void Progress::SetVisible(Bar bar, bool visible) {
    At(bar).Visible = visible;
    Report(bar);
}

void Progress::SetValue(Bar bar, double value) {
    At(bar).Value = std::clamp(value, At(bar).Min, At(bar).Max);
    Report(bar);
}

void Progress::BResetprogressbar(Bar bar, int max) {
    ProgressBar& state = At(bar);
    state.Tag = 0;
    state.Min = 0;
    state.Value = 0;
    state.Max = max;
    Report(bar);
}

void Progress::BStepprogressbar(Bar bar, int step, std::string_view name) {
    ProgressBar& state = At(bar);
    state.Tag += step;
    state.Value = std::clamp(state.Tag, state.Min, state.Max);
    if (state.Value < state.Max) {
        state.Text =
            std::to_string(std::lround(state.Percent())) + "% Complete. Loading " + std::string(name);
    }
    Report(bar);
}

}  // namespace norvelis
