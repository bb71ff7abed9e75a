#include <QTabBar>

#include "ui/controls/drawing_control.h"
#include "ui/controls/drawing_find_bar.h"
#include "ui/controls/drawing_marks.h"

// Where one goes in a drawing: pages, shapes by their names, along lines and links, places of a text.
namespace norvelis::ui {

using drawing::walk::kNone;
using drawing::walk::PageWalk;

namespace {

constexpr double kReadable = 0.8;  // Of life size: six points can be read.

int Around(int place, int count, bool forward) {
    return (place + (forward ? 1 : count - 1)) % count;
}

}  // namespace

bool DrawingControl2::CanTurn() const {
    return pages_ && (!Loading() || loads_ == Loads::AnotherPage);
}

void DrawingControl2::TurnTo(int page, const std::function<void()>& then) {
    if (!CanTurn()) return ShowTabs();
    const bool onShow = page == page_ && picture_;
    showLoaded_ = onShow ? nullptr : then;
    loads_ = onShow ? Loads::Nothing : Loads::AnotherPage;
    if (onShow) {
        loader_.Forget();  // It may be another one.
        ShowTabs();
        return then();
    }
    const QSignalBlocker following(tabs_);
    tabs_->setCurrentIndex(page);
    Load(pages_, page, {});
}

void DrawingControl2::GoToPage(int page, const std::function<void()>& then) {
    if (CanTurn() && page != page_) trail_.Leave(view_.Present(), Step::Jump);
    TurnTo(page, then);
}

void DrawingControl2::ShowPage(int page) {
    if (page >= 0 && page < PageCount()) GoToPage(page, [] {});
}

void DrawingControl2::StepPage(bool forward) {
    if (PageCount() > 1) ShowPage(Around(tabs_->currentIndex(), PageCount(), forward));
}

int DrawingControl2::PageWith(const FindShape& find) const {
    const auto has = [&](int page) {
        const PageWalk& walk = pages_->Walk(page);
        const int shape = find(walk);
        return shape != kNone && !walk[shape].LinkWithin();
    };
    for (int step = 0, page = page_; step < PageCount(); ++step, page = Around(page, PageCount(), true)) {
        if (has(page)) return page;
    }
    return page_;
}

void DrawingControl2::FollowLink(const drawing::walk::LinkTarget& target) {
    int page = 0;
    while (page < PageCount() && pages_->Name(page).toStdString() != target.page) ++page;
    if (page == PageCount())
        return Tell("There is no page " + QString::fromStdString(target.page) + " in this drawing", {});
    GoToPage(page, [this, name = target.shape] {
        const int shape = Page().Named(name);
        ShowMarked(shape, QString::fromStdString(name));
        if (shape != kNone) emit ShapeClicked(QString::fromStdString(Page()[shape].name));
    });
}

void DrawingControl2::SelectShape(const QString& name) {
    Select(Page().Named(name.toStdString()));
    if (walker_.Selected() == kNone || view_.Fitted() == PageView::Fit::Page) return;
    const QPointF middle = ToQt(Page().Sight(walker_.Selected())).center();
    if (!view_.Seen().contains(middle)) Go(Step::Jump, [&] { view_.CenterOn(middle); });
}

void DrawingControl2::ShowReadable(int shape) {
    Go(Step::Jump, [&] { view_.ShowReadable(ToQt(Page().Sight(shape)), kReadable * view_.LifeSize()); });
}

void DrawingControl2::ShowFound(const QString& name, const FindShape& find) {
    if (Loading()) {
        showLoaded_ = [this, name, find] { ShowFound(name, find); };
    } else if (picture_) {
        GoToPage(PageWith(find), [this, name, find] { ShowMarked(find(Page()), name); });
    }
}

void DrawingControl2::ShowShape(const QString& name) {
    ShowFound(name, [wanted = name.toStdString()](const PageWalk& page) { return page.Named(wanted); });
}

void DrawingControl2::ShowSet(const drawing::walk::SetLine& set) {
    ShowFound(QString::fromStdString(set.set), [set](const PageWalk& page) { return page.LineOf(set); });
}

void DrawingControl2::ShowMarked(int shape, const QString& name) {
    Select(shape);
    if (shape == kNone) return Tell(name.trimmed() + " is not on this drawing", {});
    ShowReadable(shape);
}

void DrawingControl2::Press(int shape) {
    Select(shape);
    if (shape == kNone) return;
    const PageWalk& page = Page();
    if (const auto target = page[shape].LinkWithin()) {
        FollowLink(*target);
    } else if (const auto line = page.SetOf(shape)) {
        emit LineClicked(*line);
    } else {
        emit ShapeClicked(QString::fromStdString(page[shape].name));
    }
}

void DrawingControl2::StepLine(bool forward) {
    const int line = walker_.StepLine(forward);
    if (line == kNone) return;
    if (!view_.Seen().contains(ToQt(Page().Sight(line)))) ShowReadable(line);
    Press(line);
}

void DrawingControl2::Follow(int line, int end) {
    if (end == kNone) return;
    walker_.Select(line);
    ShowReadable(end);
    Press(end);
}

void DrawingControl2::FollowSet() {
    Follow(walker_.Selected(), walker_.OtherEnd());
}

void DrawingControl2::OpenFind() {
    if (!picture_) return;
    findBar_->Open();
    PlaceOverlays();
    Search();
}

std::size_t DrawingControl2::HitsOn(int page) const {
    return page == page_ ? walker_.FoundShapes().size()
                         : pages_->Walk(page).Find(findBar_->Text().toStdString()).shapes.size();
}

void DrawingControl2::CountFound() {
    std::size_t before = 0, all = 0;
    for (int page = 0; page < PageCount(); ++page) {
        const std::size_t hits = HitsOn(page);
        if (page < page_) before += hits;
        all += hits;
    }
    const std::size_t present = walker_.PresentNumber();
    findBar_->ShowCount(present == 0 ? 0 : before + present, all);
}

void DrawingControl2::Search() {
    walker_.Find(findBar_->Text().toStdString());
    CountFound();
    const int hit = walker_.PresentHit();
    if (hit != kNone && !view_.Seen().contains(ToQt(Page().Sight(hit))))
        Go(Step::Glide, [&] { view_.CenterOn(ToQt(Page().Sight(hit)).center()); });
    ViewChanged();
}

int DrawingControl2::NextPageWithHits(bool forward) const {
    for (int page = Around(page_, PageCount(), forward); page != page_;
         page = Around(page, PageCount(), forward)) {
        if (HitsOn(page) > 0) return page;
    }
    return kNone;
}

void DrawingControl2::FindNext(bool forward) {
    if (findBar_->isHidden()) return OpenFind();
    if (!picture_) return;
    const std::size_t hits = walker_.FoundShapes().size();
    const bool atEnd = hits == 0 || walker_.PresentNumber() == (forward ? hits : 1);
    const int page = atEnd ? NextPageWithHits(forward) : kNone;
    if (page == kNone) return ShowHit(walker_.NextHit(forward));
    GoToPage(page, [this, forward] { ShowHit(walker_.EndHit(!forward)); });
}

void DrawingControl2::ShowHit(int hit) {
    CountFound();
    if (hit == kNone) return;
    ShowReadable(hit);
    Select(hit);
}

void DrawingControl2::EndSearch() {
    findBar_->hide();
    walker_.Find({});
    setFocus();
    ViewChanged();
}

}  // namespace norvelis::ui
