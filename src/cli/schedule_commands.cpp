#include "cli/schedule_commands.h"

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "cli/schedule_definition.h"
#include "extract/report_file.h"
#include "scheduler/booking_words.h"
#include "scheduler/calculate.h"
#include "scheduler/jobs.h"
#include "scheduler/schedule_xml.h"

namespace norvelis::cli {

namespace {

constexpr int kMostDates = 100'000;
constexpr int kDatesOfScreen = 3;  // as the screen offers at its start

/// To standard error, so that results stay clean.
void PrintNotes(const Definition& definition, const std::vector<std::string>& times, DateTime now) {
    std::vector<DateTime> moments;
    for (const auto& time : times) moments.push_back(ParseDateTime(time).value());
    const auto words = definition.schedule
                           ? OddTimes(ReadScheduleXML(*definition.schedule, now), moments, now)
                           : OddTimes(moments, now);
    for (const auto& sentence : words) std::fprintf(stderr, "Note: %s\n", sentence.c_str());
}

struct NextOptions {
    std::shared_ptr<DefinitionOptions> definition;
    std::optional<std::string> now, after;
    int count = 1 + kDatesOfScreen;
    bool iso = false, printXml = false, json = false;
};

/// The date that is shown and the dates behind it, `count` in all.
std::vector<std::string> NextDates(const Definition& definition, DateTime after, int count, DateTime now) {
    if (count == 0) return {};
    if (definition.moment) return {GeneralDateText(*definition.moment)};
    const auto runs = Calculate(*definition.schedule, GeneralDateText(after), count - 1, now);
    constexpr bool kAlsoNext = true;
    return DatesToBook(runs.value(), kAlsoNext);
}

std::string IsoText(const std::string& generalText) {
    const CalendarTime c = ToCalendar(ParseDateTime(generalText).value());
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", c.year, c.month, c.day, c.hour,
                  c.minute, c.second);
    return text.data();
}

int PrintNext(const NextOptions& options, DateTime now) {
    const Definition definition = options.definition->Read(now);
    if (options.printXml) {
        if (!definition.schedule) return Refuse("a single moment has no schedule element");
        // What was read is opened and saved, as in the editor.
        const XmlNode element = definition.isRead
                                    ? WriteScheduleXML(ReadScheduleXML(*definition.schedule, now), now)
                                    : *definition.schedule;
        std::printf("%s\n", element.Text().c_str());
        return kDone;
    }
    const DateTime after = options.after ? ParseDateTime(*options.after).value() : now;
    std::vector<std::string> dates = NextDates(definition, after, options.count, now);
    PrintNotes(definition, dates, now);
    if (options.iso) {
        for (auto& date : dates) date = IsoText(date);
    }
    if (options.json) {
        std::printf("%s\n", nlohmann::json(dates).dump().c_str());
    } else {
        for (const auto& date : dates) std::printf("%s\n", date.c_str());
    }
    return kDone;
}

void AddNext(CLI::App& schedule, CommandContext& context) {
    auto options = std::make_shared<NextOptions>();
    auto* next =
        schedule.add_subcommand("next", "Print the next dates of a schedule; the first is not booked by add");
    options->definition = DefinitionOptions::AddTo(*next);
    next->add_option("--now", options->now, "Take this for the present moment")->check(IsMoment());
    next->add_option("--after", options->after, "Dates after this one (default: now)")->check(IsMoment());
    next->add_option("--count", options->count, "How many dates")
        ->check(CLI::Range(0, kMostDates))
        ->capture_default_str();
    next->add_flag("--iso", options->iso, "Dates as 2026-05-02T06:00:00");
    next->add_flag("--print-xml", options->printXml, "The schedule element instead of the dates");
    next->add_flag("--json", options->json, "As a JSON array of texts");
    next->callback([&context, options] {
        options->definition->Check();
        context.run = [&context, options] {
            return PrintNext(*options,
                             options->now ? ParseDateTime(*options->now).value() : context.clock.Now());
        };
    });
}

struct AddOptions {
    std::shared_ptr<DefinitionOptions> definition;
    Job job;
    int count = kDatesOfScreen;
    bool dryRun = false;
};

int Add(const AddOptions& options, CommandContext& context) {
    const DateTime now = context.clock.Now();
    const Definition definition = options.definition->Read(now);
    Job job = options.job;
    std::vector<std::string> dates =
        NextDates(definition, now, options.count + (definition.schedule ? 1 : 0), now);
    if (const auto missing = MissingInput(job, dates.empty() ? "" : dates.front()))
        return Refuse(missing->words);
    job.idmsreport = AbsolutePath(job.idmsreport);
    if (CheckReportFile(job.idmsreport) != ReportCheck::Valid)
        return Refuse("Invalid IDMS Report File. Action terminated");
    if (definition.schedule) {
        const DateTime next = ParseDateTime(dates.front()).value();
        std::fprintf(stderr, "Note: %s\n", NextDateIsNotBooked(next).c_str());
        dates.erase(dates.begin());
    }
    PrintNotes(definition, dates, now);
    if (options.dryRun) {
        for (const auto& date : dates) std::printf("%s\n", date.c_str());
        return kDone;
    }
    context.OpenStore();
    std::vector<std::int64_t> ids;
    const auto printBooked = [&] {
        for (std::size_t i = 0; i < ids.size(); ++i)
            std::printf("Schedule id:%lld %s\n", static_cast<long long>(ids[i]), dates[i].c_str());
    };
    try {
        CreateJobs(*context.app, job, dates, ids);
    } catch (const RuntimeFailure& failure) {
        printBooked();
        return Refuse(std::string(failure.what()) + "; " + std::to_string(ids.size()) + " of " +
                      std::to_string(dates.size()) + " dates are booked");
    }
    printBooked();
    std::printf("Schedule(s) added\n");
    return kDone;
}

void AddAdd(CLI::App& schedule, CommandContext& context) {
    auto options = std::make_shared<AddOptions>();
    auto* add = schedule.add_subcommand("add", "Book a job for each date of a schedule");
    add->add_option("NAME", options->job.name, "Name of the job; its drawings go into a folder of this name")
        ->required();
    add->add_option("--report", options->job.idmsreport, "The schema report to draw")->required();
    options->definition = DefinitionOptions::AddTo(*add);
    add->add_option("--tel", options->job.tel, "Telephone of the person who wants the drawing");
    add->add_option("--email", options->job.email, "E-mail address, with or in place of --tel");
    add->add_option("--address", options->job.address, "Free text");
    add->add_option("--count", options->count,
                    "How many dates to book; one behind the next date is the first")
        ->check(CLI::Range(0, kMostDates))
        ->capture_default_str();
    add->add_flag("--dry-run", options->dryRun, "Print the dates and book nothing");
    add->callback([&context, options] {
        options->definition->Check();
        context.run = [&context, options] { return Add(*options, context); };
    });
}

}  // namespace

void AddScheduleCommands(CLI::App& program, CommandContext& context) {
    auto* schedule = program.add_subcommand("schedule", "Book extractions and drawings for later");
    schedule->require_subcommand(1);
    AddNext(*schedule, context);
    AddAdd(*schedule, context);
    AddJobCommands(*schedule, context);
    AddHistory(*schedule, context);
    AddSimulate(*schedule, context);
}

}  // namespace norvelis::cli
