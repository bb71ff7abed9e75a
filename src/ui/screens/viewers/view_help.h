#pragma once

#include <QTextBrowser>

#include "ui/forms/form.h"

class QBoxLayout;
class QLineEdit;
class QListWidget;

namespace norvelis::ui {

/// The browser of the help pages. They look as the screens do: their own style and the links of their heads
/// are for other browsers, and pictures are no wider than the window.
class HelpBrowser : public QTextBrowser {
  public:
    HelpBrowser(const QString& name, QWidget* parent);

    QVariant loadResource(int type, const QUrl& name) override;
};

/// The pages of help: contents, back and forward, find in the page.
class ViewHelp : public Form {
    Q_OBJECT

  public:
    explicit ViewHelp(const ScreenContext& context);

    void Take(const ScreenRequest& request) override;  ///< ShowHelp.

  protected:
    void SkinApplied() override;

  private:
    QBoxLayout* Buttons();
    void FillContents();
    void Show(const QString& page);
    void MarkInContents(const QUrl& url);
    void Find(bool forward);
    QString PathOf(const QString& page) const;

    QListWidget* lstContents_;
    HelpBrowser* webTarget_;
    QLineEdit* txtFind_;
    QLabel* lblFound_;
};

}  // namespace norvelis::ui
