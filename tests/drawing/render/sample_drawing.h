#pragma once

#include <memory>
#include <string>
#include <vector>

#include "drawing/model/document.h"

namespace norvelis::drawing {

/// A drawing put together by hand, values without formulas: a page of 4 by 3 inches, boxes and lines on it.
class SampleDrawing {
  public:
    SampleDrawing() {
        AddStandardStyles(document);
        AddPage(4, 3);
    }

    Page& AddPage(double width, double height) {
        Page& added = document.AddPage("Page-" + std::to_string(document.pages.size() + 1));
        added.sheet.cells.Set(Name::PageWidth, width).Set(Name::PageHeight, height);
        return added;
    }

    /// A filled box without line around its pin.
    std::unique_ptr<Shape> Box(double x, double y, double width, double height, const std::string& color) {
        auto shape = MakeShape();
        shape->cells.Set(Name::PinX, x).Set(Name::PinY, y).Set(Name::Width, width).Set(Name::Height, height);
        shape->cells.Set(Name::LocPinX, width / 2).Set(Name::LocPinY, height / 2);
        shape->cells.Set(Name::FillPattern, 1).Set(Name::LinePattern, 0).SetText(Name::FillForegnd, color);
        AddRow(*shape, Name::RelMoveTo, 0, 0);
        AddRow(*shape, Name::RelLineTo, 1, 0);
        AddRow(*shape, Name::RelLineTo, 1, 1);
        AddRow(*shape, Name::RelLineTo, 0, 1);
        AddRow(*shape, Name::RelLineTo, 0, 0);
        return shape;
    }

    Shape& AddBox(double x, double y, double width, double height, const std::string& color) {
        return First().Add(Box(x, y, width, height, color));
    }

    /// A line from (x, y) over (dx, dy), `weight` inches wide.
    Shape& AddLine(double x, double y, double dx, double dy, double weight, const std::string& color) {
        auto shape = MakeShape();
        shape->cells.Set(Name::PinX, x).Set(Name::PinY, y).Set(Name::Width, dx).Set(Name::Height, dy);
        shape->cells.Set(Name::LocPinX, 0).Set(Name::LocPinY, 0).Set(Name::FillPattern, 0);
        shape->cells.Set(Name::LineWeight, weight).Set(Name::LinePattern, 1).SetText(Name::LineColor, color);
        AddRow(*shape, Name::MoveTo, 0, 0);
        AddRow(*shape, Name::LineTo, dx, dy);
        shape->Find(Name::Geometry)->cells.Set(Name::NoFill, 1);
        return First().Add(std::move(shape));
    }

    Page& First() { return *document.pages.front(); }

    static void AddRow(Shape& shape, Name type, double x, double y) {
        Section& geometry = shape.At(Name::Geometry);
        Row& row = geometry.At(RowKey::Number(geometry.NextIndex(1)));
        row.type = type;
        row.cells.Set(Name::X, x).Set(Name::Y, y);
    }

    static Cell& Letters(Shape& shape, int row, Name cell) {
        return shape.LocalAt(CellRef(Name::Character, 0, RowKey::Number(row), cell));
    }

    static void AddLink(Shape& shape, const std::string& address, const std::string& description) {
        Row& row = shape.At(Name::Hyperlink).At(RowKey::Number(0));
        row.cells.SetText(Name::Address, address).SetText(Name::Description, description);
    }

    Document document;

  private:
    std::unique_ptr<Shape> MakeShape() {
        auto shape = std::make_unique<Shape>();
        shape->lineStyle = shape->fillStyle = shape->textStyle = document.FindStyle("Normal");
        return shape;
    }
};

}  // namespace norvelis::drawing
