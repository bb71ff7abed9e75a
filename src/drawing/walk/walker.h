#pragma once

#include <optional>
#include <string_view>

#include "drawing/walk/page_walk.h"

namespace norvelis::drawing::walk {

/// Where a person is on a page: what is selected, what was found, what is lit up while all else is dimmed.
/// Without a page there is nothing to meet.
class Walker {
  public:
    Walker() = default;
    /// The page must outlive the walker's use of it.
    explicit Walker(const PageWalk& page) : page_(&page) {}

    int Selected() const { return selected_; }
    void Select(int shape);

    /// What is found becomes the hits, the best of them the present one.
    void Find(std::string_view text);
    const std::vector<int>& FoundShapes() const { return hits_.shapes; }
    int PresentHit() const;
    std::size_t PresentNumber() const { return hits_.shapes.empty() ? 0 : hits_.best + 1; }
    /// Goes on to the next or the previous hit, from the last one to the first; kNone without hits.
    int NextHit(bool forward);
    int EndHit(bool last);  ///< The first or last one.

    void Light(int shape);
    void Dim() { lit_.reset(); }  ///< Nothing is lit up.
    const std::optional<Surroundings>& Lit() const { return lit_; }

    /// The next or previous line of the box that was selected last; kNone when it has none.
    int StepLine(bool forward) const;
    /// The end of the selected line to which one has not come by it; kNone when no line is selected.
    int OtherEnd() const;

  private:
    const PageWalk* page_ = nullptr;
    int selected_ = kNone;
    int box_ = kNone;  ///< From which the lines go.
    Hits hits_;
    std::optional<Surroundings> lit_;
};

}  // namespace norvelis::drawing::walk
