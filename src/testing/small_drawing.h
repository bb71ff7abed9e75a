#pragma once

#include "drawing/model/document.h"

namespace norvelis::drawing {

inline void AddRectangle(Shape& shape) {
    const struct {
        Name type;
        const char *x, *y;
    } corners[] = {{Name::MoveTo, "Width*0", "Height*0"},
                   {Name::LineTo, "Width*1", "Height*0"},
                   {Name::LineTo, "Width*1", "Height*1"},
                   {Name::LineTo, "Width*0", "Height*1"},
                   {Name::LineTo, "Geometry1.X1", "Geometry1.Y1"}};
    Section& geometry = shape.At(Name::Geometry, 0);
    geometry.cells.Set(Name::NoFill, 0).Set(Name::NoLine, 0);
    const double width = Number(shape, Name::Width), height = Number(shape, Name::Height);
    int number = 0;
    for (const auto& corner : corners) {
        Row& row = geometry.At(RowKey::Number(++number));
        row.type = corner.type;
        row.cells.Set(Name::X, number == 2 || number == 3 ? width : 0, corner.x);
        row.cells.Set(Name::Y, number == 3 || number == 4 ? height : 0, corner.y);
    }
}

/// A box master of 1 by 0.75 inches, sized from its middle.
inline Master& AddBoxMaster(Document& document, const std::string& name) {
    Master& master = document.AddMaster(name);
    master.sheet.cells.Set(Name::PageWidth, 1).Set(Name::PageHeight, 0.75);
    auto shape = std::make_unique<Shape>();
    shape->lineStyle = shape->fillStyle = shape->textStyle = document.FindStyle("Normal");
    shape->cells.Set(Name::PinX, 0.5).Set(Name::PinY, 0.375).Set(Name::Width, 1).Set(Name::Height, 0.75);
    shape->cells.Set(Name::LocPinX, 0.5, "Width*0.5")
        .Set(Name::LocPinY, 0.375, "Height*0.5")
        .Set(Name::ObjType, 1);
    AddRectangle(*shape);
    master.Add(std::move(shape));
    return master;
}

}  // namespace norvelis::drawing
