#pragma once

#include <QAbstractItemModel>
#include <QApplication>
#include <QElapsedTimer>

namespace norvelis::ui {

/// What a person types into a list of names, letter by letter. After a pause the next letter begins again.
class TypedPrefix {
  public:
    /// The first name that begins with what was typed, in any letter case; invalid when there is none.
    QModelIndex Type(const QString& letter, const QAbstractItemModel& names) {
        if (!sinceLast_.isValid() || sinceLast_.hasExpired(QApplication::keyboardInputInterval()))
            typed_.clear();
        sinceLast_.start();
        typed_ += letter;
        return names.match(names.index(0, 0), Qt::DisplayRole, typed_, 1, Qt::MatchStartsWith)
            .value(0, QModelIndex());
    }

  private:
    QString typed_;
    QElapsedTimer sinceLast_;
};

}  // namespace norvelis::ui
