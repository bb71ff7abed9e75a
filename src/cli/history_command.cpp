#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "cli/json_output.h"
#include "cli/schedule_commands.h"
#include "scheduler/audit_log.h"
#include "scheduler/job_folder.h"

namespace norvelis::cli {

namespace {

using Json = nlohmann::ordered_json;

/// What has become of each run. One that has not ended goes on while somebody works in the job's folder,
/// which is true of the last of a name alone.
std::vector<std::string> ResultsOf(const AppState& app, const std::vector<RunHistory>& runs) {
    std::vector<std::string> results(runs.size(), "interrupted");
    std::vector<std::string> seen;
    for (std::size_t i = runs.size(); i-- > 0;) {
        const std::string name(Trim(runs[i].name));
        const bool isLast = std::none_of(seen.begin(), seen.end(), [&](const std::string& other) {
            return EqualIgnoringCase(other, name);
        });
        if (isLast) seen.push_back(name);
        if (runs[i].ended) {
            results[i] = NameOf(runs[i].ended->result);
        } else if (isLast && JobClaim::IsTaken(app, name)) {
            results[i] = "running";
        }
    }
    return results;
}

Json JsonOf(const RunHistory& run, const std::string& result) {
    Json json = {{"scheduleid", static_cast<std::int64_t>(Val(run.scheduleid))},
                 {"name", run.name},
                 {"report", run.report},
                 {"due", run.due},
                 {"late", run.secondsLate},
                 {"begin", run.begin},
                 {"end", run.ended ? Json(run.end) : Json()},
                 {"result", result}};
    if (run.ended) {
        json["records"] = run.ended->records;
        json["sets"] = run.ended->sets;
        json["drawings"] = run.ended->drawings;
        json["seconds"] = run.ended->seconds;
        json["words"] = run.ended->words;
    }
    return json;
}

int PrintHistory(bool asJson, CommandContext& context) {
    const std::vector<RunHistory> runs = ReadHistory(*context.app);
    const std::vector<std::string> results = ResultsOf(*context.app, runs);
    if (asJson) {
        Json list = Json::array();
        for (std::size_t i = 0; i < runs.size(); ++i) list.push_back(JsonOf(runs[i], results[i]));
        PrintJson(list);
        return kDone;
    }
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const RunHistory& run = runs[i];
        std::printf("%-22s  %6s  %-11s  %s", run.begin.c_str(), run.scheduleid.c_str(), results[i].c_str(),
                    run.name.c_str());
        if (run.ended) std::printf("  %.1f s  %s", run.ended->seconds, run.ended->words.c_str());
        std::printf("\n");
    }
    return kDone;
}

}  // namespace

void AddHistory(CLI::App& schedule, CommandContext& context) {
    auto asJson = std::make_shared<bool>(false);
    auto* history =
        schedule.add_subcommand("history", "Print the runs of jobs: begin, id, result, name, seconds, words");
    history->add_flag("--json", *asJson, "As a JSON array of runs");
    history->callback(
        [&context, asJson] { context.run = [&context, asJson] { return PrintHistory(*asJson, context); }; });
}

}  // namespace norvelis::cli
