#include "commands/difference_drawing.h"

#include "base/fixed_seed.h"
#include "commands/marked_schema.h"
#include "store/temporary_store.h"

namespace norvelis::commands {

DrawnDifferences DrawDifferences(AppState& app, engine::DrawingEngine& engine,
                                 const compare::ComparedEditions& editions,
                                 const std::optional<std::string>& location) {
    const MarkedSchema marked = MarkSchema(editions);
    const TemporaryStore store;
    dictionary::WriteSchema(*store, marked.contents);

    const FixedSeed seed(app.random);
    DrawScreen noScreen;
    DrawingState drawing(app, *store, engine, noScreen);
    drawing.marks = &marked.marks;
    drawing.options.color = false;  // The fill of a box is its mark.
    drawing.options.visible = false;
    drawing.options.location = location;
    drawing.takesSnapshots = false;
    DrawnDifferences result;
    drawing.report = [&result](const std::string& text) { result.words.push_back(text); };
    result.drawn = DrawMarkedSchema(drawing, marked.contents.name);
    result.words.insert(result.words.end(), drawing.notWritten.begin(), drawing.notWritten.end());
    return result;
}

}  // namespace norvelis::commands
