#include "ui/controls/drawing_card.h"

namespace norvelis::ui {

DrawingCard::DrawingCard(QWidget* parent) : QLabel(parent) {
    setObjectName("DrawingCard");
    setAccessibleName("About the line");
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::NoFocus);  // The drawing keeps the keyboard.
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_NoMousePropagation);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setFrameShape(QFrame::Box);
    setMargin(8);
    setWordWrap(true);
    hide();
}

void DrawingCard::Tell(const QString& heading, const std::vector<std::array<std::string, 2>>& items) {
    // Names may hold runs of blanks.
    const auto asIs = [](const QString& text) {
        return "<span style='white-space: pre-wrap'>" + text.toHtmlEscaped() + "</span>";
    };
    const auto escaped = [&](const std::string& text) { return asIs(QString::fromStdString(text)); };
    QString text = "<b>" + asIs(heading) + "</b>";
    QString spoken = heading;
    if (!items.empty()) text += "<table cellspacing='2'>";
    for (const auto& [item, value] : items) {
        text += "<tr><td>" + escaped(item) + "&nbsp;&nbsp;</td><td>" + escaped(value) + "</td></tr>";
        spoken += ", " + QString::fromStdString(item + " " + value);
    }
    if (!items.empty()) text += "</table>";
    setText(text);
    setAccessibleDescription(spoken);
    show();
    raise();
}

}  // namespace norvelis::ui
