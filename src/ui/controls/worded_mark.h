#pragma once

#include <QHBoxLayout>
#include <type_traits>

#include "ui/controls/click_label.h"
#include "ui/controls/picture_controls.h"

namespace norvelis::ui {

/// A radio button or check box with its words beside it, which take a click for it, and by an underlined
/// letter the keyboard.
template <typename Mark>
class WordedMark : public QHBoxLayout {
  public:
    static_assert(std::is_same_v<Mark, SkinRadio> || std::is_same_v<Mark, SkinCheck>);

    WordedMark(const QString& name, const QString& caption, QWidget* parent) {
        setSpacing(5);
        mark_ = new Mark(name, std::is_same_v<Mark, SkinRadio> ? "Radio" : "Check",
                         QString(caption).remove('&'), parent);
        auto* words = new ClickLabel("lbl_" + name, caption, parent, [mark = mark_] { mark->click(); });
        words->setBuddy(mark_);
        addWidget(mark_);
        addWidget(words, 1);
    }
    Mark* Button() const { return mark_; }

  private:
    Mark* mark_;
};
using WordedRadio = WordedMark<SkinRadio>;
using WordedCheck = WordedMark<SkinCheck>;

}  // namespace norvelis::ui
