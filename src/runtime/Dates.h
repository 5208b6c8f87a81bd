// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace trovarium {

// An instant in whole seconds. Local time is for texts only.
using Instant = std::chrono::time_point<std::chrono::system_clock, std::chrono::seconds>;

Instant now();

std::string logCreatedStamp(Instant instant); // mm/dd/yy hh:mm
std::string logLineStamp(Instant instant);    // mm/dd/yy  hh:mm:ssAMPM, 12-hour clock
std::string timeOfDayStamp(Instant instant);  // hhmmss, 24-hour clock

// The text form of a date. It carries the zone's offset, so that the hour which autumn repeats
// comes back as the same instant.
std::string dateText(Instant instant);
std::optional<Instant> dateFromText(std::string_view text);

} // namespace trovarium
