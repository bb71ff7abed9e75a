#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <numeric>
#include <span>
#include <tuple>
#include <vector>

#include "commands/job_runner.h"
#include "runs/studio.h"
#include "scheduler/audit_log.h"
#include "testing/resident_memory.h"

namespace norvelis::bench {

namespace {

double Mean(std::span<const double> values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

/// The seconds of "extract" and "draw" by hand.
double ByHand(const Studio& studio, const std::string& report, const std::string& schema) {
    const auto begin = std::chrono::steady_clock::now();
    Require(studio.Run({"extract", report}) == 0, "extract has failed");
    Require(studio.Run({"draw", schema}) == 0, "draw has failed");
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

/// Many jobs, one after the other, by one runner. The jobs of the two reports alternate; from time to time
/// the same work is done by hand in between.
void Soak(int jobs) {
    const Studio studio;
    for (int i = 0; i < jobs; ++i)
        studio.Book("job" + std::to_string(i % 10), i % 2 == 0 ? studio.Sample() : studio.Larger());

    constexpr int kBetweenByHand = 20;
    std::vector<double> megabytes, bySample, byLarger;
    OwnProgram program(studio);
    commands::RunnerOptions options;
    options.once = true;
    commands::JobRunner runner(program.app, *program.engine, options, [&](std::chrono::milliseconds) {
        if (megabytes.size() % kBetweenByHand == 0) {
            bySample.push_back(ByHand(studio, studio.Sample(), "EMPSCHM"));
            byLarger.push_back(ByHand(studio, studio.Larger(), "BULKSCHM"));
        }
        megabytes.push_back(ResidentMegabytes());
        return true;
    });
    runner.Run();
    Require(runner.AllOk(), "a job has failed");

    std::vector<double> sample, larger;
    for (const RunHistory& run : ReadHistory(program.app)) {
        Require(run.ended.has_value(), "a run has no end");
        (run.report == studio.Sample() ? sample : larger).push_back(run.ended->seconds);
    }
    const auto share = std::min<std::size_t>(100, megabytes.size() / 2);
    const double first = Mean(std::span(megabytes).subspan(1).first(share));
    const double last = Mean(std::span(megabytes).last(share));
    fmt::print("{} jobs: memory of the first {} {:.1f} MB, of the last {:.1f} MB ({:.3f})\n", jobs, share,
               first, last, last / first);
    Require(last <= 1.1 * first, "memory has grown by more than a tenth");
    for (const auto& [name, runs, hand] :
         {std::tuple("sample", &sample, &bySample), std::tuple("200 records", &larger, &byLarger)}) {
        std::sort(runs->begin(), runs->end());
        std::sort(hand->begin(), hand->end());
        const double byHand = (*hand)[hand->size() / 2], limit = 1.2 * byHand;
        const auto longer = runs->end() - std::upper_bound(runs->begin(), runs->end(), limit);
        fmt::print(
            "{}: a job {:.2f} s, the longest {:.2f} s; by hand {:.2f} s, the longest {:.2f} s (ratio {:.2f}, "
            "longest {:.2f}); {} of {} jobs longer than 1.2 times by hand\n",
            name, (*runs)[runs->size() / 2], runs->back(), byHand, hand->back(),
            (*runs)[runs->size() / 2] / byHand, runs->back() / byHand, longer, runs->size());
        Require(longer == 0, fmt::format("{}: a job took more than 1.2 times as long", name));
    }
}

}  // namespace norvelis::bench
