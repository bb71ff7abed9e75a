#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "browse/record_tree.h"
#include "core/app_state.h"
#include "diagram/common.h"
#include "diagram/drawn_shapes.h"
#include "engine/drawing_engine.h"
#include "store/connection.h"

namespace norvelis {

class DifferenceMarks;  // diagram/difference_marks.h

using PageRef = engine::Ref<engine::Page>;
using ShapeRef = engine::Ref<engine::Shape>;
using CellRef = engine::Ref<engine::Cell>;

/// What the screen that ordered a drawing shows of it besides the progress bars. A program without screens
/// takes it as it is: nothing.
class DrawScreen {
  public:
    virtual ~DrawScreen() = default;
    virtual void EnsureVisible(NodeIndex) {}
    virtual void SelectNode(NodeIndex) {}  ///< Selected and in view.
    virtual void MarkNode(NodeIndex) {}    ///< Selected, red and in view.
    virtual void ShowText(const std::string&) {}
    virtual void ShowFile(const std::string&) {}      ///< The path of a drawing or snapshot, on the labels.
    virtual void DrawingSaved(const std::string&) {}  ///< The finished drawing is on disk under this path.
};

/// What the fill of a box tells in place of a colour of its tree or its own.
enum class BoxMeaning { None, Area, LocationMode };

/// What a person chose for this drawing; without a choice the settings decide, and whether to watch is asked.
struct DrawOptions {
    int layout = 0;  ///< Place in kLayoutTypes.
    std::optional<bool> color;
    std::optional<std::string> background;
    std::optional<std::string> location;  ///< Folder of the drawings.
    std::optional<bool> visible{};        ///< The engine shows its window.
    BoxMeaning meaning = BoxMeaning::None;
    bool fresh = false;            ///< The layout pays no heed to the drawing that is replaced.
    bool linesByOwner = false;     ///< Lines of one owner look alike; otherwise each has a random colour.
    bool pageForEachArea = false;  ///< Of a whole schema; otherwise it is on one page.
};

/// The fields of the box being drawn.
struct BoxFields {
    std::string gBoxRecordName, gBoxTableId, gBoxRecType, gBoxRecLen, gBoxRecMode, gBoxRecKey, gBoxDn,
        gBoxArea;
};

/// The state of drawing: what the commands share, and what belongs to the one drawing on the table.
///
/// A step that the engine refuses is skipped, and the rest of the drawing comes. A failure of the store is no
/// such step: it ends the draw as RuntimeFailure, and a drawing that was saved before stays. So does one when
/// the draw is canceled.
struct DrawingState {
    DrawingState(AppState& appState, Connection& dictionary, engine::DrawingEngine& engine,
                 DrawScreen& drawScreen)
        : app(appState), store(dictionary), drawingEngine(engine), screen(drawScreen) {}
    DrawingState(const DrawingState&) = delete;
    DrawingState& operator=(const DrawingState&) = delete;

    AppState& app;
    Connection& store;  ///< The dictionary that is drawn: gConnection, or the copy of a scheduled run.
    engine::DrawingEngine& drawingEngine;
    DrawScreen& screen;
    DrawOptions options;
    const DifferenceMarks* marks = nullptr;  ///< Of a drawing of differences; other drawings have none.

    bool gSingleDrawing = true;  ///< One file for the dictionary; otherwise one for each parent.
    std::string gDrawSchema;
    std::string gDrawFileName;  ///< Without extension, in separate mode.
    int savedFiles = 0;         ///< Drawings on disk so far.

    /// Where words to the person go.
    Reporter report = [this](const std::string& text) { app.host.MessageBox(text); };
    /// The same for what could come at every shape: each text once in a command.
    Reporter reportOnce = [this](const std::string& text) {
        if (reported.insert(text).second) report(text);
    };
    std::unordered_set<std::string> reported;
    std::vector<std::string> notWritten;  ///< By this command: a line for each file, with the reason.
    void BeginCommand() {
        reported.clear();
        notWritten.clear();
    }

    // One drawing.
    engine::Ref<engine::Application> VisioApp;
    double pointsOnA0 = 0;  ///< Of the drawing that was last made: PointsOnA0 of its largest page.
    bool colored = false;
    bool colorsEachBox = false;  ///< Each box has a colour of its own, and not the one of its parent's tree.
    /// Asked once: as a rule there are none, and a look for those of one record walks the table.
    bool storeHasIndexRows = true;
    std::vector<std::string> values;  ///< Of what the fills mean, folded, by name; read when first asked for.
    std::vector<std::string> owners;  ///< Of the schema's sets, likewise.

    // One page.
    PageRef formerPage;  ///< Of the drawing that is replaced; null where there is none to go by.
    DrawnShapes gDrawnShapes;
    ShapeIds gShapeIds;
    std::vector<DrawnLine> drawnLines;
    /// Records that are on other pages and here only named: what sets lead to. Names folded.
    std::unordered_set<std::string> references;
    std::unordered_set<std::string> walked;  ///< Records whose members have been walked, names folded.
    std::set<std::string> shownValues;       ///< Of what the fills mean.
    std::size_t drawnRecords = 0;
    std::unordered_set<std::string> drawnSets;  ///< Names folded.
    std::string gOwnerColor, gFillFormula;
    BoxFields box;

    // Snapshots come by the time that has passed and not by the size of the drawing.
    bool takesSnapshots = true;  ///< Off when nobody watches the drawing grow.
    std::function<std::chrono::steady_clock::time_point()> steadyNow = std::chrono::steady_clock::now;
    std::chrono::steady_clock::time_point nextSnapshot{};
};

/// A line of text on the progress form's second bar, the tree screen's and the screen's own.
void ShowText(DrawingState& drawing, const std::string& text);

/// Whether a row belongs to the schema that is drawn. A dictionary may hold a test and a production copy,
/// whose records and sets have the same names.
bool IsOfDrawnSchema(const DrawingState& drawing, const Recordset& row);

// Cell writes that skip a cell which is not there.
inline bool SetFormula(const CellRef& cell, const std::string& formula) {
    return cell && cell->SetFormula(formula);
}
inline bool SetFormulaU(const CellRef& cell, const std::string& formula) {
    return cell && cell->SetFormulaU(formula);
}
inline bool SetResultIU(const CellRef& cell, double value) {
    return cell && cell->SetResultIU(value);
}

inline const std::string kFlowchartStencil = "Basic Flowchart Shapes (US units).vss";
/// The layer of what belongs to the page and not to the diagram.
inline const std::string kDecorationLayer = "Background Design";
inline const std::string kSixPoints = "=6 pt.";
inline constexpr double kLabelPoints = 6;

}  // namespace norvelis
