#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace norvelis::architecture {

/// What uses what, by name.
using Graph = std::map<std::string, std::set<std::string>>;

struct SourceFile {
    std::string path;                   ///< Relative to src/.
    std::vector<std::string> includes;  ///< As written, without quotes or angle brackets.
};

/// Every .h and .cpp under src/.
std::vector<SourceFile> ReadSources();

/// Between files; a header and its source are one.
Graph FileGraph(const std::vector<SourceFile>& sources);
/// Between the folders that hold files.
Graph FolderGraph(const std::vector<SourceFile>& sources);

/// What `from` uses, directly or through others; itself only when it lies on a circle.
std::set<std::string> Reachable(const Graph& graph, const std::string& from);

std::set<std::string> OnCircles(const Graph& graph);

}  // namespace norvelis::architecture
