#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "drawing/formula/recalculation.h"
#include "drawing/model/document.h"
#include "drawing/session/engine_options.h"
#include "drawing/text/fonts.h"
#include "layout/graph/graph.h"

// The running engine and its open documents, which the handles that it gives out refer to.
namespace norvelis::drawing {

/// What all drawings of one engine share.
struct Workshop {
    explicit Workshop(EngineOptions engineOptions) : options(std::move(engineOptions)) {}

    EngineOptions options;
    FontLibrary fonts;
    std::unordered_map<std::string, std::shared_ptr<Document>> stencils;  ///< By path.

    void RunInBackground(const std::function<void()>& work) const {
        options.runInBackground ? options.runInBackground(work) : work();
    }

    /// A file of the stencil folder; RuntimeFailure when it is not there or can not be read.
    std::shared_ptr<Document> Stencil(const std::string& fileName);
};

/// The room that the layout keeps for the notes of a box.
struct NoteRoom {
    std::vector<layout::Box> notes;  ///< Their sizes, in their order.
    layout::NoteSide side = layout::NoteSide::Right;
};

/// One document of a running engine. Handles keep it in memory; once it is closed every call on them fails.
class OpenDocument {
  public:
    OpenDocument(Workshop& workshop, std::shared_ptr<Document> document, std::string documentName,
                 bool forReading)
        : model(std::move(document)),
          recalculation(*model, workshop.fonts),
          name(std::move(documentName)),
          readOnly(forReading),
          workshop_(workshop) {}

    /// The document's own copy of a master, made when it is first asked for. A master of this document is its
    /// own.
    Master& OwnMaster(const OpenDocument& from, Master& master);
    /// A further copy, whether or not there is one.
    Master& CopyOf(const OpenDocument& from, const Master& master);
    /// Writes the file and, for all but snapshots, its .vsdx copy. RuntimeFailure when the file can not be
    /// written; why its copy could not is the result, which is empty as a rule.
    std::string Save(const std::string& path);

    const EngineOptions& Options() const { return workshop_.options; }
    Workshop& Shop() const { return workshop_; }

    std::shared_ptr<Document> model;
    Recalculation recalculation;
    std::string name;  ///< File name or path.
    bool readOnly;
    bool open = true;
    std::map<std::pair<int, int>, NoteRoom> noteRooms;  ///< By the IDs of the page and the box.

  private:
    std::string Write(const std::string& path);

    Workshop& workshop_;
    std::unordered_map<const Master*, Master*> copies_;
};
using OpenDocumentRef = std::shared_ptr<OpenDocument>;

/// A running engine.
struct Session {
    explicit Session(std::shared_ptr<Workshop> sharedWorkshop) : workshop(std::move(sharedWorkshop)) {}

    std::shared_ptr<Workshop> workshop;
    std::vector<OpenDocumentRef> documents;
    int drawings = 0;  ///< New drawings so far; they are named by their number until they are saved.
    bool running = true;

    OpenDocumentRef Find(const std::string& fileName) const;
    void Quit();
};
using SessionRef = std::shared_ptr<Session>;

}  // namespace norvelis::drawing
