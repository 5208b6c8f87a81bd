#include "runtime/Dates.h"
#include "support/Surroundings.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

Instant at(std::int64_t seconds)
{
    return Instant(std::chrono::seconds(seconds));
}

// By its rule, so that the tests need no database of zones.
constexpr const char* CentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

} // namespace

TEST(Dates, StampsAreLocalAndTwoDigitsEach)
{
    const VariableForNow zone("TZ", CentralEurope);
    const Instant summer = at(1056975245); // 2003-06-30 12:14:05 UTC
    EXPECT_EQ(logCreatedStamp(summer), "06/30/03 14:14");
    EXPECT_EQ(logLineStamp(summer), "06/30/03  02:14:05PM");
    EXPECT_EQ(timeOfDayStamp(summer), "141405");
    EXPECT_EQ(dateText(summer), "2003-06-30 14:14:05 +02:00:00");
    EXPECT_EQ(dateText(at(253402214400)), "9999-12-31 01:00:00 +01:00:00");
    EXPECT_EQ(logLineStamp(at(11L * 3600)), "01/01/70  12:00:00PM");
    EXPECT_EQ(logLineStamp(at(-3600)), "01/01/70  12:00:00AM");
}

TEST(Dates, TheTextOfADateComesBackAsTheSameInstantAndWhatIsNoDateGivesNone)
{
    const VariableForNow zone("TZ", CentralEurope);
    // Both passes of the hour that the autumn of 2003 repeats, and dates at the ends of calendars.
    for (const std::int64_t seconds : {1067127000L, 1067130600L, 0L, -60000000000L, -62167392000L, 253402300799L,
             253402387200L, 1L << 55, -(1L << 60)}) {
        const std::string text = dateText(at(seconds));
        const VariableForNow other("TZ", "NST3:30");
        EXPECT_EQ(dateFromText(text), at(seconds)) << text;
    }
    const std::string good = "2003-01-01 23:59:59 -00:00:01";
    ASSERT_EQ(dateFromText(good), at(1041465600));
    for (std::size_t length = 1; length < good.size(); ++length) // the last figure alone may be missed
        EXPECT_EQ(dateFromText(good.substr(0, length)).has_value(), length == good.size() - 1) << length;
    for (const char* text : {"", "@", "@1x", "yesterday", "-1-01-01 00:00:00 +00:00:00",
             "10000-01-01 00:00:00 +00:00:00", "2003-02-30 00:00:00 +00:00:00", "2003-13-01 00:00:00 +00:00:00",
             "2003-01-01 24:00:00 +00:00:00", "2003-01-01 00:60:00 +00:00:00", "2003-01-01 00:00:61 +00:00:00",
             "2003-01-01 00:00:00 00:00:00", "2003-01-01 00:00:00 +24:00:00", "2003-01-01 00:00:00 +00:60:00",
             "2003-01-01 00:00:00 +00:00:60", "2003-01-01 00:00:00 +00:00:00 "})
        EXPECT_FALSE(dateFromText(text)) << text;
}

} // namespace trovarium
