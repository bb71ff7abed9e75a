#pragma once

#include <array>
#include <string>

#include "scheduler/schedule_record.h"

namespace norvelis {

constexpr int kNothingChosen = -1;

/// What the controls of the editor ouSchedule show, without a screen; as it starts up, but for the two dates.
/// Options and lists are positions from 0, pickers are date-times.
struct DefinitionControls {
    int optOccurs = 0;
    std::string txtNumofDays, txtOccursWeek;
    std::array<bool, 8> chkDay{};  ///< 1 Sunday to 7 Saturday.
    int optMonthly = 0;
    std::string lstMonthlyDays, txtNumofMonths;
    int clstMonthlyWeek = kNothingChosen, clstMonthlyWeekDay = kNothingChosen;
    std::string lstMonthlyEvery;
    int optFreq = 0;
    DateTime dtpFreqTime = 0;
    std::string lstFreqEvery;
    int clstFreqInterval = kNothingChosen;
    DateTime dtpFreqIntervalStart = 0, dtpFreqIntervalEnd = 0;
    DateTime dtpDurationStart = 0, dtpDurationEnd = 0;
    int opDurationEnd = 1;
};

/// The start-up state: from today on, without an end.
DefinitionControls StartUpControls(DateTime now);

/// What the controls show of a record. A value that a control does not offer shows as nothing chosen.
DefinitionControls ShowDefinition(const ScheduleRecord& record);

/// Gathers the controls into the record; the branches that are not chosen keep what they held. So does a
/// field whose control still shows what ShowDefinition made of it: opening and saving changes no value that
/// the controls cannot show. RuntimeFailure 6 for a number too wide for its field.
void GatherDefinition(const DefinitionControls& controls, ScheduleRecord& record);

}  // namespace norvelis
