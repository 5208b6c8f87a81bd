#include "runtime/Dates.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

namespace trovarium {

namespace {

Instant at(std::int64_t seconds)
{
    return Instant(std::chrono::seconds(seconds));
}

// A time zone by its rule, so that the tests need no database of zones.
class Zone {
public:
    explicit Zone(const char* rule)
    {
        setenv("TZ", rule, 1);
        tzset();
    }
    ~Zone()
    {
        unsetenv("TZ");
        tzset();
    }
};

constexpr const char* CentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

} // namespace

TEST(Dates, StampsAreLocalAndTwoDigitsEach)
{
    const Zone zone(CentralEurope);
    const Instant summer = at(1056975245); // 2003-06-30 12:14:05 UTC
    EXPECT_EQ(logCreatedStamp(summer), "06/30/03 14:14");
    EXPECT_EQ(logLineStamp(summer), "06/30/03  02:14:05PM");
    EXPECT_EQ(timeOfDayStamp(summer), "141405");
    const Zone greenwich("UTC0");
    EXPECT_EQ(logLineStamp(at(0)), "01/01/70  12:00:00AM");
    EXPECT_EQ(logLineStamp(at(12L * 3600)), "01/01/70  12:00:00PM");
    EXPECT_EQ(timeOfDayStamp(at(0)), "000000");
}

TEST(Dates, TheTextOfADateComesBackAsTheSameInstant)
{
    const Zone zone(CentralEurope);
    // Both passes of the hour that the autumn of 2003 repeats, and dates at the ends of calendars.
    const Instant firstPass = at(1067127000);
    const Instant secondPass = at(1067127000 + 3600);
    EXPECT_EQ(timeOfDayStamp(firstPass), timeOfDayStamp(secondPass));
    EXPECT_NE(dateText(firstPass), dateText(secondPass));
    for (const std::int64_t seconds : {std::int64_t{1067127000}, std::int64_t{1067127000} + 3600, std::int64_t{0},
             std::int64_t{-1}, std::int64_t{951782400}, std::int64_t{-60000000000}, std::int64_t{253402300799},
             std::int64_t{253402300800 + 86400}, std::int64_t{1} << 55, -(std::int64_t{1} << 60)})
        EXPECT_EQ(dateFromText(dateText(at(seconds))), at(seconds)) << dateText(at(seconds));
    const std::string text = dateText(firstPass);
    const Zone other("NST3:30");
    EXPECT_EQ(dateFromText(text), firstPass) << text;
}

TEST(Dates, WhatIsNoDateGivesNone)
{
    const std::string good = dateText(at(1000000000));
    ASSERT_TRUE(dateFromText(good));
    for (std::size_t length = 0; length < good.size(); ++length) {
        const std::string cut = good.substr(0, length);
        EXPECT_TRUE(!dateFromText(cut) || *dateFromText(cut) == at(1000000000)) << cut;
    }
    for (const char* text :
        {"", "@", "@1x", "yesterday", "2003-02-30 00:00:00 +00:00:00", "2003-13-01 00:00:00 +00:00:00",
            "2003-01-01 24:00:00 +00:00:00", "2003-01-01 00:00:00 00:00:00", "2003-01-01 00:00:00 +00:00:00 "})
        EXPECT_FALSE(dateFromText(text)) << text;
}

} // namespace trovarium
