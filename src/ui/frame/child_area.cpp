#include "ui/frame/child_area.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "ui/forms/form.h"
#include "ui/forms/reading_order.h"
#include "ui/frame/arrange.h"

namespace norvelis::ui {

namespace {

constexpr int kShadow = 14;

/// Falls a little downwards; the form itself hides the middle.
void PaintShadow(QPainter& painter, const QRect& form, bool strong) {
    const QRect fallen = form.translated(0, 3);
    const auto shade = [strong](double near) {
        return QColor(10, 20, 35, static_cast<int>((strong ? 46 : 24) * near * near));
    };
    painter.fillRect(fallen, shade(1));
    painter.setBrush(Qt::NoBrush);
    for (int i = 1; i <= kShadow; ++i) {
        painter.setPen(shade(1 - static_cast<double>(i) / kShadow));
        const double out = i - 0.5;
        painter.drawRoundedRect(QRectF(fallen).adjusted(-out, -out, out, out), i, i);
    }
}

Form* FormOf(QWidget* widget) {
    while (widget) {
        if (auto* form = qobject_cast<Form*>(widget)) return form;
        widget = widget->parentWidget();
    }
    return nullptr;
}

}  // namespace

ChildArea::ChildArea(QWidget* parent) : QWidget(parent) {
    setObjectName("ChildArea");
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* to) { FocusMoved(to); });
}

void ChildArea::SetBackground(const Picture& picture) {
    background_ = picture;
    painted_ = {};
    update();
}

void ChildArea::Add(Form* form, bool kept) {
    form->setAttribute(Qt::WA_DeleteOnClose, !kept);
    form->installEventFilter(this);
    connect(form, &Form::Touched, this, [this, form] { Activate(form); });
    connect(form, &Form::Minimized, this, [this, form] { Minimize(form); });
    connect(form, &Form::Closed, this, [this, form] { Left(form); });
    connect(form, &Form::ArrangedByPerson, this, [this] { tiled_ = false; });
    children_.push_back({form, false, {}});
}

void ChildArea::Activate(Form* form) {
    Child* child = Find(form);
    if (!child) return;
    const bool opens = !form->isVisibleTo(this) && !child->minimized;
    child->minimized = false;
    if (opens && form->IsMaximized()) form->FillArea();
    if (opens && !form->IsMaximized()) form->MoveInside();
    form->show();
    form->raise();
    active_ = form;
    if (!form->isAncestorOf(QApplication::focusWidget())) {
        if (child->focus && child->focus->isVisibleTo(form)) {
            child->focus->setFocus();
        } else if (QWidget* control = form->OpensAt()) {
            control->setFocus(Qt::TabFocusReason);
        } else {
            const auto order = ReadingOrder(*form);
            const auto first = std::find_if(order.begin(), order.end(), [form](const QWidget* control) {
                return control->isEnabled() && control->isVisibleTo(form);
            });
            (first == order.end() ? form : *first)->setFocus(Qt::TabFocusReason);
        }
    }
    if (tiled_ && opens) PlaceTiles();
    update();
    emit FormsChanged();
}

void ChildArea::Minimize(Form* form) {
    if (Child* child = Find(form)) child->minimized = true;
    form->hide();
}

void ChildArea::ActivateNext(int step) {
    const auto forms = OpenForms();
    if (forms.empty()) return;
    const auto here = std::find(forms.begin(), forms.end(), active_.data());
    const auto count = static_cast<std::ptrdiff_t>(forms.size());
    const auto place = here == forms.end() ? 0 : here - forms.begin() + step;
    Activate(forms[static_cast<std::size_t>((place + count) % count)]);
}

std::vector<Form*> ChildArea::Arranged() const {
    std::vector<Form*> forms = OpenForms();
    std::erase_if(
        forms, [this](const Form* form) { return IsMinimized(form) || form->isWindow() || !form->Grows(); });
    return forms;
}

void ChildArea::Tile() {
    tiled_ = true;
    PlaceTiles();
}

