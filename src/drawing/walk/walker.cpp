#include "drawing/walk/walker.h"

#include <algorithm>

namespace norvelis::drawing::walk {

namespace {

/// The place after or before this one in a circle of `count`.
std::size_t Step(std::size_t at, std::size_t count, bool forward) {
    return (at + (forward ? 1 : count - 1)) % count;
}

}  // namespace

void Walker::Select(int shape) {
    selected_ = shape;
    if (shape == kNone) {
        box_ = kNone;
        return;
    }
    const PageShape& own = (*page_)[shape];
    if (!own.IsLine())
        box_ = shape;
    else if (box_ != own.begin && box_ != own.end)
        box_ = own.begin;
}

void Walker::Find(std::string_view text) {
    hits_ = page_ ? page_->Find(text) : Hits();
}

int Walker::PresentHit() const {
    return hits_.shapes.empty() ? kNone : hits_.shapes[hits_.best];
}

int Walker::NextHit(bool forward) {
    if (!hits_.shapes.empty()) hits_.best = Step(hits_.best, hits_.shapes.size(), forward);
    return PresentHit();
}

int Walker::EndHit(bool last) {
    hits_.best = last && !hits_.shapes.empty() ? hits_.shapes.size() - 1 : 0;
    return PresentHit();
}

void Walker::Light(int shape) {
    if (shape == kNone)
        lit_.reset();
    else
        lit_ = page_->Around(shape);
}

int Walker::StepLine(bool forward) const {
    if (box_ == kNone) return kNone;
    const std::vector<int> lines = page_->LinesOf(box_);
    if (lines.empty()) return kNone;
    const auto present = std::ranges::find(lines, selected_);
    if (present == lines.end()) return forward ? lines.front() : lines.back();
    return lines[Step(static_cast<std::size_t>(present - lines.begin()), lines.size(), forward)];
}

int Walker::OtherEnd() const {
    if (selected_ == kNone || !(*page_)[selected_].IsLine()) return kNone;
    const PageShape& line = (*page_)[selected_];
    return box_ == line.begin ? line.end : line.begin;
}

}  // namespace norvelis::drawing::walk
