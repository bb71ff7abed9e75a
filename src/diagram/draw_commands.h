#pragma once

#include <functional>
#include <string>
#include <vector>

#include "browse/record_tree.h"
#include "diagram/draw_sequence.h"
#include "diagram/drawing_state.h"

// The commands that make drawings from the dictionary. Where a command takes the record tree, it draws what
// has a node there and brings the nodes into view; without a tree it draws all parents of the schema.
namespace norvelis {

/// The entry of both kinds: asks, then draws every dictionary that is agreed to on one page (gSingleDrawing),
/// or every parent of every dictionary in a file of its own.
void DrawVisioDiagram(DrawingState& drawing, const RecordTree* tree);

/// One whole dictionary: location\schema\schema.vsd. One without a name is refused.
DrawResult DrawVisioDiagramSingle(DrawingState& drawing, const std::string& schema, const RecordTree* tree);
/// The dictionary without a name: location\name\name.vsd.
DrawResult DrawNamelessSchema(DrawingState& drawing, const std::string& name);

/// The same with the differences marked that `marks` of the state has, and a legend of the marks:
/// location\schema\schema differences.vsd, so that the schema's own drawing stays.
DrawnFile DrawMarkedSchema(DrawingState& drawing, const std::string& schema);

/// Every parent of every dictionary: location\schema\record.vsd.
void DrawVisioDiagramSeparate(DrawingState& drawing, const RecordTree* tree);

/// Every parent of gDrawSchema; without an engine it ends at the first.
struct SeparateResult {
    int saved = 0;
    std::vector<std::string> notSaved;  ///< The records whose drawing is not on disk.
    bool noEngine = false;
};
SeparateResult DrawVisioDiagramSeparateParent(DrawingState& drawing, const RecordTree* tree, bool visible);

/// One parent of gDrawSchema with all that is below it.
DrawResult DrawParentDrawing(DrawingState& drawing, const std::string& recordName, bool visible);

/// One whole dictionary for a schedule: asks nothing, shows nothing, takes no snapshots;
/// ApplicationFolder\batchjobs\job\schema.vsd. What a person would have read in a box goes to `report`.
DrawResult DrawScheduledDiagram(DrawingState& drawing, const std::string& schema, const std::string& job);

/// What the isolate screen shows: its tree, whose root is a record or the schema itself. NoEngine is also
/// used for a draw that was not begun, for want of a folder.
DrawResult ProcessSingle(DrawingState& drawing, const std::string& schema, const RecordTree& Tviewrec);

/// One record with all that is below it, as ProcessSingle draws it.
DrawResult DrawIsolatedRecord(DrawingState& drawing, const std::string& schema, const std::string& recordName,
                              bool visible);

/// Lays each page of a saved drawing out again by the chosen layout and saves the file under its name. Not
/// saved when the file is not there or the engine refuses; the file is then as it was.
engine::SaveResult ApplyLayoutToFile(DrawingState& drawing, const std::string& file);

}  // namespace norvelis