void ChildArea::PlaceTiles() {
    const std::vector<Form*> forms = Arranged();
    std::vector<QSize> smallest;
    for (const Form* form : forms) smallest.push_back(form->SmallestSize());
    const std::vector<QRect> places = Tiles(size(), smallest);
    for (std::size_t i = 0; i < places.size(); ++i) {
        forms[i]->SetMaximized(false);
        forms[i]->setGeometry(places[i]);
    }
}

void ChildArea::Cascade() {
    tiled_ = false;
    std::vector<Form*> forms = Arranged();
    // The active one comes last and so to the front.
    std::stable_partition(forms.begin(), forms.end(), [this](const Form* form) { return form != active_; });
    std::vector<QSize> sizes;
    for (const Form* form : forms) sizes.push_back(form->OriginalSize());
    const std::vector<QRect> places = ui::Cascade(size(), sizes);
    for (std::size_t i = 0; i < places.size(); ++i) {
        forms[i]->SetMaximized(false);
        forms[i]->setGeometry(places[i]);
        forms[i]->raise();
    }
}

Form* ChildArea::Active() const {
    return active_;
}

bool ChildArea::IsMinimized(const Form* form) const {
    const Child* child = Find(form);
    return child && child->minimized;
}

std::vector<Form*> ChildArea::Forms() const {
    std::vector<Form*> forms;
    for (const Child& child : children_) {
        if (child.form) forms.push_back(child.form);
    }
    return forms;
}

std::vector<Form*> ChildArea::OpenForms() const {
    std::vector<Form*> forms;
    for (const Child& child : children_) {
        if (child.form && (child.form->isVisibleTo(this) || child.minimized)) forms.push_back(child.form);
    }
    return forms;
}

const ChildArea::Child* ChildArea::Find(const Form* form) const {
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [form](const Child& child) { return child.form == form; });
    return found == children_.end() ? nullptr : &*found;
}

ChildArea::Child* ChildArea::Find(const Form* form) {
    return const_cast<Child*>(std::as_const(*this).Find(form));
}

void ChildArea::FocusMoved(QWidget* to) {
    Form* form = FormOf(to);
    Child* child = form ? Find(form) : nullptr;
    if (!child || form->isHidden()) return;  // A form that goes passes the keyboard round inside itself.
    child->focus = to;
    if (active_ != form) Activate(form);
}

void ChildArea::ActivateFront() {
    active_ = nullptr;
    const QObjectList& stacked = children();  // in painting order, the frontmost last
    for (auto child = stacked.rbegin(); child != stacked.rend() && !active_; ++child) {
        auto* form = qobject_cast<Form*>(*child);
        if (form && form->isVisibleTo(this)) Activate(form);
    }
}

void ChildArea::Left(Form* form) {
    if (Child* child = Find(form)) child->minimized = false;
    if (form->testAttribute(Qt::WA_DeleteOnClose))
        std::erase_if(children_, [form](const Child& child) { return child.form == form; });
}

bool ChildArea::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
            update();
            break;
        case QEvent::Hide:
            if (!isVisible()) break;  // the whole frame went
            if (active_ == object) ActivateFront();
            if (tiled_) PlaceTiles();
            update();
            emit FormsChanged();
            break;
        default:
            break;
    }
    return QWidget::eventFilter(object, event);
}

void ChildArea::paintEvent(QPaintEvent*) {
    // Scaled once for a size: forms are dragged over it.
    const double ratio = devicePixelRatioF();
    if (const QSize pixels = (QSizeF(size()) * ratio).toSize(); painted_.size() != pixels) {
        painted_ = QPixmap(pixels);
        painted_.setDevicePixelRatio(ratio);
        painted_.fill(palette().color(QPalette::Mid));
        QPainter scaling(&painted_);
        background_.PaintCovering(scaling, rect());
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, painted_);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Form* form : OpenForms()) {
        if (form->isVisible()) PaintShadow(painter, form->geometry(), form == active_);
    }
}

// A form must stay within reach when the frame shrinks.
void ChildArea::resizeEvent(QResizeEvent*) {
    for (Form* form : OpenForms()) {
        if (form->isWindow()) continue;
        if (form->IsMaximized()) {
            form->FillArea();
        } else {
            form->MoveTo(form->pos());
        }
    }
    if (tiled_) PlaceTiles();
}

}  // namespace norvelis::ui
