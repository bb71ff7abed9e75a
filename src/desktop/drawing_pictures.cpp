#include "desktop/drawing_pictures.h"

#include <QPainter>

#include "base/failure.h"
#include "drawing/render/open.h"
#include "drawing/render/tile_cache.h"
#include "drawing/render/walk_scene.h"

namespace norvelis::desktop {

namespace {

using drawing::render::Scene;

/// Keeps the scenes of all pages, whoever shows one.
class ScenePicture : public ui::DrawingPicture {
  public:
    ScenePicture(std::shared_ptr<const void> owner, const Scene& scene)
        : owner_(std::move(owner)), scene_(scene), tiles_(scene) {}

    QSizeF PageSize() const override { return scene_.size; }
    double UnitsPerInch() const override { return drawing::render::kUnitsPerInch; }
    const QImage& Overview() const override { return tiles_.Overview(); }
    void OnReady(std::function<void()> ready) override { tiles_.OnReady(std::move(ready)); }
    void Prepare(const QRect& view, double scale, double devicePixelRatio) override {
        tiles_.Prepare(view, scale, devicePixelRatio);
    }
    bool Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio) override {
        return tiles_.Paint(painter, view, scale, devicePixelRatio);
    }

  private:
    std::shared_ptr<const void> owner_;
    const Scene& scene_;
    drawing::render::TileCache tiles_;
};

class ScenePages : public ui::DrawingPages, public std::enable_shared_from_this<ScenePages> {
  public:
    explicit ScenePages(std::vector<Scene> scenes) : scenes_(std::move(scenes)) {
        walks_.reserve(scenes_.size());
        for (const Scene& scene : scenes_) walks_.push_back(drawing::render::WalkOf(scene));
    }

    int Count() const override { return static_cast<int>(scenes_.size()); }
    QString Name(int page) const override {
        const QString& name = scenes_.at(static_cast<std::size_t>(page)).name;
        return name.isEmpty() ? QString("Page %1").arg(page + 1) : name;
    }
    const drawing::walk::PageWalk& Walk(int page) const override {
        return walks_.at(static_cast<std::size_t>(page));
    }
    std::unique_ptr<ui::DrawingPicture> Picture(int page) const override {
        return std::make_unique<ScenePicture>(shared_from_this(), scenes_.at(static_cast<std::size_t>(page)));
    }

  private:
    std::vector<Scene> scenes_;
    std::vector<drawing::walk::PageWalk> walks_;
};

}  // namespace

std::shared_ptr<const ui::DrawingPages> OpenDrawingPages(const QString& path) {
    std::vector<Scene> pages = drawing::render::OpenPages(path.toStdString());
    if (pages.empty()) throw RuntimeFailure(FailureNumber::DeviceIoError, "the drawing has no page");
    return std::make_shared<ScenePages>(std::move(pages));
}

}  // namespace norvelis::desktop
