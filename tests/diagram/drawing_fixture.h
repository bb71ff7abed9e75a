#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "base/paths.h"
#include "core/settings.h"
#include "diagram/draw_commands.h"
#include "recording_engine.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

namespace norvelis {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::SizeIs;

class RecordingScreen : public DrawScreen {
  public:
    std::vector<NodeIndex> visible, selected, marked;
    std::vector<std::string> texts, files, saved;
    void EnsureVisible(NodeIndex node) override { visible.push_back(node); }
    void SelectNode(NodeIndex node) override { selected.push_back(node); }
    void MarkNode(NodeIndex node) override { marked.push_back(node); }
    void ShowText(const std::string& text) override { texts.push_back(text); }
    void ShowFile(const std::string& path) override { files.push_back(path); }
    void DrawingSaved(const std::string& path) override { saved.push_back(path); }
};

/// A drawing on the recording engine, with an empty store. Time does not pass, so that no snapshot comes.
class DrawingTest : public ::testing::Test {
  protected:
    DrawingTest() {
        drawing.steadyNow = [this] { return now; };
        drawing.gDrawSchema = "EMPSCHM";
        setvisiolocation(app, location);
    }

    /// Starts an engine by hand, for the tests of single steps.
    PageRef NewPage() {
        drawing.VisioApp = *engine.CreateHidden();
        const auto page =
            drawing.VisioApp->Documents()->Add("Basic Flowchart (US Units).vst")->Pages()->Item(1);
        lines.clear();
        return page;
    }
    std::vector<std::string> LinesWith(std::string_view part) const {
        return engine.recorder->LinesWith(part);
    }

    TestApp test;
    AppState& app = test.app;
    Connection* store = app.gConnection.get();
    const std::string location = test.folder.Path();
    recording::RecordingEngine engine;
    std::vector<std::string>& lines = engine.recorder->lines;
    RecordingScreen screen;
    DrawingState drawing{app, *store, engine, screen};
    std::chrono::steady_clock::time_point now{std::chrono::hours(1)};
};

/// A schema of two parents, with sets and an index.
class DrawnSchemaTest : public DrawingTest {
  protected:
    DrawnSchemaTest() {
        SchemaRows rows(*store);
        rows.Entry("OFFICE", "EMPLOYEE");
        rows.Entry("DEPARTMENT", "EMPLOYEE");
        rows.Record("EMPLOYEE", "COVERAGE");
        rows.Record("COVERAGE");
        rows.Set("DEPT-EMPLOYEE", "DEPARTMENT", "EMPLOYEE");
        rows.Set("EMP-COVERAGE", "EMPLOYEE", "COVERAGE");
        rows.Index("EMP-NDX", "EMPLOYEE", "EMP-NAME", "ASC");
    }

    std::string Target(const std::string& name, const std::string& schema = "EMPSCHM") const {
        return NativePath(location + "\\" + schema + "\\" + name + ".vsd");
    }
    /// Names of the boxes, in order of drawing.
    std::vector<std::string> Boxes() const {
        std::vector<std::string> names;
        for (const auto& line : LinesWith("Sheet.")) {
            const auto at = line.find(".Name = ");
            if (at != std::string::npos) names.push_back(line.substr(at + 8));
        }
        return names;
    }
};

}  // namespace norvelis
