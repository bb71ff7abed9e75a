#pragma once

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainterPath>
#include <QPen>
#include <QString>
#include <QTransform>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing/render/ink.h"

class QSvgRenderer;

// A page made ready to be shown: every outline, colour, broken line of text and link settled once, in
// z-order. All outputs (screen, printer, PNG, PDF, SVG) only transcribe a scene, so they cannot differ in
// what they show. Unit: a tenth of a point; the origin is the page's upper left corner, y grows downwards.
namespace norvelis::drawing::render {

/// One outline with its fill and line.
struct Mark {
    QPainterPath path;
    QBrush fill;
    QPen line = Qt::NoPen;
    bool clipped = false;  ///< Shows only inside the figure's mark before it (the strokes of a hatch).
};

/// A run of one line of text in one style.
struct Fragment {
    QPointF start;  ///< Left end on the base line.
    double width = 0;
    QString text;
    QFont font;  ///< In pixels: scene units.
    QColor color;
};

struct TextPicture {
    QTransform place;         ///< From the text's own coordinates to the scene's.
    QRectF bounds;            ///< In its own coordinates.
    std::vector<QRectF> ink;  ///< The same of each line that is not blank.
    std::vector<Fragment> fragments;
};

struct Figure {
    int shape = 0;    ///< ID of the shape on the page.
    int onPage = -1;  ///< Place in Scene::shapes of the outermost group that holds it, or of itself; -1 for
                      ///< what is on a background page.
    QString name;
    QString tip;      ///< The shape's comment.
    QString address;  ///< Of its hyperlink; empty for none.
    QString addressText;
    bool locked = false;  ///< On a locked layer: it can not be taken hold of.
    QRectF bounds;        ///< Of all that is painted.
    std::vector<Mark> marks;
    QImage picture;           ///< A bitmap that came with the shape, or none;
    QTransform picturePlace;  ///< it fills the unit square under this.
    TextPicture text;
};

/// A shape of the page itself, outside of groups: what a person points at.
struct ShapeOnPage {
    int id = 0;
    QString name;
    QString text;  ///< Of all its parts, with LF between them.
    QString tip, address;
    bool locked = false;
    int begin = -1, end = -1;  ///< Places in Scene::shapes of what its ends are glued to; -1 for none.
};

/// A page that another program wrote and only libvisio can read: a picture without shapes.
struct ForeignPage {
    std::string svg;
    std::shared_ptr<QSvgRenderer> picture;
};

struct Scene {
    QSizeF size;
    QString title;  ///< Of the drawing.
    QString name;   ///< Of the page or master.
    std::optional<ForeignPage> foreign;
    std::vector<Figure> figures;  ///< Back first.
    std::vector<ShapeOnPage> shapes;
};

}  // namespace norvelis::drawing::render
