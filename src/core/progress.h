#pragma once

#include <array>
#include <span>
#include <string_view>

#include "core/host.h"

namespace norvelis {

/// The bars of one program, each with its state; every change is reported to the Host.
class Progress {
  public:
    explicit Progress(Host& host) : host_(host) {}

    const ProgressBar& operator[](Bar bar) const { return bars_[static_cast<std::size_t>(bar)]; }

    void SetText(Bar bar, std::string_view text);
    void SetVisible(Bar bar, bool visible);
    void SetValue(Bar bar, double value);  ///< Kept within Min and Max.

    /// Tag and Value 0, Min 0, Max as given (16 bits in the classic bars; here as wide as it takes).
    void BResetprogressbar(Bar bar, int max);

    /// Adds the step to the running total. Below Max the text becomes "<whole percent>% Complete. Loading
    /// <name>"; at or above it the text stays.
    void BStepprogressbar(Bar bar, int step, std::string_view name);

  private:
    ProgressBar& At(Bar bar) { return bars_[static_cast<std::size_t>(bar)]; }
    void Report(Bar bar) { host_.ProgressChanged(bar, At(bar)); }

    Host& host_;
    std::array<ProgressBar, 4> bars_;
};

/// Bars that are to be seen for the length of a command, whichever way it is left. The list must outlive it.
class ShownBars {
  public:
    ShownBars(Progress& progress, std::span<const Bar> bars) : progress_(progress), bars_(bars) {
        Show(true);
    }
    ~ShownBars() { Show(false); }
    ShownBars(const ShownBars&) = delete;
    ShownBars& operator=(const ShownBars&) = delete;

  private:
    void Show(bool visible) {
        for (const Bar bar : bars_) progress_.SetVisible(bar, visible);
    }
    Progress& progress_;
    std::span<const Bar> bars_;
};

}  // namespace norvelis
