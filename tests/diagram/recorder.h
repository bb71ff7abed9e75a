#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What a recording engine remembers: each operation becomes one line in `lines`, such as
//
//   Documents.Add "Basic Flowchart (US Units).vst"
//   Page-1.Drop "Process" at 3.5, 4 -> Sheet.1
//   Sheet.1!Char.Size.Formula = "=6 pt."
//   Sheet.1.Characters[0,8].CharProps Color = 2
//
// Steps from one object to its neighbour (Page.Document, Shape.Characters) and reads leave no line. Each
// line, step and read can be made to fail, and cells can be given values.
namespace norvelis::recording {

struct FakeShape {
    int id = 0;
    std::string name, master, text;
    std::map<std::string, double> values;  ///< By cell name in upper case, or "section,row,cell".
    std::vector<int> subShapes;
};

/// What all the handles of one engine share.
struct Recorder : std::enable_shared_from_this<Recorder> {
    std::vector<std::string> lines;
    /// Asked before each operation with its line; true makes it fail. A failed operation leaves its line with
    /// " FAILED".
    std::function<bool(const std::string& line)> refuse;
    /// Stencil file name -> its masters. A stencil that is not here can not be opened.
    std::map<std::string, std::vector<std::string>> stencils = {
        {"Basic Flowchart Shapes (US units).vss",
         {"Process", "Decision", "Terminator", "Off-page reference", "Annotation", "Dynamic connector"}},
        {"Backgrounds (US units).vss", {"Background none", "Background world"}},
        {"Borders and Titles (US units).vss", {"Title block deco", "Legend entry"}},
    };
    /// Cells that CellExistsU finds, such as "Prop.Duration".
    std::vector<std::string> existingCells;
    /// Scripted reads: "Sheet.1!1,1,0" -> 3.5. What was written last is read otherwise, or 0.
    std::map<std::string, double> values;
    std::string copyFailure;  ///< Of every save: why there is no .vsdx copy.
    /// What creating gives: nullopt fails, false gives a null reference.
    std::optional<bool> creation = true;

    bool Do(std::string line) {
        const bool refused = refuse && refuse(line);
        lines.push_back(std::move(line) + (refused ? " FAILED" : ""));
        return !refused;
    }
    /// Makes the n-th operation from now on fail (1 is the next).
    void FailCall(int n) {
        refuse = [n, seen = 0](const std::string&) mutable { return ++seen == n; };
    }
    /// Makes every operation fail whose line holds `part`.
    void FailWhere(std::string part) {
        refuse = [part](const std::string& line) { return line.find(part) != std::string::npos; };
    }
    /// The same for steps and reads, which have the name of their property.
    std::function<bool(const std::string& name)> refuseStep;
    bool Step(const std::string& name) const { return !(refuseStep && refuseStep(name)); }
    /// What a step or read gives: nothing (a null reference, an empty text) when it is made to fail.
    template <class Result>
    Result Give(const std::string& name, Result result) const {
        return Step(name) ? std::move(result) : Result();
    }

    std::vector<std::string> LinesWith(std::string_view part) const {
        std::vector<std::string> found;
        for (const auto& line : lines) {
            if (line.find(part) != std::string::npos) found.push_back(line);
        }
        return found;
    }

    /// State of the drawing: shapes in z-order, back first.
    std::vector<std::shared_ptr<FakeShape>> shapes;
    std::shared_ptr<FakeShape> pageSheet = std::make_shared<FakeShape>();
    std::string pageName = "Page-1";
    int pageCount = 1;  ///< All are the same page.
    std::vector<std::string> openDocuments;
    int nextId = 1, nextFont = 1;
    std::map<std::string, int> fonts;

    std::shared_ptr<FakeShape> Find(int id) const {
        for (const auto& shape : shapes) {
            if (shape->id == id) return shape;
        }
        return nullptr;
    }
};

using R = std::shared_ptr<Recorder>;

}  // namespace norvelis::recording
