#include "ui/controls/page_view.h"

#include <algorithm>
#include <cmath>

namespace norvelis::ui {

namespace {

constexpr int kWithinReach = 40;  // Pixels of the page that stay in sight.
constexpr double kLargest = 8;    // Times life size.

}  // namespace

double PageView::ScaleToFit(QSizeF page, QSize control) {
    const double across = (control.width() - 2 * kMargin) / page.width(),
                 down = (control.height() - 2 * kMargin) / page.height();
    return std::max(std::min(across, down), 1e-6);
}

void PageView::SetPage(int number, QSizeF page, double lifeSize) {
    number_ = number;
    page_ = page;
    lifeSize_ = lifeSize;
    if (fit_ == Fit::None) KeepInReach();
}

void PageView::Resize(QSize control) {
    control_ = control;
    switch (fit_) {
        case Fit::Page:
            return FitPage();
        case Fit::Width:
            return FitWidth();
        case Fit::None:
            return KeepInReach();
    }
}

bool PageView::SeesWholePage() const {
    return Seen().contains(QRectF(QPointF(), page_));
}

void PageView::FitPage() {
    fit_ = Fit::Page;
    scale_ = ScaleToFit(page_, control_);
    const QSizeF page = page_ * scale_;
    origin_ = QPointF(std::round((control_.width() - page.width()) / 2),
                      std::round((control_.height() - page.height()) / 2));
}

void PageView::FitWidth() {
    const double middle = PageAt(Middle()).y();
    fit_ = Fit::Width;
    scale_ = Clamped((control_.width() - 2 * kMargin) / page_.width());
    origin_.setX(std::round((control_.width() - page_.width() * scale_) / 2));
    const double height = page_.height() * scale_, free = control_.height() - height;
    const double y = free >= 2 * kMargin ? free / 2
                                         : std::clamp(Middle().y() - middle * scale_, free - kMargin,
                                                      static_cast<double>(kMargin));
    origin_.setY(std::round(y));
}

double PageView::Clamped(double scale) const {
    const double fit = ScaleToFit(page_, control_);
    return std::clamp(scale, fit / 2, std::max(kLargest * lifeSize_, fit));
}

void PageView::SetScale(double scale, QPointF anchor) {
    const QPointF place = PageAt(anchor);
    fit_ = Fit::None;
    scale_ = Clamped(scale);
    origin_ = anchor - place * scale_;
    KeepInReach();
}

void PageView::ShowWhole(const QRectF& onPage) {
    SetScale(ScaleToFit(onPage.size().expandedTo({1, 1}), control_), Middle());
    CenterOn(onPage.center());
}

void PageView::ShowReadable(const QRectF& onPage, double least) {
    const double whole = ScaleToFit(onPage.size().expandedTo({1, 1}), control_);
    SetScale(std::min(std::max(scale_, least), whole), Middle());
    CenterOn(onPage.center());
    KeepFilled();
}

void PageView::CenterOn(QPointF onPage) {
    MoveBy(Middle() - (origin_ + onPage * scale_));
}

void PageView::MoveBy(QPointF pixels) {
    fit_ = Fit::None;
    origin_ += pixels;
    KeepInReach();
}

void PageView::GoTo(const Place& place) {
    SetScale(place.scale, Middle());
    CenterOn(place.center);
    if (place.fit == Fit::Page) FitPage();
    if (place.fit == Fit::Width) FitWidth();
}

void PageView::KeepInReach() {
    const QSizeF page = page_ * scale_;
    const auto within = [](double at, double size, int control) {
        const double least = kWithinReach - size, most = control - kWithinReach;
        return std::round(
            std::clamp(at, std::min(least, most), std::max(least, most)));  // Tiles meet on pixels.
    };
    origin_ = {within(origin_.x(), page.width(), control_.width()),
               within(origin_.y(), page.height(), control_.height())};
}

void PageView::KeepFilled() {
    const QSizeF page = page_ * scale_;
    const auto filled = [](double at, double size, int control) {
        const double least = control - size - kMargin;
        return std::round(least < kMargin ? std::clamp(at, least, static_cast<double>(kMargin))
                                          : (control - size) / 2);
    };
    origin_ = {filled(origin_.x(), page.width(), control_.width()),
               filled(origin_.y(), page.height(), control_.height())};
}

void ViewTrail::Leave(const PageView::Place& view, Step step) {
    if (step == Step::Glide && gliding_) return;
    gliding_ = step == Step::Glide;
    behind_.push_back(view);
    if (behind_.size() > kMost) behind_.erase(behind_.begin());
    ahead_.clear();
}

std::optional<PageView::Place> ViewTrail::Go(const PageView::Place& view, Places& from, Places& to) {
    if (from.empty()) return std::nullopt;
    to.push_back(view);
    const PageView::Place place = from.back();
    from.pop_back();
    gliding_ = false;
    return place;
}

}  // namespace norvelis::ui
