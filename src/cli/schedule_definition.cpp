#include "cli/schedule_definition.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "base/text.h"
#include "scheduler/definition_controls.h"
#include "scheduler/schedule_xml.h"

namespace norvelis::cli {

namespace {

using Names = std::vector<std::string>;

// In the order of their positions in a record.
const Names kDays = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
const Names kWeeks = {"1st", "2nd", "3rd", "4th", "last"};
const Names kWeekdays = {"sunday", "monday",   "tuesday", "wednesday", "thursday",
                         "friday", "saturday", "day",     "weekday",   "weekend"};

int PositionOf(const std::string& name, const Names& names) {
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}

CLI::Validator IsOneOf(const Names& names) {
    return CLI::IsMember(names, CLI::ignore_case).description("");
}

/// "4h" and "30m".
CLI::Validator IsInterval() {
    return {[](std::string& text) -> std::string {
                const bool unit = text.ends_with('h') || text.ends_with('m');
                const std::string digits = text.substr(0, text.size() - (unit ? 1 : 0));
                const bool number =
                    !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
                if (!unit || !number || Val(digits) > std::numeric_limits<std::int16_t>::max())
                    return text + " is no interval such as 4h or 30m";
                return {};
            },
            "4h|30m"};
}

void Require(bool holds, const std::string& words) {
    if (!holds) throw CLI::ValidationError(words);
}

DateTime Moment(const std::string& text) {
    return ParseDateTime(text).value();  // IsMoment() has seen it.
}

}  // namespace

CLI::Validator IsMoment() {
    return {[](std::string& text) -> std::string {
                return ParseDateTime(text) ? "" : text + " is no date or time";
            },
            ""};
}

std::shared_ptr<DefinitionOptions> DefinitionOptions::AddTo(CLI::App& command) {
    auto options = std::make_shared<DefinitionOptions>();
    const CLI::Range count(0, static_cast<int>(std::numeric_limits<std::int16_t>::max()));

    auto* pattern = command.add_option_group("When", "One of these");
    pattern->require_option(1);
    pattern->add_option("--on", options->on_, "Once, at this date and time")->check(IsMoment());
    pattern->add_option("--xml", options->xml_, "By the schedule element in this file (- is standard input)");
    pattern->add_option("--days", options->days_, "Every so many days")->check(count);
    pattern->add_option("--weeks", options->weeks_, "Every so many weeks; see --on-days")->check(count);
    pattern->add_option("--months", options->months_, "Every so many months; see --day, --week")
        ->check(count);

    auto* days = command.add_option_group("Days of weeks and months");
    days->add_option("--on-days", options->onDays_, "Days of the week: mon,fri")
        ->delimiter(',')
        ->transform(IsOneOf(kDays));
    days->add_option("--day", options->day_, "Day of the month")->check(CLI::Range(1, 31));
    days->add_option("--week", options->week_, "1st, 2nd, 3rd, 4th or last; with --weekday")
        ->transform(IsOneOf(kWeeks));
    days->add_option("--weekday", options->weekday_, "sunday to saturday, day, weekday or weekend")
        ->transform(IsOneOf(kWeekdays));

    auto* times = command.add_option_group("Times of the day");
    times->add_option("--at", options->at_, "Once a day, at HH:MM")->check(IsMoment());
    times->add_option("--interval", options->interval_, "Several times a day, every 4h or 30m")
        ->check(IsInterval());
    times->add_option("--from", options->from_, "From HH:MM on")->check(IsMoment());
    times->add_option("--to", options->to_, "Until before HH:MM")->check(IsMoment());

    auto* duration = command.add_option_group("Dates");
    duration->add_option("--start", options->start_, "Start date (default: today); it does not run itself")
        ->check(IsMoment());
    duration->add_option("--end", options->end_, "Last date (default: no end)")->check(IsMoment());
    return options;
}

void DefinitionOptions::Check() const {
    const bool daysOfMonth = day_ || week_ || weekday_;
    const bool times = at_ || interval_ || from_ || to_;
    Require(HasPattern() || (!daysOfMonth && onDays_.empty() && !times && !start_ && !end_),
            "--on and --xml go with no other option of a schedule");
    Require(onDays_.empty() || weeks_, "--on-days goes with --weeks");
    Require(!daysOfMonth || months_, "--day, --week and --weekday go with --months");
    if (!HasPattern()) return;
    const bool weekdayOfMonth = week_ && weekday_;
    Require(!months_ || (day_ ? !week_ && !weekday_ : weekdayOfMonth),
            "--months needs --day, or --week and --weekday");
    Require(interval_ ? !at_ && from_ && to_ : at_ && !from_ && !to_,
            "a schedule needs --at, or --interval with --from and --to");
}

Definition DefinitionOptions::Read(DateTime now) const {
    if (on_) return {Moment(*on_), {}, false};
    if (xml_) return {{}, ReadElement(), true};
    return {{}, BuildElement(now), false};
}

XmlNode DefinitionOptions::ReadElement() const {
    const std::string text = ReadInput(*xml_);
    try {
        return LoadSchedule(text);
    } catch (const std::runtime_error& reason) {
        throw std::runtime_error("no schedule in " + (*xml_ == "-" ? "the input" : *xml_) + ": " +
                                 reason.what());
    }
}

XmlNode DefinitionOptions::BuildElement(DateTime now) const {
    DefinitionControls controls = StartUpControls(now);
    if (days_) {
        controls.txtNumofDays = std::to_string(*days_);
    } else if (weeks_) {
        controls.optOccurs = kWeekly;
        controls.txtOccursWeek = std::to_string(*weeks_);
        for (const auto& day : onDays_)
            controls.chkDay[static_cast<std::size_t>(PositionOf(day, kDays)) + 1] = true;
    } else {
        controls.optOccurs = kMonthly;
        controls.optMonthly = day_ ? 0 : 1;
        controls.txtNumofMonths = controls.lstMonthlyEvery = std::to_string(*months_);
        controls.lstMonthlyDays = std::to_string(day_.value_or(0));
        controls.clstMonthlyWeek = week_ ? PositionOf(*week_, kWeeks) : kNothingChosen;
        controls.clstMonthlyWeekDay = weekday_ ? PositionOf(*weekday_, kWeekdays) : kNothingChosen;
    }
    if (at_) {
        controls.dtpFreqTime = Moment(*at_);
    } else {
        controls.optFreq = 1;
        controls.lstFreqEvery = interval_->substr(0, interval_->size() - 1);
        controls.clstFreqInterval = interval_->ends_with('h') ? 0 : 1;
        controls.dtpFreqIntervalStart = Moment(*from_);
        controls.dtpFreqIntervalEnd = Moment(*to_);
    }
    if (start_) controls.dtpDurationStart = Moment(*start_);
    if (end_) {
        controls.opDurationEnd = 0;
        controls.dtpDurationEnd = Moment(*end_);
    }
    ScheduleRecord record;
    GatherDefinition(controls, record);
    return WriteScheduleXML(record, now);
}

}  // namespace norvelis::cli
