#include "ui/controls/elided_label.h"

#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

namespace norvelis::ui {
namespace {

QString TipOf(QWidget& label) {
    QHelpEvent help(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&label, &help);
    return QToolTip::text();
}

TEST(ElidedLabelTest, TheTextStaysWholeAndOnlyItsPaintingIsShortened) {
    const QString path = "/srv/diagrams/drawings/of a <schema>/EMPSCHM/EMPLOYEE.vsd";
    ElidedLabel label("lblFile", path, nullptr);
    label.resize(140, 20);
    label.show();
    EXPECT_EQ(label.text(), path);
    EXPECT_LT(label.minimumSizeHint().width(), 20) << "a form does not grow with it";
    EXPECT_EQ(TipOf(label), path.toHtmlEscaped());

    ElidedLabel end("lblEnd", "MPLOYEE.vsd", nullptr), cut("lblCut", path.left(40), nullptr);
    const auto rightPart = [](QWidget& widget) {
        widget.resize(140, 20);
        return widget.grab(QRect(100, 0, 40, 20)).toImage();
    };
    end.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(rightPart(label), rightPart(end)) << "the end of the path is in sight";
    cut.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_NE(rightPart(label), rightPart(cut));

    label.setToolTip("Visio Files saved here");
    EXPECT_EQ(TipOf(label), "Visio Files saved here<br>" + path.toHtmlEscaped());
    label.setToolTip("EMPSCHM: " + path);
    EXPECT_EQ(TipOf(label), label.toolTip().toHtmlEscaped()) << "it is not shown twice";
}

}  // namespace
}  // namespace norvelis::ui
