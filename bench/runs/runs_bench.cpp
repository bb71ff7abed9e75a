#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "runs/studio.h"

// Scheduled runs over a long time and under ill treatment: kills at random moments, several programs on one
// store, copies of a store that is being written, and a thousand jobs in one process.
int main(int argc, char** argv) {
    int kills = 200, rows = 200, copies = 50, jobs = 1000;
    CLI::App program{"Measures scheduled runs; 0 leaves a part out"};
    program.add_option("--kills", kills, "Kill a runner so often")->capture_default_str();
    program.add_option("--together", rows, "Rows for two runners and a desktop's engine")
        ->capture_default_str();
    program.add_option("--copies", copies, "Copies of a store that is extracted into")->capture_default_str();
    program.add_option("--soak", jobs, "Jobs for one runner")->capture_default_str();
    CLI11_PARSE(program, argc, argv);
    try {
        using namespace norvelis::bench;
        if (kills > 0) KillRuns(kills);
        if (rows > 0) RunTogether(rows);
        if (copies > 0) CopyWhileExtracting(copies);
        if (jobs > 0) Soak(jobs);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
