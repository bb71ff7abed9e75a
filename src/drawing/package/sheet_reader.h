#pragma once

#include <functional>
#include <memory>
#include <pugixml.hpp>
#include <vector>

#include "drawing/model/document.h"

namespace norvelis::drawing {

/// Reads what SheetWriter writes: cells, sections, texts and shapes, wherever they stand.
class SheetReader {
  public:
    /// Absurd counts end the reading with a refusal.
    static constexpr int kMostShapes = 400000;
    static constexpr int kDeepestGroup = 48;

    /// The picture behind a relationship ID of the part being read; null when there is none.
    using FindPicture = std::function<std::unique_ptr<ForeignPicture>(const std::string& relationship)>;

    explicit SheetReader(Document& document) : document_(document) {}

    void SheetContent(const pugi::xml_node& element, Sheet& sheet);
    /// Style references, once all styles are there.
    void Styles(const pugi::xml_node& element, Sheet& sheet);
    /// The shapes of a canvas, not yet tied to their masters. Group depth is checked.
    void Shapes(const pugi::xml_node& parent, Canvas& canvas, const FindPicture& findPicture);
    /// Ties the instances on all canvases to masters; refuses masters that are made of themselves.
    void TieToMasters();

  private:
    struct Tie {
        Shape* shape;
        Canvas* canvas;
        int master;
        int masterShape;
    };
    std::unique_ptr<Shape> ReadShape(const pugi::xml_node& element, Canvas& canvas,
                                     const FindPicture& findPicture, int depth);
    void Cells(const pugi::xml_node& element, CellList& cells, Name section);
    void ReadSection(const pugi::xml_node& element, Sheet& sheet);
    TextRuns ReadText(const pugi::xml_node& element) const;
    void RefuseCycles() const;

    Document& document_;
    std::vector<Tie> ties_;
    int shapes_ = 0;
};

}  // namespace norvelis::drawing
