#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace norvelis::ui {

/// The line over a drawing in which one types what is to be found there. It only takes the text; the control
/// below it finds.
class DrawingFindBar : public QWidget {
    Q_OBJECT

  public:
    explicit DrawingFindBar(QWidget* parent);

    void Open();  ///< With the former text, to be typed over.
    QString Text() const;
    /// Which of how many is in the middle, counted from 1, or 0 when all are on other pages; nothing is said
    /// while there is no text.
    void ShowCount(std::size_t present, std::size_t count);

  signals:
    void Typed();
    void NextWanted();
    void PreviousWanted();
    void CloseWanted();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent*) override;

  private:
    QLineEdit* txtFind_;
    QLabel* lblFound_;
};

}  // namespace norvelis::ui
