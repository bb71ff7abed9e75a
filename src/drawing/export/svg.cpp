#include "drawing/export/svg.h"

#include <fmt/format.h>

#include <QBuffer>
#include <cmath>
#include <pugixml.hpp>
#include <sstream>

namespace norvelis::drawing::render {

namespace {

/// A length in points, without needless digits.
std::string Number(double units) {
    double value = std::round(units / kUnitsPerPoint * 1000) / 1000;
    if (value == 0) value = 0;  // No minus zero.
    return fmt::format("{}", value);
}

std::string Color(const QColor& color) {
    return color.name().toStdString();
}

std::string PathData(const QPainterPath& path) {
    std::string data;
    const auto add = [&data](const char* letter, const QPainterPath::Element& element) {
        data += letter + Number(element.x) + ' ' + Number(element.y);
    };
    for (int i = 0; i < path.elementCount(); ++i) {
        const auto element = path.elementAt(i);
        switch (element.type) {
            case QPainterPath::MoveToElement:
                add("M", element);
                break;
            case QPainterPath::LineToElement:
                add("L", element);
                break;
            case QPainterPath::CurveToElement:
                add("C", element);
                break;
            case QPainterPath::CurveToDataElement:
                add(" ", element);
                break;
        }
    }
    return data;
}

std::string Matrix(const QTransform& m) {
    return fmt::format("matrix({:.6g} {:.6g} {:.6g} {:.6g} {} {})", m.m11(), m.m12(), m.m21(), m.m22(),
                       Number(m.dx()), Number(m.dy()));
}

class Writer {
  public:
    Writer(const Scene& scene, const engine::ShapeLinks& links) : scene_(scene), links_(links) {}

    std::string Write() {
        auto declaration = document_.append_child(pugi::node_declaration);
        declaration.append_attribute("version") = "1.0";
        declaration.append_attribute("encoding") = "UTF-8";
        root_ = document_.append_child("svg");
        Set(root_, "xmlns", "http://www.w3.org/2000/svg");
        Set(root_, "xmlns:xlink", "http://www.w3.org/1999/xlink");
        Set(root_, "width", Number(scene_.size.width()) + "pt");
        Set(root_, "height", Number(scene_.size.height()) + "pt");
        Set(root_, "viewBox", "0 0 " + Number(scene_.size.width()) + ' ' + Number(scene_.size.height()));
        if (!scene_.title.isEmpty()) AddText(root_, "title", scene_.title);
        definitions_ = root_.append_child("defs");
        auto paper = root_.append_child("rect");
        Set(paper, "width", Number(scene_.size.width()));
        Set(paper, "height", Number(scene_.size.height()));
        Set(paper, "fill", "#ffffff");
        for (const Figure& figure : scene_.figures) Add(figure);
        if (!definitions_.first_child()) root_.remove_child(definitions_);
        std::ostringstream text;
        document_.save(text, "", pugi::format_raw, pugi::encoding_utf8);
        return text.str();
    }

  private:
    static void Set(pugi::xml_node node, const char* name, const std::string& value) {
        node.append_attribute(name) = value.c_str();
    }

    static void AddText(pugi::xml_node parent, const char* name, const QString& text) {
        parent.append_child(name).text() = text.toUtf8().constData();
    }

    void Add(const Figure& figure) {
        if (figure.marks.empty() && figure.text.fragments.empty() && figure.picture.isNull()) return;
        const auto link = links_.find(figure.shape);
        const bool isLinked = link != links_.end();
        auto parent = root_;
        const bool leadsOut = !figure.address.isEmpty() && !figure.address.startsWith('#');
        if (isLinked) {
            parent = root_.append_child("a");
            Set(parent, "xlink:href", link->second.address);
            Set(parent, "aria-label", link->second.name);
        } else if (leadsOut) {  // The file holds no other page.
            parent = root_.append_child("a");
            Set(parent, "xlink:href", figure.address.toStdString());
            if (!figure.addressText.isEmpty()) Set(parent, "xlink:title", figure.addressText.toStdString());
        }
        auto group = parent.append_child("g");
        const bool hasId = isLinked && !link->second.id.empty();
        Set(group, "id", hasId ? link->second.id : fmt::format("shape{}", figure.shape));
        if (!figure.tip.isEmpty()) AddText(group, "title", figure.tip);
        const Mark* before = nullptr;
        for (const Mark& mark : figure.marks) {
            AddMark(group, mark, before);
            if (!mark.clipped) before = &mark;
        }
        AddPicture(group, figure);
        AddText(group, figure.text);
    }

    static void AddPicture(pugi::xml_node group, const Figure& figure) {
        if (figure.picture.isNull()) return;
        QByteArray bytes;
        QBuffer buffer(&bytes);
        figure.picture.save(&buffer, "PNG");
        auto image = group.append_child("image");
        const QTransform& place = figure.picturePlace;
        const double unit = kUnitsPerPoint;
        Set(image, "width", "1");
        Set(image, "height", "1");
        Set(image, "preserveAspectRatio", "none");
        Set(image, "transform",
            Matrix(QTransform(place.m11() / unit, place.m12() / unit, place.m21() / unit, place.m22() / unit,
                              place.dx(), place.dy())));
        Set(image, "xlink:href", "data:image/png;base64," + bytes.toBase64().toStdString());
    }

