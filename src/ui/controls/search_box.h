#pragma once

#include <QLineEdit>

#include "browse/record_search.h"
#include "core/host.h"

namespace norvelis::ui {

class cTreeView;
class SkinButton;

/// The search of a tree screen: the text box Text1 and its button, whose caption says whether a click starts
/// at the top or goes on. They are where the screen puts them.
class SearchBox : public QObject {
    Q_OBJECT

  public:
    SearchBox(Host& host, cTreeView& tree, QWidget* form);

    QLineEdit* Text1() { return Text1_; }
    SkinButton* Button() { return button_; }

    void Search();

  signals:
    void Searching();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void ShowCaption();

    Host& host_;
    cTreeView& tree_;
    RecordSearch search_;
    QLineEdit* Text1_;
    SkinButton* button_;
};

}  // namespace norvelis::ui
