#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include "base/failure.h"
#include "cli/schedule_commands.h"
#include "scheduler/tick_machine.h"

// Plays the engine of scheduled runs through a written-down stretch of time: which rows it runs when, without
// a store, a report or a wait.
namespace norvelis::cli {

namespace {

using Json = nlohmann::ordered_json;
using Second = std::int64_t;

constexpr Second kLongest = 1'000'000'000;  // Some thirty years.

[[noreturn]] void RefuseInput(const std::string& reason) {
    throw std::runtime_error("the simulation cannot be read: " + reason);
}

const Json& Field(const Json& object, const char* name) {
    const auto field = object.is_object() ? object.find(name) : object.end();
    if (!object.is_object() || field == object.end())
        RefuseInput(std::string("there is no \"") + name + "\" in " + object.dump());
    return *field;
}

std::int64_t WholeNumber(const Json& value, std::int64_t most) {
    const double number = value.is_number() ? value.get<double>() : -1;
    if (std::floor(number) != number || number < 0 || number > static_cast<double>(most))
        RefuseInput(value.dump() + " is no whole number up to " + std::to_string(most));
    return static_cast<std::int64_t>(number);
}

std::string TextIn(const Json& value) {
    if (!value.is_string()) RefuseInput(value.dump() + " is no text");
    return value.get<std::string>();
}

DateTime MomentIn(const Json& value) {
    const auto moment = ParseDateTime(TextIn(value));
    if (!moment) RefuseInput(value.dump() + " is no date");
    return *moment;
}

std::int64_t IdIn(const Json& value) {
    if (!value.is_number_integer()) RefuseInput(value.dump() + " is no scheduleid");
    return value.get<std::int64_t>();
}

/// A row with what its run will come to.
struct SimulatedRow {
    Job job;
    std::string outcome;
    Second seconds = 0;
};

SimulatedRow RowIn(const Json& json) {
    SimulatedRow row;
    row.job.scheduleid = IdIn(Field(json, "scheduleid"));
    if (const Json& next = Field(json, "nextschedule"); !next.is_null())
        row.job.nextschedule = MomentIn(next);
    row.job.idmsreport = TextIn(Field(json, "idmsreport"));
    const Json& processed = Field(json, "processed");
    if (!processed.is_boolean()) RefuseInput(processed.dump() + " is neither true nor false");
    row.job.processed = processed.get<bool>();
    if (const auto file = json.find("visiofile"); file != json.end() && file->is_string())
        row.job.visiofile = file->get<std::string>();
    row.outcome = TextIn(Field(json, "outcome"));
    const auto known = {"ok", "invalid", "missing", "failure"};
    if (std::find(known.begin(), known.end(), row.outcome) == known.end())
        RefuseInput("there is no outcome \"" + row.outcome + "\"");
    row.seconds = WholeNumber(Field(json, "seconds"), kLongest);
    return row;
}

/// Something that happens from outside, with what its kind needs. Its second is counted from the start.
struct Event {
    Second second = 0;
    std::string kind;
    DateTime moment = 0;
    SimulatedRow row;
    std::int64_t id = 0;
};

Event EventIn(const Json& json) {
    if (!json.is_array() || json.size() < 2) RefuseInput(json.dump() + " is no event");
    Event event;
    event.second = WholeNumber(json[0], kLongest);
    event.kind = TextIn(json[1]);
    if (event.kind == "start" || event.kind == "stop") return event;
    if (json.size() < 3) RefuseInput(json.dump() + " is no event");
    if (event.kind == "clock") {
        event.moment = MomentIn(json[2]);
    } else if (event.kind == "add") {
        event.row = RowIn(json[2]);
    } else if (event.kind == "unprocess" || event.kind == "delete") {
        event.id = IdIn(json[2]);
    } else {
        RefuseInput("there is no event \"" + event.kind + "\"");
    }
    return event;
}

class Simulation : public JobQueue, public Clock {
  public:
    explicit Simulation(const Json& input)
        : until_(WholeNumber(Field(input, "until"), kLongest)), clockText_(MomentIn(Field(input, "start"))) {
        for (const Json& row : Field(input, "rows")) rows_.push_back(RowIn(row));
        for (const Json& event : Field(input, "events")) events_.push_back(EventIn(event));
        std::stable_sort(events_.begin(), events_.end(),
                         [](const Event& a, const Event& b) { return a.second < b.second; });
    }

    Json Play() {
        while (true) {
            const bool eventIsNext = nextEvent_ < events_.size() &&
                                     (!machine_.IsStarted() || events_[nextEvent_].second <= nextTick_);
            if (!eventIsNext && !machine_.IsStarted()) break;
            const Second next = eventIsNext ? events_[nextEvent_].second : nextTick_;
            if (next > until_) break;
            now_ = std::max(now_, next);
            if (eventIsNext) {
                Happen(events_[nextEvent_++]);
            } else {
                machine_.Tick();
                // Those that fell into a run are lost.
                while (nextTick_ <= now_) nextTick_ += kTickSeconds;
            }
        }
        return Result();
    }

