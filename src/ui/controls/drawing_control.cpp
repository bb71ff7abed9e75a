#include "ui/controls/drawing_control.h"

#include <QAction>
#include <QFileInfo>
#include <QPaintEvent>
#include <QPainter>
#include <QTabBar>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/controls/context_menu.h"
#include "ui/controls/drawing_card.h"
#include "ui/controls/drawing_find_bar.h"
#include "ui/controls/drawing_map.h"
#include "ui/controls/drawing_marks.h"
#include "ui/controls/empty_text.h"

// What is on show and what of it. Where one goes from there is in drawing_control_places.cpp, what mouse and
// keys do in drawing_control_events.cpp.
namespace norvelis::ui {

using drawing::walk::kNone;

namespace {

constexpr int kSlow = 250;  // Milliseconds for which another file's picture may stay.
constexpr int kRest = 450;  // Milliseconds after which what the mouse rests on is lit up.
constexpr int kGap = 8;     // Pixels between what is laid over the drawing and its edges.
constexpr QSize kRoomForMap(400, 260);

/// Has the picture paint its whole page as it will be seen first, so that it is ready to be shown.
void PaintAhead(DrawingPicture& picture, QSize control, double pixelRatio) {
    const double scale = PageView::ScaleToFit(picture.PageSize(), control);
    picture.Prepare(QRectF(QPointF(), picture.PageSize() * scale).toAlignedRect(), scale, pixelRatio);
}

}  // namespace

DrawingControl2::DrawingControl2(const QString& name, OpenDrawing open, QWidget* parent)
    : QWidget(parent),
      loader_(std::move(open)),
      rest_(new QTimer(this)),
      findBar_(new DrawingFindBar(this)),
      map_(new DrawingMap(this)),
      card_(new DrawingCard(this)),
      tabs_(new QTabBar(this)) {
    setObjectName(name);
    setAccessibleName("Drawing");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setMinimumSize(80, 60);
    setAttribute(Qt::WA_OpaquePaintEvent);  // Nothing behind it is painted while the page is dragged.
    AddCommands();
    AddTabs();
    slow_.setSingleShot(true);
    slow_.setInterval(kSlow);
    rest_->setObjectName("restOnShape");
    rest_->setSingleShot(true);
    rest_->setInterval(kRest);
    connect(&slow_, &QTimer::timeout, this, &DrawingControl2::SayOpening);
    connect(rest_, &QTimer::timeout, this, [this] {
        walker_.Light(hovered_);
        update();
    });
    connect(&loader_, &DrawingLoader::Loaded, this, [this] { Show(loader_.Take()); });
    connect(findBar_, &DrawingFindBar::Typed, this, &DrawingControl2::Search);
    connect(findBar_, &DrawingFindBar::NextWanted, this, [this] { FindNext(true); });
    connect(findBar_, &DrawingFindBar::PreviousWanted, this, [this] { FindNext(false); });
    connect(findBar_, &DrawingFindBar::CloseWanted, this, &DrawingControl2::EndSearch);
    connect(map_, &DrawingMap::Pointed, this, [this](QPointF place, bool dragged) {
        Go(dragged ? Step::Glide : Step::Jump, [&] { view_.CenterOn(place); });
    });
}

DrawingControl2::~DrawingControl2() = default;

void DrawingControl2::AddCommands() {
    ContextMenu menu(this);
    menu.Add("&Find...\tCtrl+F", [this] { OpenFind(); });
    follow_ = menu.Add("Follow the &set to its other end\tCtrl+Return", [this] { FollowSet(); });
    menu.AddLine();
    menu.Add("&Whole page\tCtrl+0", [this] { Fit(); });
    menu.Add("&Life size\tCtrl+1", [this] { ShowLifeSize(); });
    menu.Add("Page wid&th\tCtrl+2", [this] { FitWidth(); });
    toShape_ = menu.Add("Selected &box\tCtrl+3", [this] { ZoomToShape(); });
    menu.Add("Zoom &in\t+", [this] { ZoomIn(); });
    menu.Add("Zoom o&ut\t-", [this] { ZoomOut(); });
    nextPage_ = menu.Add("&Next page\tCtrl+PgDown", [this] { StepPage(true); });
    previousPage_ = menu.Add("&Page before\tCtrl+PgUp", [this] { StepPage(false); });
    back_ = menu.Add("Bac&k\tAlt+Left", [this] { GoBack(); });
    forward_ = menu.Add("Fo&rward\tAlt+Right", [this] { GoForward(); });
    showMap_ = menu.Add("&Map\tM", [this] { ShowMap(showMap_->isChecked()); });
    showMap_->setCheckable(true);
    showMap_->setChecked(mapWanted_);
    for (QAction* action : {back_, forward_, toShape_, follow_, nextPage_, previousPage_})
        action->setEnabled(false);
}

void DrawingControl2::AddTabs() {
    tabs_->setObjectName("pageTabs");
    tabs_->setAccessibleName("Pages of the drawing");
    tabs_->setShape(QTabBar::RoundedSouth);
    tabs_->setExpanding(false);
    tabs_->setElideMode(Qt::ElideNone);
    tabs_->setAutoFillBackground(true);
    tabs_->setCursor(Qt::ArrowCursor);
    tabs_->setFocusPolicy(Qt::NoFocus);  // The drawing has the keys.
    tabs_->hide();
    connect(tabs_, &QTabBar::currentChanged, this, &DrawingControl2::ShowPage);
}

void DrawingControl2::ShowTabs() {
    const QSignalBlocker filling(tabs_);
    const int count = PageCount();
    while (tabs_->count() > count) tabs_->removeTab(tabs_->count() - 1);
    while (tabs_->count() < count) tabs_->addTab({});
    for (int page = 0; page < count; ++page) {
        const QString name = pages_->Name(page);
        tabs_->setTabText(page, QString(name).replace('&', "&&"));
        tabs_->setAccessibleTabName(page, name);
    }
    tabs_->setCurrentIndex(page_);
    tabs_->setVisible(count > 1);
    for (QAction* action : {nextPage_, previousPage_}) action->setEnabled(count > 1);
}

int DrawingControl2::TabsHeight(int pages) const {
    constexpr int kAir = 14;  // Above and below the name of a page.
    return pages > 1 ? fontMetrics().height() + kAir : 0;
}

void DrawingControl2::Load(std::shared_ptr<const DrawingPages> pages, int page, const QString& pageName) {
    loader_.Load({src_, std::move(pages), page, pageName,
                  [whole = size(), tabs = TabsHeight(2), ratio = devicePixelRatioF()](
                      DrawingPicture& picture, const DrawingPages& all) {
                      PaintAhead(picture, whole - QSize(0, all.Count() > 1 ? tabs : 0), ratio);
                  }});
}

void DrawingControl2::SetSrc(const QString& path, std::optional<int> page) {
    const QDateTime changed = path.isEmpty() ? QDateTime() : QFileInfo(path).lastModified();
    if (path == src_ && changed == changed_) {
        if (page) ShowPage(*page);
        return;
    }
    const bool another = path != src_;
    if (another) showLoaded_ = {};
    loads_ = !another && picture_ ? Loads::SameFile : Loads::AnotherFile;
    src_ = path;
    changed_ = changed;
    if (another) emit SrcChanged(src_);
    setAccessibleDescription(src_.isEmpty() ? QString() : QFileInfo(src_).fileName());
    if (src_.isEmpty()) {
        loader_.Forget();
        Show({});
    } else {
        const bool stays = loads_ == Loads::SameFile && !page;
        Load(nullptr, page.value_or(stays ? page_ : 0), stays ? PageName() : QString());
        slow_.start();
    }
}

void DrawingControl2::Show(DrawingLoader::Result result) {
    slow_.stop();
    rest_->stop();
    hovered_ = kNone;
    const QString selected = SelectedShape();
    walker_ = {};
    picture_ = std::move(result.picture);
    pages_ = std::move(result.pages);
    page_ = result.page;
    reason_ = result.reason;
    sharp_ = true;
    card_->hide();
    if (picture_) {
        picture_->OnReady([this] { QMetaObject::invokeMethod(this, [this] { update(); }); });
        walker_ = drawing::walk::Walker(Page());
        view_.SetPage(page_, picture_->PageSize(), logicalDpiX() / picture_->UnitsPerInch());
    }
    map_->SetPage(picture_ ? picture_->Overview() : QImage(), picture_ ? picture_->PageSize() : QSizeF(1, 1));
    if (loads_ != Loads::SameFile) {
        if (loads_ != Loads::AnotherPage) trail_.Clear();
        view_.FitPage();
    } else if (picture_ && !selected.isEmpty()) {
        walker_.Select(Page().Named(selected.toStdString()));
    }
    ShowTabs();
    view_.Resize(Room().size());
    if (findBar_->isVisible()) Search();
    ViewChanged();
    SelectionChanged();
    if (const auto show = std::exchange(showLoaded_, {})) show();
    if (!Loading()) loads_ = Loads::Nothing;
}

void DrawingControl2::SayOpening() {
    if (loads_ == Loads::AnotherFile)
        Show({nullptr, 0, nullptr, "Opening " + QFileInfo(src_).fileName() + "..."});
}

double DrawingControl2::Zoom() const {
    return picture_ ? view_.Scale() / view_.LifeSize() : 1;
}

void DrawingControl2::Go(Step step, const std::function<void()>& change) {
    if (!picture_) return;
    const PageView::Place before = view_.Present();
    change();
    if (view_.Present() == before) return;
    if (loads_ != Loads::AnotherPage) trail_.Leave(before, step);  // That left the page before.
    ViewChanged();
}

void DrawingControl2::Return(const std::optional<PageView::Place>& place) {
    if (!place) return;
    TurnTo(place->page, [this, place] {
        view_.GoTo(*place);
        ViewChanged();
    });
}

void DrawingControl2::Fit() {
    Go(Step::Jump, [this] { view_.FitPage(); });
}

void DrawingControl2::FitWidth() {
    Go(Step::Jump, [this] { view_.FitWidth(); });
}

void DrawingControl2::ShowLifeSize() {
    Go(Step::Jump, [this] { view_.SetScale(view_.LifeSize(), Anchor()); });
}

void DrawingControl2::ZoomBy(double steps, QPointF anchor) {
    constexpr double kStep = 1.25;  // Of a key or a notch of the wheel.
    Go(Step::Glide, [&] { view_.SetScale(view_.Scale() * std::pow(kStep, steps), anchor); });
}

void DrawingControl2::ZoomIn() {
    ZoomBy(1, Room().center());
}

void DrawingControl2::ZoomOut() {
    ZoomBy(-1, Room().center());
}

void DrawingControl2::ZoomToShape() {
    if (walker_.Selected() == kNone) return Fit();
    Go(Step::Jump, [this] { view_.ShowWhole(ToQt(Page().Sight(walker_.Selected()))); });
}

void DrawingControl2::GoBack() {
    Return(trail_.Back(view_.Present()));
}

void DrawingControl2::GoForward() {
    Return(trail_.Forward(view_.Present()));
}

void DrawingControl2::ViewChanged() {
    QList<QPointF> places;
    for (const int hit : walker_.FoundShapes()) places << ToQt(Page().Sight(hit)).center();
    map_->Mark(view_.Seen(), places);
    map_->setVisible(mapWanted_ && picture_ && !view_.SeesWholePage() && width() >= kRoomForMap.width() &&
                     Room().height() >= kRoomForMap.height());
    back_->setEnabled(picture_ && trail_.CanGoBack());
    forward_->setEnabled(picture_ && trail_.CanGoForward());
    PlaceOverlays();
    update();
}

void DrawingControl2::PlaceOverlays() {
    const int bar = std::min(width(), std::max(300, findBar_->minimumSizeHint().width()));
    findBar_->setGeometry(width() - bar, 0, bar, findBar_->sizeHint().height());
    const int bottom = Room().height();
    tabs_->setGeometry(0, bottom, width(), height() - bottom);
    map_->move(width() - map_->width() - kGap, bottom - map_->height() - kGap);
    if (card_->isHidden()) return;
    card_->setMaximumSize(std::max(width() - 2 * kGap, 1), std::max(bottom - 2 * kGap, 1));
    card_->adjustSize();
    card_->move(kGap, bottom - card_->height() - kGap);
}

void DrawingControl2::ShowMap(bool wanted) {
    mapWanted_ = wanted;
    showMap_->setChecked(wanted);
    ViewChanged();
}

int DrawingControl2::ShapeUnder(QPointF pixel) const {
    constexpr double kSlack = 3;  // Pixels beside a line that still hit it.
    const QPointF place = view_.PageAt(pixel);
    return Page().At({place.x(), place.y()}, kSlack / view_.Scale());
}

QString DrawingControl2::SelectedShape() const {
    return walker_.Selected() == kNone ? QString() : QString::fromStdString(Page()[walker_.Selected()].name);
}

void DrawingControl2::Select(int shape) {
    walker_.Select(shape);
    SelectionChanged();
}

void DrawingControl2::SelectionChanged() {
    card_->hide();
    walker_.Dim();
    const int shape = walker_.Selected();
    toShape_->setEnabled(shape != kNone);
    follow_->setEnabled(walker_.OtherEnd() != kNone);
    if (!src_.isEmpty()) {
        QString file = QFileInfo(src_).fileName();
        if (PageCount() > 1) file += ", page " + PageName();
        setAccessibleDescription(shape == kNone ? file
                                                : file + ", " + QString::fromStdString(Page().Title(shape)));
    }
    update();
}

void DrawingControl2::Tell(const QString& heading, const std::vector<std::array<std::string, 2>>& items) {
    card_->Tell(heading, items);
    PlaceOverlays();
}

void DrawingControl2::LightSelected() {
    walker_.Light(walker_.Lit() ? kNone : walker_.Selected());
    update();
}

bool DrawingControl2::CanEnd() const {
    return walker_.Lit() || card_->isVisible() || findBar_->isVisible() || walker_.Selected() != kNone;
}

void DrawingControl2::EndLast() {
    if (walker_.Lit()) {
        walker_.Dim();
    } else if (findBar_->isVisible() && (!hasFocus() || !card_->isVisible())) {
        EndSearch();
    } else if (card_->isVisible()) {
        card_->hide();
    } else {
        Select(kNone);
    }
    update();
}

void DrawingControl2::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().color(QPalette::Mid));
    if (!picture_) {
        return PaintEmptyText(painter, *this, reason_.isEmpty() ? emptyText_ : reason_);
    }
    const QRectF page = view_.Pixels(QRectF(QPointF(), picture_->PageSize()));
    painter.fillRect(page.translated(3, 3), QColor(0, 0, 0, 40));
    // All of it, so that what is missing anywhere is asked for, though less may have to be painted.
    const QRect seen = page.toAlignedRect() & Room();
    if (seen.isEmpty()) {
        sharp_ = true;
        return;
    }
    painter.save();
    painter.setClipRect(page & QRectF(Room()));
    painter.translate(seen.topLeft());
    sharp_ = picture_->Paint(painter, seen.translated(-view_.Origin().toPoint()), view_.Scale(),
                             devicePixelRatioF());
    painter.restore();
    PaintMarks(painter, Page(), walker_, view_, palette(), Room());
    if (frame_) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(*frame_);
    }
}

void DrawingControl2::resizeEvent(QResizeEvent*) {
    view_.Resize(Room().size());
    ViewChanged();
}

}  // namespace norvelis::ui