    void AddMark(pugi::xml_node group, const Mark& mark, const Mark* before) {
        auto path = group.append_child("path");
        Set(path, "d", PathData(mark.path));
        SetFill(path, mark.fill);
        if (mark.path.fillRule() == Qt::OddEvenFill && mark.fill.style() != Qt::NoBrush)
            Set(path, "fill-rule", "evenodd");
        SetLine(path, mark.line);
        if (mark.clipped && before) {
            const std::string id = fmt::format("clip{}", ++clips_);
            auto clip = definitions_.append_child("clipPath");
            Set(clip, "id", id);
            Set(clip.append_child("path"), "d", PathData(before->path));
            Set(path, "clip-path", "url(#" + id + ')');
        }
    }

    void SetFill(pugi::xml_node path, const QBrush& brush) {
        if (brush.style() == Qt::NoBrush) return Set(path, "fill", "none");
        if (const QGradient* gradient = brush.gradient())
            return Set(path, "fill", "url(#" + GradientId(*gradient) + ')');
        Set(path, "fill", Color(brush.color()));
        if (brush.color().alpha() < 255)
            Set(path, "fill-opacity", fmt::format("{:.3g}", brush.color().alphaF()));
    }

    static void SetLine(pugi::xml_node path, const QPen& pen) {
        if (pen.style() == Qt::NoPen) return;
        Set(path, "stroke", Color(pen.color()));
        if (pen.color().alpha() < 255)
            Set(path, "stroke-opacity", fmt::format("{:.3g}", pen.color().alphaF()));
        Set(path, "stroke-width", Number(pen.widthF()));
        if (pen.capStyle() == Qt::RoundCap) Set(path, "stroke-linecap", "round");
        if (pen.capStyle() == Qt::SquareCap) Set(path, "stroke-linecap", "square");
        if (pen.joinStyle() == Qt::RoundJoin) Set(path, "stroke-linejoin", "round");
        if (pen.style() != Qt::CustomDashLine) return;
        std::string dashes;
        for (const qreal dash : pen.dashPattern())
            dashes += (dashes.empty() ? "" : " ") + Number(dash * pen.widthF());
        Set(path, "stroke-dasharray", dashes);
    }

    std::string GradientId(const QGradient& gradient) {
        const std::string id = fmt::format("gradient{}", ++gradients_);
        const bool radial = gradient.type() == QGradient::RadialGradient;
        auto node = definitions_.append_child(radial ? "radialGradient" : "linearGradient");
        Set(node, "id", id);
        const auto set = [&node](const char* name, double value) {
            Set(node, name, fmt::format("{:.4g}", value));
        };
        if (radial) {
            const auto& shape = static_cast<const QRadialGradient&>(gradient);
            set("cx", shape.center().x()), set("cy", shape.center().y()), set("r", shape.radius());
        } else {
            const auto& shape = static_cast<const QLinearGradient&>(gradient);
            set("x1", shape.start().x()), set("y1", shape.start().y());
            set("x2", shape.finalStop().x()), set("y2", shape.finalStop().y());
        }
        for (const auto& [offset, color] : gradient.stops()) {
            auto stop = node.append_child("stop");
            Set(stop, "offset", fmt::format("{:.4g}", offset));
            Set(stop, "stop-color", Color(color));
            if (color.alpha() < 255) Set(stop, "stop-opacity", fmt::format("{:.3g}", color.alphaF()));
        }
        return id;
    }

    void AddText(pugi::xml_node group, const TextPicture& picture) {
        if (picture.fragments.empty()) return;
        auto text = group.append_child("text");
        Set(text, "xml:space", "preserve");
        Set(text, "font-kerning", "none");  // As the lines were measured.
        if (!picture.place.isIdentity()) Set(text, "transform", Matrix(picture.place));
        for (const Fragment& fragment : picture.fragments) {
            auto span = text.append_child("tspan");
            Set(span, "x", Number(fragment.start.x()));
            Set(span, "y", Number(fragment.start.y()));
            Set(span, "font-family", Family(fragment.font));
            Set(span, "font-size", Number(fragment.font.pixelSize()));
            if (fragment.font.bold()) Set(span, "font-weight", "bold");
            if (fragment.font.italic()) Set(span, "font-style", "italic");
            if (const std::string lines = Decoration(fragment.font); !lines.empty())
                Set(span, "text-decoration", lines);
            Set(span, "fill", Color(fragment.color));
            if (fragment.color.alpha() < 255)
                Set(span, "fill-opacity", fmt::format("{:.3g}", fragment.color.alphaF()));
            span.text() = fragment.text.toUtf8().constData();
        }
    }

    static std::string Decoration(const QFont& font) {
        const char* both = font.underline() && font.strikeOut() ? " " : "";
        return std::string(font.underline() ? "underline" : "") + both +
               (font.strikeOut() ? "line-through" : "");
    }

    /// The family with its equals in measure, so that a viewer without the first keeps the line widths.
    static std::string Family(const QFont& font) {
        std::string families;
        for (const QString& family : font.families())
            families += (families.empty() ? "" : ", ") + family.toStdString();
        return families;
    }

    const Scene& scene_;
    const engine::ShapeLinks& links_;
    pugi::xml_document document_;
    pugi::xml_node root_, definitions_;
    int clips_ = 0, gradients_ = 0;
};

}  // namespace

std::string SvgText(const Scene& scene, const engine::ShapeLinks& links) {
    return scene.foreign ? scene.foreign->svg : Writer(scene, links).Write();
}

}  // namespace norvelis::drawing::render