    DateTime Now() override {
        constexpr double kSecondsPerDay = 86400;
        return clockText_ + static_cast<double>(now_ - clockSetAt_) / kSecondsPerDay;
    }

    std::optional<Job> TakeDue(DateTime now) override {
        for (const SimulatedRow& row : rows_) {
            if (!row.job.processed && row.job.nextschedule && IsEarlier(*row.job.nextschedule, now))
                return row.job;
        }
        return std::nullopt;
    }
    void Release() override {}
    void MarkProcessed(const Job& job, const std::string& visiofile) override {
        if (SimulatedRow* row = Find(job.scheduleid)) {
            row->job.processed = true;
            row->job.visiofile = visiofile;
        }
    }

  private:
    static constexpr Second kTickSeconds = TickMachine::kTickMilliseconds / 1000;

    // Dates are compared in whole seconds.
    static bool IsEarlier(DateTime a, DateTime b) {
        constexpr double kSecondsPerDay = 86400;
        return std::llround(a * kSecondsPerDay) < std::llround(b * kSecondsPerDay);
    }

    SimulatedRow* Find(std::int64_t id) {
        const auto row = std::find_if(rows_.begin(), rows_.end(),
                                      [id](const SimulatedRow& r) { return r.job.scheduleid == id; });
        return row == rows_.end() ? nullptr : &*row;
    }

    void Happen(const Event& event) {
        if (event.kind == "start") {
            machine_.Start();
        } else if (event.kind == "stop") {
            machine_.Stop();
        } else if (event.kind == "clock") {
            clockText_ = event.moment;
            clockSetAt_ = now_;
        } else if (event.kind == "add") {
            rows_.push_back(event.row);
        } else if (event.kind == "unprocess") {
            if (SimulatedRow* row = Find(event.id)) row->job.processed = false;
        } else {
            std::erase_if(rows_,
                          [&event](const SimulatedRow& row) { return row.job.scheduleid == event.id; });
        }
    }

    // The last second of a run belongs to it.
    void Run(const Job& job) {
        const SimulatedRow row = *Find(job.scheduleid);  // Events may take it away.
        runs_.push_back({{"tick", machine_.Ticks()},
                         {"at", now_},
                         {"scheduleid", job.scheduleid},
                         {"result", row.outcome}});
        const Second end = now_ + row.seconds;
        while (nextEvent_ < events_.size() && events_[nextEvent_].second <= end) {
            const Event& event = events_[nextEvent_++];
            now_ = event.second;
            Happen(event);
        }
        now_ = end;
        if (row.outcome == "failure") throw RuntimeFailure(FailureNumber::InvalidCall);
    }

    TickMachine::Surroundings Surroundings() {
        TickMachine::Surroundings result;
        result.run = [this](const Job& job) { RunAndMark(*this, job, [this](const Job& j) { Run(j); }); };
        result.stateChanged = [this] { nextTick_ = now_ + kTickSeconds; };
        result.failed = [this](const std::string&) { runs_.back()["result"] = "failure"; };
        return result;
    }

    Json Result() const {
        Json rows = Json::array();
        for (const SimulatedRow& row : rows_) {
            rows.push_back({{"scheduleid", row.job.scheduleid},
                            {"processed", row.job.processed},
                            {"visiofile", row.job.visiofile ? Json(*row.job.visiofile) : Json()}});
        }
        return {{"runs", runs_}, {"rows", rows}, {"PollTicks", machine_.PollTicks()}};
    }

    const Second until_;
    std::vector<SimulatedRow> rows_;
    std::vector<Event> events_;
    std::size_t nextEvent_ = 0;
    Json runs_ = Json::array();
    Second now_ = 0;
    Second nextTick_ = 0;  ///< While the machine is started.
    DateTime clockText_;   ///< What the clock showed when it was set.
    Second clockSetAt_ = 0;
    TickMachine machine_{*this, *this, Surroundings()};
};

int Simulate(const std::string& file) {
    Json input;
    try {
        input = Json::parse(ReadInput(file));
    } catch (const Json::exception& error) {
        RefuseInput(error.what());
    }
    const Json result = Simulation(input).Play();
    std::printf("%s\n", result.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
    return kDone;
}

}  // namespace

void AddSimulate(CLI::App& schedule, CommandContext& context) {
    auto file = std::make_shared<std::string>();
    auto* simulate = schedule.add_subcommand("simulate", "Play the engine of scheduled runs without a store");
    simulate->group("");
    simulate->add_option("FILE", *file, "What is booked and what happens, as JSON (- is standard input)")
        ->required();
    simulate->callback([&context, file] { context.run = [file] { return Simulate(*file); }; });
}

}  // namespace norvelis::cli
