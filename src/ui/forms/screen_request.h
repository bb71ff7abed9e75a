#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "browse/find_index.h"
#include "browse/record_tree.h"
#include "core/host.h"
#include "diagram/record_choice.h"

// What the frame and screens ask of a screen that they do not know by class. Each request names its screen,
// which is made when it is not there yet, and takes the request in Form::Take.
namespace norvelis::ui {

/// Fills the tree from the store, as a long command.
struct LoadTree {
    static constexpr Screen kScreen = Screen::Treeview;
};
/// Fills the tree again in the middle of a long command.
struct RefreshTree {
    static constexpr Screen kScreen = Screen::Treeview;
};
/// Draws what the dictionary holds in the middle of a long command: all on one page, or a file for each
/// parent.
struct DrawDictionary {
    static constexpr Screen kScreen = Screen::Treeview;
    bool singlePage;
};
/// Draws a part of a schema, as a long command, and shows it.
struct DrawChosen {
    static constexpr Screen kScreen = Screen::Treeview;
    std::string schema;
    RecordChoice choice;
};
/// Shows the larger tree; it is filled unless it was open.
struct ShowLargerTree {
    static constexpr Screen kScreen = Screen::TreeviewMax;
};
/// Selects something that was found in the tree, and marks it in its saved drawing beside the tree. A record
/// that the tree does not have is shown in the list.
struct ShowInTree {
    static constexpr Screen kScreen = Screen::Treeview;
    FoundName found;
};
/// Shows the record of something that was found between its owners and its members, a field by its row.
struct ShowInList {
    static constexpr Screen kScreen = Screen::Listview;
    FoundName found;
};
/// Shows this record, the root of the tree, or with a schema as the root the whole schema.
struct IsolateRecord {
    static constexpr Screen kScreen = Screen::IsolateView;
    RecordTree tree;
};
/// Shows this drawing file in the larger window; empty for none.
struct ShowDrawing {
    static constexpr Screen kScreen = Screen::DrawingViewer;
    std::string file;
    int page = 0;  ///< Counted from 0.
};
/// Shows the schema report of the settings: at a line, or a set, or the section of a record or a field in it;
/// with none of them at the place where one was. What is wrong with the report, or that it is not the one of
/// the schema, is said in a box.
struct ShowReport {
    static constexpr Screen kScreen = Screen::ReportViewer;
    std::string record = {}, field = {}, set = {};
    std::uint64_t line = 0;   ///< From 1.
    std::string schema = {};  ///< That it is about; empty: whichever.
};
/// Lets the person pick the schema report.
struct PickReport {
    static constexpr Screen kScreen = Screen::Settings;
};
/// Lets the person pick the drawing folder.
struct PickDrawingFolder {
    static constexpr Screen kScreen = Screen::Settings;
};

/// Lets the person find anything of the dictionary by its name.
struct FindAnything {
    static constexpr Screen kScreen = Screen::Find;
};
/// Shows what reading the dictionary's reports lost, as it is in the store now.
struct ShowFindings {
    static constexpr Screen kScreen = Screen::Findings;
};

/// Shows this drawing file as the sheets of paper that it takes, to be printed.
struct PreviewPrint {
    static constexpr Screen kScreen = Screen::PrintPreview;
    std::string file;
};
/// Shows the page of help that is about a screen.
struct ShowHelp {
    static constexpr Screen kScreen = Screen::Help;
    Screen about;
};

using ScreenRequest = std::variant<LoadTree, RefreshTree, DrawDictionary, DrawChosen, ShowLargerTree,
                                   ShowInTree, ShowInList, IsolateRecord, ShowDrawing, ShowReport, PickReport,
                                   PickDrawingFolder, FindAnything, ShowFindings, ShowHelp, PreviewPrint>;

inline Screen ScreenOf(const ScreenRequest& request) {
    return std::visit([](const auto& each) { return each.kScreen; }, request);
}

}  // namespace norvelis::ui
