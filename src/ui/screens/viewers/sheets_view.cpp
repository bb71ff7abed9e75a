#include "ui/screens/viewers/sheets_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "ui/controls/drawing_sheets.h"
#include "ui/controls/empty_text.h"

namespace norvelis::ui {

namespace {

constexpr double kGap = 6, kBetweenPages = 20;  // Millimetres.
constexpr double kMargin = 12;                  // Pixels.
constexpr int kMostPainted = 200;               // Sheets; of more one sees nothing but their outlines.

}  // namespace

SheetsView::SheetsView(const QString& name, QWidget* parent) : QWidget(parent) {
    setObjectName(name);
    setAccessibleName("Sheets");
    setMinimumSize(200, 150);
}

void SheetsView::Show(const DrawingSheets* sheets, const QString& words) {
    sheets_ = sheets;
    words_ = words;
    SheetsChanged();
}

void SheetsView::SheetsChanged() {
    Arrange();
    update();
}

void SheetsView::Choose(std::vector<int> sheets) {
    chosen_ = std::move(sheets);
    std::sort(chosen_.begin(), chosen_.end());
    update();
}

bool SheetsView::IsChosen(int sheet) const {
    return chosen_.empty() || std::binary_search(chosen_.begin(), chosen_.end(), sheet);
}

/// In millimetres first, then scaled into the middle of the view.
void SheetsView::Arrange() {
    picture_ = {};
    places_.clear();
    if (!sheets_ || sheets_->Count() == 0) return;
    double top = 0, bottom = 0, right = 0;
    for (int sheet = 1; sheet <= sheets_->Count(); ++sheet) {
        const paper::Sheet& place = sheets_->SheetOf(sheet);
        const paper::Size& paper = sheets_->PlanOf(sheet).paper;
        if (place.row == 1 && place.column == 1 && sheet > 1) top = bottom + kBetweenPages;
        const QRectF rect((place.column - 1) * (paper.width + kGap),
                          top + (place.row - 1) * (paper.height + kGap), paper.width, paper.height);
        bottom = rect.bottom();
        right = std::max(right, rect.right());
        places_.push_back(rect);
    }
    scale_ = std::max(0.001, std::min((width() - 2 * kMargin) / right, (height() - 2 * kMargin) / bottom));
    const QPointF origin((width() - right * scale_) / 2, (height() - bottom * scale_) / 2);
    for (QRectF& rect : places_) rect = QRectF(origin + rect.topLeft() * scale_, rect.size() * scale_);
}

QPixmap SheetsView::Picture() const {
    QPixmap picture(size() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (std::size_t i = 0; i < places_.size(); ++i) {
        painter.fillRect(places_[i].translated(2, 2), QColor(0, 0, 0, 50));
        painter.fillRect(places_[i], Qt::white);
        if (places_.size() > kMostPainted) continue;
        painter.save();
        painter.setClipRect(places_[i]);
        painter.translate(places_[i].topLeft());
        painter.scale(scale_, scale_);
        sheets_->Paint(painter, static_cast<int>(i) + 1);
        painter.restore();
    }
    return picture;
}

void SheetsView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Mid));
    if (places_.empty()) return PaintEmptyText(painter, *this, words_);
    if (picture_.isNull()) picture_ = Picture();
    painter.drawPixmap(0, 0, picture_);
    for (std::size_t i = 0; i < places_.size(); ++i) {
        const bool chosen = IsChosen(static_cast<int>(i) + 1);
        if (!chosen) painter.fillRect(places_[i], QColor(255, 255, 255, 190));
        if (chosen && !chosen_.empty()) {
            painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
            painter.drawRect(places_[i]);
        }
    }
}

void SheetsView::resizeEvent(QResizeEvent*) {
    SheetsChanged();
}

void SheetsView::mousePressEvent(QMouseEvent* event) {
    const auto hit = std::find_if(places_.begin(), places_.end(),
                                  [&](const QRectF& place) { return place.contains(event->position()); });
    if (event->button() == Qt::LeftButton && hit != places_.end())
        emit SheetClicked(static_cast<int>(hit - places_.begin()) + 1);
}

}  // namespace norvelis::ui
