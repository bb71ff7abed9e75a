#include "base/dates.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>

#include "base/text.h"

namespace norvelis {

namespace {

using std::chrono::sys_days;

constexpr long kSecondsPerDay = 86400;
const sys_days kDayZero = std::chrono::year{1899} / 12 / 30;

// One reading position in a date text.
class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    bool AtEnd() const { return text_.empty(); }

    bool Take(char c) {
        if (!text_.starts_with(c)) return false;
        text_.remove_prefix(1);
        return true;
    }

    void SkipBlanks() {
        while (Take(' ')) {
        }
    }

    bool TakeWord(std::string_view word) {
        if (!EqualIgnoringCase(text_.substr(0, word.size()), word)) return false;
        text_.remove_prefix(word.size());
        return true;
    }

    std::optional<int> TakeNumber(std::size_t mostDigits) {
        int value = 0;
        std::size_t digits = 0;
        while (digits < mostDigits && digits < text_.size() && text_[digits] >= '0' && text_[digits] <= '9') {
            value = value * 10 + (text_[digits] - '0');
            ++digits;
        }
        if (digits == 0) return std::nullopt;
        text_.remove_prefix(digits);
        return value;
    }

  private:
    std::string_view text_;
};

bool ReadDate(Reader& reader, CalendarTime& result) {
    const auto first = reader.TakeNumber(4);
    if (!first) return false;
    const bool iso = reader.Take('-');
    if (!iso && !reader.Take('/')) return false;
    const auto second = reader.TakeNumber(2);
    if (!second || !reader.Take(iso ? '-' : '/')) return false;
    const auto third = reader.TakeNumber(4);
    if (!third) return false;
    result.year = iso ? *first : *third;
    result.month = iso ? *second : *first;
    result.day = iso ? *third : *second;
    // Two-digit years by the usual window.
    if (result.year < 30) {
        result.year += 2000;
    } else if (result.year < 100) {
        result.year += 1900;
    }
    return (std::chrono::year{result.year} / result.month / result.day).ok();
}

bool ReadTime(Reader& reader, CalendarTime& result) {
    const auto hour = reader.TakeNumber(2);
    if (!hour) return false;
    result.hour = *hour;
    bool minutes = false;
    if (reader.Take(':')) {
        const auto minute = reader.TakeNumber(2);
        if (!minute) return false;
        result.minute = *minute;
        minutes = true;
        if (reader.Take(':')) {
            const auto second = reader.TakeNumber(2);
            if (!second) return false;
            result.second = *second;
        }
    }
    reader.SkipBlanks();
    const bool am = reader.TakeWord("AM");
    const bool pm = !am && reader.TakeWord("PM");
    if (!minutes && !am && !pm) return false;
    if ((am || pm) && (result.hour < 1 || result.hour > 12)) return false;
    if (am && result.hour == 12) result.hour = 0;
    if (pm && result.hour != 12) result.hour += 12;
    return result.hour < 24 && result.minute < 60 && result.second < 60;
}

}  // namespace

DateTime ToDateTime(const CalendarTime& c) {
    using namespace std::chrono;
    const int monthsFromZero = c.year * 12 + c.month - 1;
    const int y = static_cast<int>(std::floor(monthsFromZero / 12.0));
    const auto firstOfMonth = sys_days(year{y} / (monthsFromZero - y * 12 + 1) / 1);
    const long days = (firstOfMonth - kDayZero).count() + c.day - 1;
    const double seconds = c.hour * 3600.0 + c.minute * 60.0 + c.second;
    return static_cast<double>(days) + seconds / kSecondsPerDay;
}

CalendarTime ToCalendar(DateTime dateTime) {
    using namespace std::chrono;
    const long long total = std::llround(dateTime * kSecondsPerDay);
    const long long day =
        total >= 0 ? total / kSecondsPerDay : -((-total + kSecondsPerDay - 1) / kSecondsPerDay);
    const int second = static_cast<int>(total - day * kSecondsPerDay);
    const year_month_day date(kDayZero + days(day));
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            second / 3600,
            second / 60 % 60,
            second % 60};
}

std::string GeneralDateText(DateTime dateTime) {
    const CalendarTime c = ToCalendar(dateTime);
    const std::string date =
        std::to_string(c.month) + "/" + std::to_string(c.day) + "/" + std::to_string(c.year);
    const auto twoDigits = [](int n) { return std::string(n < 10 ? "0" : "") + std::to_string(n); };
    const std::string time = std::to_string((c.hour + 11) % 12 + 1) + ":" + twoDigits(c.minute) + ":" +
                             twoDigits(c.second) + (c.hour < 12 ? " AM" : " PM");
    const bool dayZero = c.year == 1899 && c.month == 12 && c.day == 30;
    const bool midnight = c.hour == 0 && c.minute == 0 && c.second == 0;
    if (dayZero) return time;
    return midnight ? date : date + " " + time;
}

std::optional<DateTime> ParseDateTime(std::string_view text) {
    text = Trim(text);
    CalendarTime result;
    Reader reader(text);
    if (ReadDate(reader, result)) {
        reader.SkipBlanks();
        if (reader.AtEnd()) return ToDateTime(result);
        reader.Take('T');
        if (!ReadTime(reader, result) || !reader.AtEnd()) return std::nullopt;
        return ToDateTime(result);
    }
    result = {};
    reader = Reader(text);
    if (!ReadTime(reader, result) || !reader.AtEnd()) return std::nullopt;
    return ToDateTime(result);
}

DateTime SystemClock::Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return ToDateTime(
        {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
}

}  // namespace norvelis
