#include "drawing/session/session.h"

#include <algorithm>
#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "drawing/package/package.h"

namespace norvelis::drawing {

namespace {

bool IsBelow(const std::string& path, const std::string& folder) {
    if (folder.empty()) return false;
    const std::string inside = Resolve(path), outer = Resolve(folder);
    return inside.size() > outer.size() && inside.starts_with(outer) &&
           (outer.ends_with('/') || inside[outer.size()] == '/');
}

/// Where the .vsdx copy of a drawing file belongs; empty for a file with another ending.
std::string CopyPathOf(const std::string& path) {
    std::filesystem::path copy(path);
    if (!EqualIgnoringCase(copy.extension().string(), ".vsd")) return {};
    return copy.replace_extension(".vsdx").string();
}

}  // namespace

std::shared_ptr<Document> Workshop::Stencil(const std::string& fileName) {
    const std::string path = Resolve(options.stencilFolder + "/" + fileName);
    auto& stencil = stencils[path];
    if (!stencil) stencil = ReadPackageFile(path);
    return stencil;
}

Master& OpenDocument::CopyOf(const OpenDocument& from, const Master& master) {
    return CopyMaster(*from.model, master, *model);
}

Master& OpenDocument::OwnMaster(const OpenDocument& from, Master& master) {
    if (&from == this) return master;
    Master*& copy = copies_[&master];
    if (!copy) copy = model->FindMaster(master.nameU);
    if (!copy) copy = &CopyOf(from, master);
    return *copy;
}

std::string OpenDocument::Save(const std::string& path) {
    std::string failure;
    Shop().RunInBackground([&] { failure = Write(path); });
    name = path;
    return failure;
}

std::string OpenDocument::Write(const std::string& path) {
    recalculation.Settle();
    model->title = std::filesystem::path(path).stem().string();
    const std::string bytes = WritePackage(*model);
    WriteFile(path, bytes);
    const std::string copy = CopyPathOf(path);
    if (copy.empty() || IsBelow(path, Options().snapshotFolder)) return {};
    try {
        WriteFile(copy, bytes);
        return {};
    } catch (const RuntimeFailure& failure) {
        // A stale copy would show another drawing; one that is write-protected is its owner's.
        if (failure.Number() != FailureNumber::PermissionDenied) DeleteFile(copy);
        return failure.what();
    }
}

OpenDocumentRef Session::Find(const std::string& fileName) const {
    const auto sameName = [&](const OpenDocumentRef& document) {
        const auto bare = std::filesystem::path(document->name).filename().string();
        return EqualIgnoringCase(document->name, fileName) || EqualIgnoringCase(bare, fileName);
    };
    const auto found = std::find_if(documents.begin(), documents.end(), sameName);
    return found == documents.end() ? nullptr : *found;
}

void Session::Quit() {
    running = false;
    for (const auto& document : documents) document->open = false;
    documents.clear();
}

}  // namespace norvelis::drawing
