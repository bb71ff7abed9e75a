#include "ui/forms/edge_grips.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <optional>
#include <utility>

namespace norvelis::ui {

namespace {

constexpr int kEdge = 5, kCorner = 8;  // Points.

constexpr std::array<Qt::Edges, 8> kEdges = {Qt::LeftEdge,
                                             Qt::RightEdge,
                                             Qt::TopEdge,
                                             Qt::BottomEdge,
                                             Qt::LeftEdge | Qt::TopEdge,
                                             Qt::RightEdge | Qt::BottomEdge,
                                             Qt::RightEdge | Qt::TopEdge,
                                             Qt::LeftEdge | Qt::BottomEdge};

Qt::CursorShape CursorFor(Qt::Edges edges) {
    if (edges == Qt::LeftEdge || edges == Qt::RightEdge) return Qt::SizeHorCursor;
    if (edges == Qt::TopEdge || edges == Qt::BottomEdge) return Qt::SizeVerCursor;
    return edges.testFlag(Qt::LeftEdge) == edges.testFlag(Qt::TopEdge) ? Qt::SizeFDiagCursor
                                                                       : Qt::SizeBDiagCursor;
}

class Grip : public QWidget {
  public:
    Grip(const GrippedForm& gripped, Qt::Edges edges)
        : QWidget(&gripped.form), gripped_(gripped), form_(gripped.form), edges_(edges) {
        setCursor(CursorFor(edges));
    }

    void Follow() {
        const bool across = edges_ == Qt::TopEdge || edges_ == Qt::BottomEdge;
        const bool down = edges_ == Qt::LeftEdge || edges_ == Qt::RightEdge;
        const QSize size(across ? form_.width()
                         : down ? kEdge
                                : kCorner,
                         down     ? form_.height()
                         : across ? kEdge
                                  : kCorner);
        setGeometry(QRect(QPoint(edges_ & Qt::RightEdge ? form_.width() - size.width() : 0,
                                 edges_ & Qt::BottomEdge ? form_.height() - size.height() : 0),
                          size));
    }

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        gripped_.pressed();
        if (event->button() != Qt::LeftButton) return;
        if (form_.isWindow() && form_.windowHandle()->startSystemResize(edges_)) return;
        held_ = Held{event->globalPosition().toPoint(), form_.geometry()};
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!held_) return;
        gripped_.dragged();
        form_.setGeometry(Dragged(event->globalPosition().toPoint() - held_->mouse));
    }
    void mouseReleaseEvent(QMouseEvent*) override { held_.reset(); }

  private:
    struct Held {
        QPoint mouse;
        QRect form;
    };

    QRect Dragged(QPoint by) const {
        const QSize smallest = gripped_.smallestSize();
        QRect to = held_->form;
        if (edges_ & Qt::LeftEdge)
            to.setLeft(std::min(to.left() + by.x(), to.right() + 1 - smallest.width()));
        if (edges_ & Qt::RightEdge)
            to.setRight(std::max(to.right() + by.x(), to.left() - 1 + smallest.width()));
        if (edges_ & Qt::BottomEdge)
            to.setBottom(std::max(to.bottom() + by.y(), to.top() - 1 + smallest.height()));
        if (edges_ & Qt::TopEdge) {
            // The caption stays within reach of the mouse.
            const int top = form_.isWindow() ? to.top() + by.y() : std::max(0, to.top() + by.y());
            to.setTop(std::min(top, to.bottom() + 1 - smallest.height()));
        }
        return to;
    }

    const GrippedForm& gripped_;
    QWidget& form_;
    Qt::Edges edges_;
    std::optional<Held> held_;
};

}  // namespace

EdgeGrips::EdgeGrips(GrippedForm gripped) : QObject(&gripped.form), gripped_(std::move(gripped)) {
    for (std::size_t i = 0; i < grips_.size(); ++i) {
        grips_[i] = new Grip(gripped_, kEdges[i]);
        grips_[i]->setObjectName(QString("grip%1").arg(i));
    }
}

void EdgeGrips::SetVisible(bool visible) {
    for (QWidget* grip : grips_) grip->setVisible(visible);
}

void EdgeGrips::Follow() {
    for (QWidget* grip : grips_) {
        static_cast<Grip*>(grip)->Follow();
        grip->raise();
    }
}

}  // namespace norvelis::ui
