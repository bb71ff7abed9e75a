#include "desktop/drawing_pictures.h"

#include <QPainter>

#include "base/failure.h"
#include "drawing/render/open.h"
#include "drawing/render/tile_cache.h"
#include "drawing/render/walk_scene.h"

namespace norvelis::desktop {

namespace {

using drawing::render::Scene;

class ScenePicture : public ui::DrawingPicture {
  public:
    explicit ScenePicture(Scene scene)
        : scene_(std::move(scene)), walk_(drawing::render::WalkOf(scene_)), tiles_(scene_) {}

    QSizeF PageSize() const override { return scene_.size; }
    double UnitsPerInch() const override { return drawing::render::kUnitsPerInch; }
    const drawing::walk::PageWalk& Walk() const override { return walk_; }
    const QImage& Overview() const override { return tiles_.Overview(); }
    void OnReady(std::function<void()> ready) override { tiles_.OnReady(std::move(ready)); }
    void Prepare(const QRect& view, double scale, double devicePixelRatio) override {
        tiles_.Prepare(view, scale, devicePixelRatio);
    }
    bool Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio) override {
        return tiles_.Paint(painter, view, scale, devicePixelRatio);
    }

  private:
    Scene scene_;
    drawing::walk::PageWalk walk_;
    drawing::render::TileCache tiles_;
};

}  // namespace

std::unique_ptr<ui::DrawingPicture> OpenDrawingPicture(const QString& path) {
    std::vector<Scene> pages = drawing::render::OpenPages(path.toStdString());
    if (pages.empty()) throw RuntimeFailure(FailureNumber::DeviceIoError, "the drawing has no page");
    return std::make_unique<ScenePicture>(std::move(pages.front()));
}

}  // namespace norvelis::desktop
