#pragma once

#include <QLabel>
#include <array>
#include <string>
#include <vector>

namespace norvelis::ui {

/// Words about a shape in a corner of the drawing, until something else is pointed at. The text can be
/// marked with the mouse and copied.
class DrawingCard : public QLabel {
  public:
    explicit DrawingCard(QWidget* parent);

    void Tell(const QString& heading, const std::vector<std::array<std::string, 2>>& items);
};

}  // namespace norvelis::ui
