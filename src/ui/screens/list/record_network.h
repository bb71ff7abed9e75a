#pragma once

#include <QWidget>

#include "browse/record_list.h"

class QLabel;

namespace norvelis::ui {

class NeighborList;
class RecordBox;
class SkinButton;

/// The chosen record's box between its owners (FromList) and its members (ToList), with arrows from one to
/// the next. An end without records is empty, without list and arrow.
class RecordNetwork : public QWidget {
    Q_OBJECT

  public:
    explicit RecordNetwork(QWidget* form);

    void Show(const ChosenRecord& chosen);

    NeighborList& FromList() const { return *owners_.list; }
    NeighborList& ToList() const { return *members_.list; }
    QWidget& Box() const;  ///< The record itself.
    SkinButton& cmdBack() const { return *cmdBack_; }

  signals:
    void Chosen(const std::string& name);  ///< An owner or a member.

  private:
    /// The owners' or the members' side.
    struct End {
        QLabel* caption;
        NeighborList* list;
        QWidget* arrow;
        void Show(const std::vector<Neighbor>& neighbors, const char* one) const;
    };
    End MakeEnd(const char* caption, const char* list, const char* spoken, QWidget* arrow);

    SkinButton* cmdBack_;
    RecordBox* box_;
    End owners_, members_;
};

}  // namespace norvelis::ui
