#include "diagram/draw_preparation.h"

#include "base/text.h"
#include "core/places.h"
#include "core/settings.h"

namespace norvelis {

namespace {

constexpr Bar kValueBars[] = {Bar::TreeviewValue, Bar::BackgroundValue};

}  // namespace

std::string ChosenLocation(DrawingState& drawing) {
    const auto& chosen = drawing.options.location;
    const std::string location = chosen ? *chosen : getvisiolocation(drawing.app);
    return Trim(location).empty() ? std::string() : location;
}

std::string DefaultLocation(const DrawingState& drawing) {
    return drawing.app.AppPath(places::kDrawings);
}

std::string DrawingLocation(DrawingState& drawing) {
    const std::string location = ChosenLocation(drawing);
    return location.empty() ? DefaultLocation(drawing) : location;
}

ShownBars BarsFromNothing(Progress& progress) {
    for (const Bar bar : kValueBars) {
        progress.BResetprogressbar(bar, 0);
        progress.SetText(bar, "");
    }
    return {progress, kAllBars};
}

void ProgressSetMax(DrawingState& drawing, int count) {
    for (const Bar bar : kValueBars) drawing.app.progress.BResetprogressbar(bar, count);
}

void ProgressStep(DrawingState& drawing) {
    Progress& progress = drawing.app.progress;
    for (const Bar bar : kValueBars) {
        progress.SetValue(bar, progress[bar].Value + 1);
        if (progress[bar].Value >= progress[bar].Max) progress.SetText(bar, "100% ");
    }
}

}  // namespace norvelis
