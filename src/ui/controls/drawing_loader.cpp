#include "ui/controls/drawing_loader.h"

#include <QThread>
#include <exception>

namespace norvelis::ui {

namespace {

DrawingLoader::Result Read(const OpenDrawing& open, const QString& path,
                           const DrawingLoader::Prepare& prepare) {
    try {
        auto picture = open(path);
        prepare(*picture);
        return {std::move(picture), {}};
    } catch (const std::exception& failure) {
        return {nullptr, QString::fromUtf8(failure.what())};
    }
}

}  // namespace

DrawingLoader::DrawingLoader(OpenDrawing open) : open_(std::move(open)) {}

DrawingLoader::~DrawingLoader() {
    if (!thread_) return;
    thread_->wait();
    delete thread_;
}

void DrawingLoader::Load(const QString& path, Prepare prepare) {
    wanted_ = path;
    prepare_ = std::move(prepare);
    askedAgain_ = thread_ != nullptr;
    if (!thread_) Start();
}

void DrawingLoader::Forget() {
    wanted_.reset();
}

void DrawingLoader::Start() {
    askedAgain_ = false;
    thread_ = QThread::create(
        [this, path = *wanted_, prepare = prepare_] { result_ = Read(open_, path, prepare); });
    connect(thread_, &QThread::finished, this, &DrawingLoader::Finished);
    thread_->start();
}

void DrawingLoader::Finished() {
    thread_->deleteLater();
    thread_ = nullptr;
    if (!wanted_) {
        result_ = {};
    } else if (askedAgain_) {
        Start();
    } else {
        wanted_.reset();
        emit Loaded();
    }
}

}  // namespace norvelis::ui
