#pragma once

#include <algorithm>
#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/notes.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// Boxes in rows that one trunk serves: it comes in by the border of the pile, runs down between the boxes,
/// and over each row a track leads to the taps of its boxes. To placement and routing a pile is one box.
///
/// A pile has coordinates of its own: its middle at (0, 0), y downwards, what the trunk comes from above it.
class Pile {
  public:
    /// What is in a row, and the label of the line that leads to the middle of its top. The note of the box
    /// is below it or to its left.
    struct Cell {
        Box box;
        double labelWidth = 0, labelHeight = 0;
        double aside = 0;  ///< How far the box is to the right of the middle, for its note's sake.
        double Width() const { return std::max(box.width, labelWidth); }
        double Height() const {
            if (box.noteSide == NoteSide::Left) return HeightWithNote(box);
            return box.HasNote() ? box.height + kNoteGap + box.noteHeight : box.height;
        }
        /// From the top of the cell to the box.
        double Top() const { return box.noteSide == NoteSide::Left ? (Height() - box.height) / 2 : 0; }
    };
    enum class Trunk {
        Ends,         ///< It comes in by the top.
        GoesOn,       ///< It comes in by the top and goes on by the bottom.
        FromAnywhere  ///< It may come in by any side.
    };

    /// Rows of so many cells each, in their order.
    Pile(const std::vector<Cell>& cells, const std::vector<std::size_t>& rows, Trunk trunk,
         const Style& style);

    Box Size() const { return size_; }

    Point CenterOf(std::size_t cell) const { return places_[cell].center; }
    Point LabelOf(std::size_t cell) const { return {places_[cell].center.x, places_[cell].label}; }
    /// From a point on the border to the cell.
    std::vector<Point> PathTo(std::size_t cell, Point entry) const;
    /// From a point on the top to one on the bottom, past the boxes of a pile of one row.
    std::vector<Point> PathThrough(Point entry, Point exit) const;

    /// Whether a trunk from there comes from below, so that the pile is to be turned over.
    bool EntersFromBelow(Point entry) const;

  private:
    struct Place {
        Point center;
        double top = 0, label = 0;
        std::size_t row = 0;
    };
    /// Along the trunk to the track of the row.
    std::vector<Point> TrunkTo(std::size_t row, Point entry) const;

    Box size_;
    double side_ = 0;   ///< Width of the margins.
    double trunk_ = 0;  ///< Where the trunk runs.
    std::vector<Place> places_;
    std::vector<double> tracks_;
};

/// The width of rows, `rowGap` apart, that together are `ratio` times as wide as high.
double RowWidthFor(const std::vector<Pile::Cell>& cells, double ratio, double rowGap, const Style& style);

}  // namespace norvelis::layout
