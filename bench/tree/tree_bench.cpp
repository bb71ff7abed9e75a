// The record tree at its largest: a store whose sets unfold to a million nodes, loaded with all its progress
// texts. Counters: the nodes, and by how many megabytes the process grew.
#include <benchmark/benchmark.h>

#include <string>

#include "browse/record_search.h"
#include "browse/tree_load.h"
#include "testing/layered_schema.h"
#include "testing/resident_memory.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

class SilentHost : public Host {
  public:
    Answer MessageBox(const Message&) override { return Answer::Ok; }
    std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    std::optional<std::string> OpenFileDialog(const std::string&, const std::string&) override { return {}; }
    std::optional<std::string> SaveFileDialog(const std::string&, const std::string&,
                                              const std::string&) override {
        return {};
    }
    std::optional<std::string> FolderDialog(const std::string&) override { return {}; }
    void Status(const std::string&) override {}
    void ProgressChanged(Bar, const ProgressBar&) override { ++turns; }
    void WaitCursor(bool) override {}
    void OpenScreen(Screen, bool) override {}
    long turns = 0;

  private:
    void Turn() override { ++turns; }
};

void LoadTree(benchmark::State& state) {
    TestApp test;
    WriteLayers(*test.app.gConnection, static_cast<int>(state.range(0)), 7);
    SilentHost host;
    AppState app(test.folder.Path(), host, test.clock, Random(1));
    const double before = ResidentMegabytes();
    double grown = 0;
    NodeIndex nodes = 0;
    for (auto _ : state) {
        const RecordTree tree = loadnodesfromaccess(app, *test.app.gConnection, kTreeview);
        nodes = tree.Size();
        grown = std::max(grown, ResidentMegabytes() - before);
    }
    state.counters["nodes"] = nodes;
    state.counters["MB"] = grown;
}
BENCHMARK(LoadTree)->Arg(31)->Arg(305)->Unit(benchmark::kMillisecond);

void SearchTree(benchmark::State& state) {
    TestApp test;
    WriteLayers(*test.app.gConnection, 305, 7);
    const RecordTree tree = loadnodesfromaccess(test.app, *test.app.gConnection, kTreeviewMax);
    for (auto _ : state) {
        RecordSearch search;
        benchmark::DoNotOptimize(search.Click(test.host, tree, "NOT THERE"));
    }
}
BENCHMARK(SearchTree)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace norvelis
