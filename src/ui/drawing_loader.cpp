#include "ui/drawing_loader.h"

#include <QThread>
#include <exception>

namespace norvelis::ui {

namespace {

DrawingLoader::Result Read(const OpenDrawing& open, const QString& path) {
    try {
        return {open(path), {}};
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

void DrawingLoader::Load(const QString& path) {
    wanted_ = path;
    askedAgain_ = thread_ != nullptr;
    if (!thread_) Start();
}

void DrawingLoader::Forget() {
    wanted_.reset();
}

void DrawingLoader::Start() {
    reading_ = *wanted_;
    askedAgain_ = false;
    thread_ = QThread::create([this] { result_ = Read(open_, reading_); });
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
