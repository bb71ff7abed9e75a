#include "architecture/source_tree.h"

#include <filesystem>
#include <fstream>
#include <regex>

namespace norvelis::architecture {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> IncludesOf(const fs::path& path) {
    static const std::regex pattern(R"(^\s*#\s*include\s*["<]([^">]+)[">])");
    std::vector<std::string> includes;
    std::ifstream file(path);
    std::smatch match;
    for (std::string line; std::getline(file, line);)
        if (std::regex_search(line, match, pattern)) includes.push_back(match[1]);
    return includes;
}

std::string WithoutExtension(const std::string& path) {
    return fs::path(path).replace_extension().generic_string();
}
std::string FolderOf(const std::string& path) {
    return fs::path(path).parent_path().generic_string();
}

/// The includes of the sources as a graph, each file under the name that `nameOf` gives it.
template <typename NameOf>
Graph IncludeGraph(const std::vector<SourceFile>& sources, NameOf nameOf) {
    Graph graph;
    for (const auto& source : sources) graph[nameOf(source.path)];
    for (const auto& source : sources) {
        const std::string user = nameOf(source.path);
        for (const auto& include : source.includes) {
            const std::string used = nameOf(include);
            if (used != user && graph.contains(used)) graph[user].insert(used);
        }
    }
    return graph;
}

}  // namespace

std::vector<SourceFile> ReadSources() {
    const fs::path root = fs::path(NORVELIS_SOURCE) / "src";
    std::vector<SourceFile> sources;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") continue;
        sources.push_back({entry.path().lexically_relative(root).generic_string(), IncludesOf(entry.path())});
    }
    return sources;
}

Graph FileGraph(const std::vector<SourceFile>& sources) {
    return IncludeGraph(sources, WithoutExtension);
}

Graph FolderGraph(const std::vector<SourceFile>& sources) {
    return IncludeGraph(sources, FolderOf);
}

std::set<std::string> Reachable(const Graph& graph, const std::string& from) {
    std::set<std::string> seen;
    std::vector<std::string> open = {from};
    while (!open.empty()) {
        const auto node = graph.find(open.back());
        open.pop_back();
        if (node == graph.end()) continue;
        for (const auto& used : node->second)
            if (seen.insert(used).second) open.push_back(used);
    }
    return seen;
}

std::set<std::string> OnCircles(const Graph& graph) {
    std::set<std::string> names;
    for (const auto& [name, uses] : graph)
        if (Reachable(graph, name).contains(name)) names.insert(name);
    return names;
}

}  // namespace norvelis::architecture
