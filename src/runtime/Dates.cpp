#include "runtime/Dates.h"

#include <ctime>

namespace trovarium {

namespace {

// A form of strftime whose fields don't depend on the language.
std::string stamp(Instant instant, const char* form)
{
    const std::time_t seconds = instant.time_since_epoch().count();
    std::tm local = {};
    localtime_r(&seconds, &local);
    char buffer[32];
    return std::string(buffer, std::strftime(buffer, sizeof buffer, form, &local));
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

} // namespace trovarium
