#include "ui/screens/list/record_network.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>

#include "ui/controls/picture_controls.h"
#include "ui/controls/record_box.h"
#include "ui/forms/form.h"
#include "ui/screens/list/neighbor_list.h"

namespace norvelis::ui {

namespace {

constexpr int kArrowLength = 40, kArrowThickness = 16, kHeadLength = 9, kHeadHalf = 5;
constexpr int kButtonAir = 4;  ///< Above and below the button.

/// A line from the control before to the one behind, with its head at the end.
class Arrow : public QWidget {
  public:
    Arrow(const char* name, Qt::Orientation orientation, QWidget* parent)
        : QWidget(parent), down_(orientation == Qt::Vertical) {
        setObjectName(name);
        if (down_) {
            setFixedWidth(kArrowThickness);
            setMinimumHeight(kHeadLength * 2);
        } else {
            setFixedWidth(kArrowLength);
        }
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor color = palette().color(QPalette::WindowText);
        const double length = down_ ? height() : width(), across = (down_ ? width() : height()) / 2.0;
        if (down_) painter.setTransform(QTransform(0, 1, 1, 0, 0, 0));  // x and y change places.
        painter.setPen(QPen(color, 1.5));
        painter.drawLine(QPointF(0, across), QPointF(length - kHeadLength, across));
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPolygon(QPolygonF{QPointF(length, across),
                                      QPointF(length - kHeadLength, across - kHeadHalf),
                                      QPointF(length - kHeadLength, across + kHeadHalf)});
    }

  private:
    bool down_;
};

/// A list or arrow that is hidden leaves its place empty, so that the others do not jump about.
void KeepPlace(QWidget& part) {
    QSizePolicy policy = part.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    part.setSizePolicy(policy);
}

QVBoxLayout* Column() {
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    return column;
}

}  // namespace

RecordNetwork::RecordNetwork(QWidget* form)
    : QWidget(form),
      cmdBack_(new SkinButton("cmdBack", "BACK", this)),
      box_(new RecordBox(QPalette::Base, QPalette::Text, this)),
      owners_(MakeEnd("lblOwners", "FromList", "Owners", new Arrow("imgArrow0", Qt::Horizontal, this))),
      members_(MakeEnd("lblMembers", "ToList", "Members", new Arrow("imgArrow1", Qt::Vertical, this))) {
    cmdBack_->setToolTip("Show the record chosen before this one");
    cmdBack_->setEnabled(false);
    box_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    owners_.arrow->setFixedHeight(box_->sizeHint().height());  // Its middle is the box's.

    auto* before = Column();
    before->addWidget(owners_.caption);
    before->addWidget(owners_.list, 1);
    auto* between = Column();
    between->addWidget(owners_.arrow);
    between->addStretch(1);
    auto* belowBox = new QGridLayout;
    belowBox->addWidget(members_.caption, 0, 0, Qt::AlignBottom);
    belowBox->addWidget(members_.arrow, 0, 1);
    belowBox->addWidget(cmdBack_, 0, 2, Qt::AlignRight | Qt::AlignVCenter);
    belowBox->setRowMinimumHeight(0, cmdBack_->sizeHint().height() + 2 * kButtonAir);
    belowBox->setColumnStretch(0, 1);
    belowBox->setColumnStretch(2, 1);
    auto* behind = Column();
    behind->addWidget(box_);
    behind->addLayout(belowBox);
    behind->addWidget(members_.list, 1);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addLayout(before, 2);
    row->addLayout(between);
    row->addLayout(behind, 3);
}

QWidget& RecordNetwork::Box() const {
    return *box_;
}

RecordNetwork::End RecordNetwork::MakeEnd(const char* caption, const char* list, const char* spoken,
                                          QWidget* arrow) {
    const End end{MakeLabel(this, caption, {}), new NeighborList(list, spoken, this), arrow};
    end.caption->setContentsMargins(0, 0, 0, 3);
    end.list->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    for (QWidget* part : {static_cast<QWidget*>(end.list), arrow}) KeepPlace(*part);
    connect(end.list, &NeighborList::Chosen, this, &RecordNetwork::Chosen);
    return end;
}

void RecordNetwork::Show(const ChosenRecord& chosen) {
    const bool any = chosen.record.labels || !chosen.owners.empty() || !chosen.members.empty();
    setVisible(any);
    box_->Fill(chosen.record.labels.value_or(RecordLabels{}));
    const bool fromOwners = owners_.list->hasFocus(), fromMembers = members_.list->hasFocus();
    owners_.Show(chosen.owners, "OWNER");
    members_.Show(chosen.members, "MEMBER");
    // Who came by keys to where the network ends turns around.
    if (fromOwners && chosen.owners.empty()) members_.list->setFocus();
    if (fromMembers && chosen.members.empty()) owners_.list->setFocus();
}

void RecordNetwork::End::Show(const std::vector<Neighbor>& neighbors, const char* one) const {
    caption->setText(neighbors.empty() ? QString("NO %1").arg(one) : QString("%1S").arg(one));
    list->Show(neighbors);
    list->setVisible(!neighbors.empty());
    arrow->setVisible(!neighbors.empty());
}

}  // namespace norvelis::ui
