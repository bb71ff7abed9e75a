#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/failure.h"
#include "scheduler/next_time.h"

using namespace norvelis;

namespace {

/// Takes the fields of a record from the input, zeros behind its end.
class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    template <class Number>
    void Take(Number& number) {
        const std::size_t count = std::min(sizeof number, size_);
        number = 0;
        std::memcpy(&number, data_, count);
        data_ += count;
        size_ -= count;
    }

  private:
    const std::uint8_t* data_;
    std::size_t size_;
};

}  // namespace

/// Any record: ten runs, each a date of the years 100 to 9999 and the same when it is worked out again, or an
/// overflow.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    ScheduleRecord r;
    std::int16_t year = 0, month = 0, day = 0, minutes = 0;
    for (auto* number : {&year, &month, &day, &minutes}) bytes.Take(*number);
    for (auto* number : {&r.Occurrence, &r.Occurs_MonthlyOption, &r.Occurs_Monthly_Every_Week,
                         &r.Occurs_Monthly_Every_WeekDay, &r.Freq_Option, &r.Freq_Once_AMPM,
                         &r.Freq_Every_Interval_HrMin, &r.Freq_Every_Startampm, &r.Freq_Every_Endampm})
        bytes.Take(*number);
    for (auto* number :
         {&r.Occurs_DailyNum, &r.Occurs_WeeklyNum, &r.Occurs_Monthly_Each_Day, &r.Occurs_Monthly_Each_Num,
          &r.Occurs_Monthly_Every_Num, &r.Freq_Once_Hr, &r.Freq_Once_Min, &r.Freq_Every_Interval,
          &r.Freq_Every_StartHr, &r.Freq_Every_StartMin, &r.Freq_Every_EndHr, &r.Freq_Every_EndMin,
          &r.Duration_End_Option})
        bytes.Take(*number);
    for (auto& selected : r.Days) bytes.Take(selected);
    const DateTime now = ToDateTime({2026, 11, 24, 8, 30, 0});
    try {
        r.NextActionDateTime = DateOf(year, month, day) + TimeOf(0, minutes);
        r.Duration_Start = DateOf(year, day, month);
        r.Duration_End = DateOf(year, month, minutes);
        r.Freq_BuildStartTime = TimeOf(r.Freq_Once_Hr, r.Freq_Once_Min);
        for (int i = 0; i < 10; ++i) {
            ScheduleRecord again = r;
            const DateTime next = GetNextTime(r, now);
            const int reached = ToCalendar(next).year;
            if (reached < 100 || reached > 9999 || GetNextTime(again, now) != next ||
                ToDateTime(ToCalendar(next)) - next > 1e-6) {
                std::fprintf(stderr, "%s\n", GeneralDateText(next).c_str());
                std::abort();
            }
        }
    } catch (const RuntimeFailure& failure) {
        if (failure.Number() != FailureNumber::Overflow) std::abort();
    }
    return 0;
}
