#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli/job_json.h"
#include "cli/schedule_commands.h"
#include "cli/schedule_definition.h"
#include "extract/report_file.h"
#include "scheduler/jobs.h"

namespace norvelis::cli {

namespace {

using Json = nlohmann::ordered_json;

int Missing(std::int64_t id) {
    return Refuse("there is no schedule " + std::to_string(id));
}

struct ListOptions {
    bool due = false, processed = false, json = false;
};

int List(const ListOptions& options, CommandContext& context) {
    context.OpenStore();
    Connection& store = *context.app->gConnection;
    std::vector<Job> jobs = options.due ? DueJobs(store, context.clock.Now()) : ListJobs(store);
    if (options.processed) std::erase_if(jobs, [](const Job& job) { return !job.processed; });
    if (options.json) {
        Json list = Json::array();
        for (const Job& job : jobs) list.push_back(JsonOf(job));
        std::printf("%s\n", TextOf(list).c_str());
        return kDone;
    }
    for (const Job& job : jobs) {
        std::printf("%6lld  %-22s  %-3s  %s  %s\n", static_cast<long long>(job.scheduleid),
                    DueText(job).c_str(), job.processed ? "YES" : "NO", OneLine(job.name).c_str(),
                    OneLine(job.idmsreport).c_str());
    }
    return kDone;
}

int Show(std::int64_t id, bool json, CommandContext& context) {
    context.OpenStore();
    const auto job = FindJob(*context.app->gConnection, id);
    if (!job) return Missing(id);
    const Json fields = JsonOf(*job);
    if (json) {
        std::printf("%s\n", TextOf(fields).c_str());
        return kDone;
    }
    for (const auto& [name, value] : fields.items()) {
        std::string text = value.is_string() ? value.get<std::string>()
                           : value.is_null() ? ""
                                             : TextOf(value);
        if (name == "processed") text = job->processed ? "YES" : "NO";
        std::printf("%-13s %s\n", name.c_str(), OneLine(text).c_str());
    }
    return kDone;
}

struct UpdateOptions {
    std::int64_t id = 0;
    std::optional<std::string> name, address, tel, email, next, report, processed, visiofile;
};

void Replace(std::optional<std::string>& field, const std::optional<std::string>& value) {
    if (value) field = *value;
}

int Update(const UpdateOptions& options, CommandContext& context) {
    context.OpenStore();
    Connection& store = *context.app->gConnection;
    auto job = FindJob(store, options.id);
    if (!job) return Missing(options.id);
    if (options.name) job->name = *options.name;
    Replace(job->address, options.address);
    Replace(job->tel, options.tel);
    Replace(job->email, options.email);
    Replace(job->visiofile, options.visiofile);
    if (options.next) job->nextschedule = ParseDateTime(*options.next);
    if (options.processed) job->processed = *options.processed == "yes";
    if (options.report) {
        job->idmsreport = options.report->empty() ? "" : AbsolutePath(*options.report);
        if (!job->idmsreport.empty() && CheckReportFile(job->idmsreport) != ReportCheck::Valid)
            return Refuse("Invalid IDMS Report File. Action terminated");
    }
    if (const auto missing = MissingInput(*job, DueText(*job))) return Refuse(missing->words);
    if (!UpdateJob(store, *job)) return Missing(options.id);
    std::printf("Schedule Updated\n");
    return kDone;
}

/// The same for each id, in their order; a row that is gone is reported and does not keep the others.
int ForEach(const std::vector<std::int64_t>& ids, CommandContext& context,
            bool (*change)(Connection&, std::int64_t), const char* done) {
    context.OpenStore();
    int status = kDone;
    for (const auto id : ids) {
        if (change(*context.app->gConnection, id)) {
            std::printf("Schedule id:%lld %s\n", static_cast<long long>(id), done);
        } else {
            status = Missing(id);
        }
    }
    return status;
}

void AddForEach(CLI::App& schedule, CommandContext& context, const char* name, const char* description,
                bool (*change)(Connection&, std::int64_t), const char* done) {
    auto ids = std::make_shared<std::vector<std::int64_t>>();
    auto* command = schedule.add_subcommand(name, description);
    command->add_option("ID", *ids, "Schedule ids")->required();
    command->callback([&context, ids, change, done] {
        context.run = [&context, ids, change, done] { return ForEach(*ids, context, change, done); };
    });
}

void AddList(CLI::App& schedule, CommandContext& context) {
    auto options = std::make_shared<ListOptions>();
    auto* list = schedule.add_subcommand("list", "Print the jobs: id, date, processed, name, report");
    auto* due =
        list->add_flag("--due", options->due, "Those that are due now, in the order in which they run");
    list->add_flag("--processed", options->processed, "Those that have run")->excludes(due);
    list->add_flag("--json", options->json, "As a JSON array of rows");
    list->callback(
        [&context, options] { context.run = [&context, options] { return List(*options, context); }; });
}

void AddShow(CLI::App& schedule, CommandContext& context) {
    struct Options {
        std::int64_t id = 0;
        bool json = false;
    };
    auto options = std::make_shared<Options>();
    auto* show = schedule.add_subcommand("show", "Print one job");
    show->add_option("ID", options->id, "Schedule id")->required();
    show->add_flag("--json", options->json, "As a JSON object");
    show->callback([&context, options] {
        context.run = [&context, options] { return Show(options->id, options->json, context); };
    });
}

void AddUpdate(CLI::App& schedule, CommandContext& context) {
    auto options = std::make_shared<UpdateOptions>();
    auto* update = schedule.add_subcommand("update", "Change one job");
    update->add_option("ID", options->id, "Schedule id")->required();
    auto* fields = update->add_option_group("Fields", "At least one of these");
    fields->require_option(1, 0);
    fields->add_option("--name", options->name, "Name of the job");
    fields->add_option("--next", options->next, "When it runs")->check(IsMoment());
    fields->add_option("--report", options->report, "The schema report");
    fields->add_option("--tel", options->tel, "Telephone");
    fields->add_option("--email", options->email, "E-mail address");
    fields->add_option("--address", options->address, "Free text");
    fields->add_option("--processed", options->processed, "yes, or no to run it again")
        ->check(CLI::IsMember({"yes", "no"}));
    fields->add_option("--visiofile", options->visiofile, "Path of its drawing");
    update->callback(
        [&context, options] { context.run = [&context, options] { return Update(*options, context); }; });
}

}  // namespace

void AddJobCommands(CLI::App& schedule, CommandContext& context) {
    AddList(schedule, context);
    AddShow(schedule, context);
    AddUpdate(schedule, context);
    AddForEach(schedule, context, "delete", "Delete jobs", DeleteJob, "deleted.");
    AddForEach(schedule, context, "again", "Let jobs run again", RunAgain, "runs again.");
}

}  // namespace norvelis::cli
