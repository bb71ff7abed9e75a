#include <cstdio>

#include "base/paths.h"
#include "cli/drawing_commands.h"
#include "cli/job_json.h"
#include "cli/runner_host.h"
#include "cli/schedule_definition.h"
#include "commands/job_runner.h"
#include "core/places.h"
#include "core/store_wait.h"
#include "drawing/automation/create_engine.h"
#include "store/connection.h"

namespace norvelis::cli {

namespace {

struct RunOptions {
    bool once = false, keepGoing = false;
    std::optional<std::string> until;
    std::string onFailure;
};

/// The row that did not end ok, with how it ended.
std::string FailureJson(const Job& job, const RunEnd& end) {
    auto json = JsonOf(job);
    json["result"] = NameOf(end.result);
    json["words"] = OneLine(end.words);
    return TextOf(json) + "\n";
}

int Run(const RunOptions& options, CommandContext& context) {
    RunnerHost host;
    AppState app(context.app->ApplicationFolder, host, context.clock, Random::FromDevice());
    const auto engine = drawing::MakeDrawingEngine(
        {app.AppPath(places::kStencils), app.AppPath(places::kSnapshots), nullptr});

    commands::RunnerOptions runs;
    runs.once = options.once;
    runs.keepGoing = options.keepGoing;
    if (options.until) runs.until = ParseDateTime(*options.until);
    if (!options.onFailure.empty()) {
        runs.onFailure = [&](const Job& job, const RunEnd& end) {
            host.RunCommand(options.onFailure, FailureJson(job, end));
        };
    }
    commands::JobRunner runner(app, *engine, std::move(runs),
                               [&host](std::chrono::milliseconds time) { return host.Wait(time); });
    const bool endedByItself = host.RunCancelable([&] {
        app.gConnection = WaitForStore(
            host, [&app] { return Connection::Open(ConnectionString(app.AppPath(places::kStore))); });
        runner.Run();
    });
    if (!endedByItself) host.MessageBox("The runner was told to end.");
    return runner.AllOk() ? kDone : kRefused;
}

}  // namespace

void AddScheduleRun(CLI::App& program, CommandContext& context) {
    auto options = std::make_shared<RunOptions>();
    auto* run = program.get_subcommand("schedule")
                    ->add_subcommand("run", "Extract and draw the jobs that are due, until told to end");
    auto* once = run->add_flag("--once", options->once, "End when no job is due");
    run->add_option("--until", options->until, "Take no job from this date and (local) time on")
        ->check(IsMoment())
        ->excludes(once);
    run->add_flag("--keep-going", options->keepGoing,
                  "Go on when a job fails; it stays due and is tried again at the next start");
    run->add_option("--on-failure", options->onFailure,
                    "Command of the shell for each job that does not end ok; it reads the row as JSON");
    run->callback(
        [&context, options] { context.run = [&context, options] { return Run(*options, context); }; });
}

}  // namespace norvelis::cli
