#pragma once

#include <functional>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/model/document.h"

namespace norvelis::drawing {

/// Reads what SheetWriter writes: cells, sections, texts and shapes, wherever they are. More of anything
/// than limits.h allows ends the reading with a refusal.
class SheetReader {
  public:
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
    int FontNamed(std::string_view name);
    void RefuseCycles() const;

    Document& document_;
    std::unordered_map<std::string, int> fonts_;
    std::vector<Tie> ties_;
    int shapes_ = 0;
    std::vector<unsigned> seenIn_ =
        std::vector<unsigned>(NamePool::kMost + 1);  ///< List of a name's last cell.
    unsigned list_ = 0;
};

}  // namespace norvelis::drawing
