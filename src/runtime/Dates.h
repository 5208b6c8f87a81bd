#pragma once

#include <chrono>
#include <string>

namespace trovarium {

// An instant in whole seconds. Local time is for texts only.
using Instant = std::chrono::time_point<std::chrono::system_clock, std::chrono::seconds>;

Instant now();

std::string logCreatedStamp(Instant instant); // mm/dd/yy hh:mm
std::string logLineStamp(Instant instant);    // mm/dd/yy  hh:mm:ssAMPM, 12-hour clock
std::string timeOfDayStamp(Instant instant);  // hhmmss, 24-hour clock

} // namespace trovarium
