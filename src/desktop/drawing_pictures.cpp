#include "desktop/drawing_pictures.h"

#include <QPainter>

#include "base/failure.h"
#include "drawing/render/open.h"
#include "drawing/render/tile_cache.h"

namespace norvelis::desktop {

namespace {

using drawing::render::Figure;
using drawing::render::Scene;

class ScenePicture : public ui::DrawingPicture {
  public:
    explicit ScenePicture(Scene scene) : scene_(std::move(scene)) { tiles_.Show(&scene_); }

    QSizeF PageSize() const override { return scene_.size; }
    double UnitsPerInch() const override { return drawing::render::kUnitsPerInch; }
    void Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio) override {
        tiles_.Paint(painter, view, scale, devicePixelRatio);
    }
    std::optional<Shape> ShapeAt(QPointF place, double slack) const override {
        const Figure* figure = scene_.At(place, slack);
        return figure ? std::optional(Describe(*figure)) : std::nullopt;
    }
    std::optional<Shape> ShapeNamed(const QString& name) const override {
        for (const Figure& figure : scene_.figures) {
            if (figure.name.compare(name, Qt::CaseInsensitive) == 0) return Describe(figure);
        }
        return std::nullopt;
    }

  private:
    static Shape Describe(const Figure& figure) {
        return {figure.name, figure.tip, figure.address, figure.bounds};
    }

    Scene scene_;
    drawing::render::TileCache tiles_;
};

}  // namespace

std::unique_ptr<ui::DrawingPicture> OpenDrawingPicture(const QString& path) {
    std::vector<Scene> pages = drawing::render::OpenPages(path.toStdString());
    if (pages.empty()) throw RuntimeFailure(FailureNumber::DeviceIoError, "the drawing has no page");
    return std::make_unique<ScenePicture>(std::move(pages.front()));
}

}  // namespace norvelis::desktop
