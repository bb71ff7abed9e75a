#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <optional>
#include <vector>

namespace norvelis::ui {

/// Which part of a page a control shows, and how large. Places of the page are in its units, those of the
/// control in pixels.
class PageView {
  public:
    /// What a view follows when its control changes its size.
    enum class Fit { None, Page, Width };

    /// A view by itself: what a person comes back to.
    struct Place {
        int page = 0;
        Fit fit = Fit::Page;
        double scale = 1;
        QPointF center;  ///< Of the page.
        bool operator==(const Place&) const = default;
    };

    static constexpr int kMargin = 12;  ///< Pixels around a fitted page.
    static double ScaleToFit(QSizeF page, QSize control);

    /// `number` is the page's in its drawing, `lifeSize` pixels to the unit.
    void SetPage(int number, QSizeF page, double lifeSize);
    void Resize(QSize control);

    double Scale() const { return scale_; }     ///< Pixels to the unit.
    QPointF Origin() const { return origin_; }  ///< Of the page's upper left corner in the control.
    Fit Fitted() const { return fit_; }
    double LifeSize() const { return lifeSize_; }
    QSizeF PageSize() const { return page_; }

    QPointF PageAt(QPointF pixel) const { return (pixel - origin_) / scale_; }
    QRectF Pixels(const QRectF& onPage) const {
        return {origin_ + onPage.topLeft() * scale_, onPage.size() * scale_};
    }
    QRectF Seen() const { return {PageAt({0, 0}), QSizeF(control_) / scale_}; }  ///< Of the page and around.
    bool SeesWholePage() const;

    void FitPage();
    void FitWidth();
    /// The same place of the page stays under `anchor`.
    void SetScale(double scale, QPointF anchor);
    /// This part of the page as large as it goes, up to the largest scale.
    void ShowWhole(const QRectF& onPage);
    /// This part in the middle, or as near to it as the page's edges allow, at a scale of at least `least`
    /// unless it then would not fit.
    void ShowReadable(const QRectF& onPage, double least);
    void CenterOn(QPointF onPage);
    void MoveBy(QPointF pixels);

    Place Present() const { return {number_, fit_, scale_, PageAt(Middle())}; }
    void GoTo(const Place& place);  ///< Of the page that is set.

  private:
    QPointF Middle() const { return QRectF(QPointF(), control_).center(); }
    double Clamped(double scale) const;
    void KeepInReach();
    void KeepFilled();  ///< Nothing beside the page is seen that need not be.

    int number_ = 0;
    QSizeF page_{1, 1};
    QSize control_{1, 1};
    double lifeSize_ = 1, scale_ = 1;
    QPointF origin_;
    Fit fit_ = Fit::Page;
};

/// The views that a person left, as a browser keeps its pages.
class ViewTrail {
  public:
    /// A jump leaves a view at once. Steps that go over into each other (the wheel, a drag) leave it once, at
    /// their beginning.
    enum class Step { Jump, Glide };

    void Leave(const PageView::Place& view, Step step);
    bool CanGoBack() const { return !behind_.empty(); }
    bool CanGoForward() const { return !ahead_.empty(); }
    /// The view before or after this one, which is left; nothing when there is none.
    std::optional<PageView::Place> Back(const PageView::Place& view) { return Go(view, behind_, ahead_); }
    std::optional<PageView::Place> Forward(const PageView::Place& view) { return Go(view, ahead_, behind_); }
    void Clear() { *this = {}; }

  private:
    using Places = std::vector<PageView::Place>;
    std::optional<PageView::Place> Go(const PageView::Place& view, Places& from, Places& to);

    static constexpr std::size_t kMost = 200;  // Older ones are forgotten.
    Places behind_, ahead_;
    bool gliding_ = false;
};

}  // namespace norvelis::ui
