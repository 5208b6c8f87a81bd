// SPDX-License-Identifier: GPL-3.0-or-later

#include "runtime/Dates.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace trovarium {

namespace {

std::optional<std::tm> localTime(Instant instant)
{
    const std::time_t seconds = instant.time_since_epoch().count();
    std::tm local = {};
    if (localtime_r(&seconds, &local) == nullptr)
        return std::nullopt;
    return local;
}

// A form of strftime whose fields don't depend on the language.
std::string stamp(Instant instant, const char* form)
{
    const std::tm local = localTime(instant).value_or(std::tm());
    char buffer[32];
    return std::string(buffer, std::strftime(buffer, sizeof buffer, form, &local));
}

template <class... Values>
std::string formatted(const char* form, Values... values)
{
    char buffer[80];
    const int length = std::snprintf(buffer, sizeof buffer, form, values...);
    return std::string(buffer, static_cast<std::size_t>(length));
}

bool takeCharacter(std::string_view& text, char character)
{
    const bool isThere = text.starts_with(character);
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

// Takes a whole number off the start of `text`.
bool takeNumber(std::string_view& text, std::int64_t& number)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return result.ec == std::errc();
}

bool takeField(std::string_view& text, char separator, std::int64_t& number, std::int64_t limit)
{
    return takeCharacter(text, separator) && takeNumber(text, number) && number >= 0 && number <= limit;
}

} // namespace

Instant now()
{
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

std::string logCreatedStamp(Instant instant)
{
    return stamp(instant, "%m/%d/%y %H:%M");
}

std::string logLineStamp(Instant instant)
{
    return stamp(instant, "%m/%d/%y  %I:%M:%S") + (stamp(instant, "%H") < "12" ? "AM" : "PM");
}

std::string timeOfDayStamp(Instant instant)
{
    return stamp(instant, "%H%M%S");
}

std::string dateText(Instant instant)
{
    const std::optional<std::tm> local = localTime(instant);
    // A damaged file may have a year of more than four digits.
    if (!local || local->tm_year < -1900 || local->tm_year > 9999 - 1900)
        return formatted("@%lld", static_cast<long long>(instant.time_since_epoch().count()));
    const long offset = std::labs(local->tm_gmtoff);
    return formatted("%04d-%02d-%02d %02d:%02d:%02d %c%02ld:%02ld:%02ld", local->tm_year + 1900, local->tm_mon + 1,
        local->tm_mday, local->tm_hour, local->tm_min, local->tm_sec, local->tm_gmtoff < 0 ? '-' : '+', offset / 3600,
        offset / 60 % 60, offset % 60);
}

std::optional<Instant> dateFromText(std::string_view text)
{
    using namespace std::chrono;
    std::int64_t number = 0;
    if (takeCharacter(text, '@'))
        return takeNumber(text, number) && text.empty() ? std::optional(Instant(seconds(number))) : std::nullopt;

    std::int64_t monthNumber = 0;
    std::int64_t dayNumber = 0;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::int64_t second = 0;
    if (!takeNumber(text, number) || number < 0 || number > 9999 || !takeField(text, '-', monthNumber, 12)
        || !takeField(text, '-', dayNumber, 31) || !takeField(text, ' ', hour, 23) || !takeField(text, ':', minute, 59)
        || !takeField(text, ':', second, 60))
        return std::nullopt;
    const year_month_day date(year(static_cast<int>(number)), month(static_cast<unsigned>(monthNumber)),
        day(static_cast<unsigned>(dayNumber)));
    const char sign = text.starts_with(" -") ? '-' : '+';
    std::int64_t offsetHour = 0;
    std::int64_t offsetMinute = 0;
    std::int64_t offsetSecond = 0;
    if (!date.ok() || !takeCharacter(text, ' ') || !takeField(text, sign, offsetHour, 23)
        || !takeField(text, ':', offsetMinute, 59) || !takeField(text, ':', offsetSecond, 59) || !text.empty())
        return std::nullopt;

    const seconds local = sys_days(date).time_since_epoch() + hours(hour) + minutes(minute) + seconds(second);
    const seconds offset = hours(offsetHour) + minutes(offsetMinute) + seconds(offsetSecond);
    return Instant(sign == '+' ? local - offset : local + offset);
}

} // namespace trovarium
