#include "ui/controls/drawing_loader.h"

#include <QThread>
#include <algorithm>
#include <exception>

namespace norvelis::ui {

namespace {

int PageOf(const DrawingPages& pages, const DrawingLoader::Request& request) {
    for (int page = 0; !request.pageName.isEmpty() && page < pages.Count(); ++page) {
        if (pages.Name(page) == request.pageName) return page;
    }
    return std::clamp(request.page, 0, pages.Count() - 1);
}

DrawingLoader::Result Read(const OpenDrawing& open, const DrawingLoader::Request& request) {
    DrawingLoader::Result result;
    try {
        result.pages = request.pages ? request.pages : open(request.path);
        result.page = PageOf(*result.pages, request);
        auto picture = result.pages->Picture(result.page);
        request.prepare(*picture, *result.pages);
        result.picture = std::move(picture);
    } catch (const std::exception& failure) {
        result.reason = QString::fromUtf8(failure.what());
    }
    return result;
}

}  // namespace

DrawingLoader::DrawingLoader(OpenDrawing open) : open_(std::move(open)) {}

DrawingLoader::~DrawingLoader() {
    if (!thread_) return;
    thread_->wait();
    delete thread_;
}

void DrawingLoader::Load(Request request) {
    wanted_ = std::move(request);
    askedAgain_ = thread_ != nullptr;
    if (!thread_) Start();
}

void DrawingLoader::Forget() {
    wanted_.reset();
}

void DrawingLoader::Start() {
    askedAgain_ = false;
    thread_ = QThread::create([this, request = *wanted_] { result_ = Read(open_, request); });
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
