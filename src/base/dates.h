#pragma once

#include <optional>
#include <string>
#include <string_view>

// Date-times as serial day numbers: days since 1899-12-30, the time of day as the fraction. They are compared
// and stepped in whole seconds, so that ten steps of a tenth of an hour make one hour. Nothing here asks the
// locale.
namespace norvelis {

using DateTime = double;

struct CalendarTime {
    int year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0;
};

DateTime ToDateTime(const CalendarTime& calendar);  ///< Days and months beyond their range carry over.
CalendarTime ToCalendar(DateTime dateTime);         ///< Rounded to the nearest second.

/// `M/d/yyyy h:mm:ss AM/PM`; the date alone at midnight, the time alone on day zero.
std::string GeneralDateText(DateTime dateTime);

/// Reads general date text (either part may be alone), 24-hour times and ISO dates ("2026-11-24",
/// "2026-11-24 13:05:00", with blank or T between). Nothing when the text is no date.
std::optional<DateTime> ParseDateTime(std::string_view text);

/// The time of day and the date come in from outside, so that tests can repeat them.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual DateTime Now() = 0;  ///< Local time.
};

class SystemClock : public Clock {
  public:
    DateTime Now() override;
};

}  // namespace norvelis
