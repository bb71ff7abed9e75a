#pragma once

#include <QObject>
#include <optional>

#include "ui/controls/drawing_picture.h"

class QThread;

namespace norvelis::ui {

/// Reads drawing files and makes their pages ready in a thread of its own, so that a large one does not hold
/// up the window. One at a time; of those asked for meanwhile the last one counts.
class DrawingLoader : public QObject {
    Q_OBJECT

  public:
    struct Request {
        QString path;
        std::shared_ptr<const DrawingPages> pages;  ///< Of a file that was read already; else null.
        int page = 0;                               ///< The last one where there are not so many.
        QString pageName;                           ///< Rather the page of that name, if there is one.
        /// What is done with a picture before it is handed over, in the same thread.
        std::function<void(DrawingPicture&, const DrawingPages&)> prepare;
    };
    struct Result {
        std::shared_ptr<const DrawingPages> pages;  ///< Null when the file could not be read.
        int page = 0;
        std::unique_ptr<DrawingPicture> picture;
        QString reason;  ///< Why there is no picture.
    };

    explicit DrawingLoader(OpenDrawing open);
    ~DrawingLoader() override;  ///< Waits for a file that is being read.

    void Load(Request request);
    void Forget();  ///< What was asked for is not wanted any more.
    bool Loading() const { return wanted_.has_value(); }

    /// What Loaded reported; it can be taken once.
    Result Take() { return std::move(result_); }

  signals:
    void Loaded();

  private:
    void Start();
    void Finished();

    OpenDrawing open_;
    std::optional<Request> wanted_;
    bool askedAgain_ = false;  ///< While it reads.
    QThread* thread_ = nullptr;
    Result result_;
};

}  // namespace norvelis::ui
