// SPDX-License-Identifier: GPL-3.0-or-later

#include "runtime/Dates.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "support/FailureOf.h"
#include "support/Surroundings.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

namespace trovarium {

namespace {

using FromValue = std::vector<std::pair<double, std::string>>;
using FromText = std::vector<std::pair<std::string, std::string>>;

// What the call gives, or what it fails with.
template <class Call>
std::string answer(Call&& call)
{
    std::string text;
    const std::string failure = failureOf([&] { text = numberText(call()); });
    return failure + text;
}

} // namespace

TEST(Numbers, RoundHalfToEvenAndFailBeyondTheirRange)
{
    const FromValue cases{{0.5, "0"}, {1.5, "2"}, {2.5, "2"}, {-1.5, "-2"}, {2.51, "3"}, {32767.49, "32767"},
        {32767.5, "Overflow"}, {-32768.5, "-32768"}, {-32768.51, "Overflow"},
        {std::numeric_limits<double>::quiet_NaN(), "Overflow"}};
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(answer([value = value] { return toInt16(value); }), expected) << value;
    EXPECT_EQ(answer([] { return toInt32(2147483647.5); }), "Overflow");
    EXPECT_EQ(roundToPlaces(1.125, 2), 1.12);
    EXPECT_EQ(roundToPlaces(1e308, 2), 1e308);
    EXPECT_EQ(divide(1, 4), 0.25);
    EXPECT_EQ(answer([] { return divide(1, 0); }), "Division by zero");
    EXPECT_EQ(answer([] { return divideSingle(0, 0); }), "Overflow");
    EXPECT_EQ(answer([] { return divide(1e308, 1e-10); }), "Overflow");
}

TEST(Numbers, AreReadFromTheStartOfATextOrFromTheWholeAndABooleanAlsoFromAWord)
{
    const auto expectAnswers = [](auto call, const FromText& cases) {
        for (const auto& [text, expected] : cases)
            EXPECT_EQ(answer([&, &text = text] { return call(text); }), expected) << text;
    };
    const std::string mismatch = "Type mismatch";
    expectAnswers(leadingNumber,
        {{"", "0"}, {"abc", "0"}, {"\t 12abc", "12"}, {"-3.5.7", "-3.5"}, {"+7", "7"}, {".5", "0.5"}, {"5.", "5"},
            {".", "0"}, {"-", "0"}, {"1e3x", "1000"}, {"1e", "1"}, {"1e+", "1"}, {"1E-2", "0.01"}, {"1,5", "1"},
            {"0x10", "0"}, {"nan", "0"}, {"1e-999", "0"}, {"1e999", "Overflow"},
            {"1" + std::string(400, '0'), "Overflow"}, {"0." + std::string(400, '0') + "1", "0"}});
    expectAnswers(
        strictNumber, {{" -12.5e1 ", "-125"}, {" ", mismatch}, {"12x5", mismatch}, {"1e", mismatch}, {"T", mismatch}});
    expectAnswers(
        toBoolean, {{" tRUE ", "1"}, {"0.1", "1"}, {"fALSE", "0"}, {"0.0", "0"}, {"", mismatch}, {"Truee", mismatch}});
}

TEST(Numbers, AreWrittenAsTheShortestTextThatReadsBackTheSameAndWholeOnesPadded)
{
    const FromValue cases{{-0.0, "0"}, {12.3, "12.3"}, {1.0 / 3, "0.3333333333333333"}, {0.000001, "0.000001"},
        {1e-7, "1e-07"}, {1e20, "100000000000000000000"}, {1e21, "1e+21"}, {-1e300, "-1e+300"}};
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(numberText(value), expected);
    EXPECT_EQ(numberText(0.1F) + numberText(std::int64_t{3} << 30), "0.13221225472");
    EXPECT_EQ(formatWhole(0.5) + formatWhole(2.5) + formatWhole(-2.5) + formatWhole(-0.4), "13-30");
    EXPECT_EQ(formatWhole(7, 4) + formatWhole(12345, 4) + formatWhole(-7, 4), "000712345-0007");
}

TEST(Text, CapitalsAreThoseOfAsciiAndWindows1252AndOrderTheLists)
{
    EXPECT_EQ(upper("azAZ09_-.{`"), "AZAZ09_-.{`");
    EXPECT_EQ(upper("àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿšœž"), "ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸŠŒŽ");
    EXPECT_EQ(upper("×÷ßµƒŸŠŒŽ€ąčжω漢😀"), "×÷ßµƒŸŠŒŽ€ąčжω漢😀") << "letters beyond Windows-1252 stay";
    EXPECT_TRUE(equalInCapitals("Fähre ÿ.JPG", "fÄHRE Ÿ.jpg"));
    EXPECT_FALSE(equalInCapitals("a", "ab") || equalInCapitals("ab", "bb"));
    for (int lead = 0; lead < 256; ++lead) { // also in a damaged text no place changes
        const std::string damaged{'a', static_cast<char>(lead), '\xBF', 'z', static_cast<char>(lead)};
        EXPECT_TRUE(equalInCapitals(damaged, upper(damaged))) << lead;
    }
    const std::vector<std::string> sorted{"  All Photos  ", "!", "A", "a", "a1", "B", "b", "Z", "_", "Ä", "ä"};
    std::vector<std::string> names(sorted.rbegin(), sorted.rend());
    std::sort(names.begin(), names.end(), listedBefore);
    EXPECT_EQ(names, sorted);
}

TEST(Text, ASearchWithoutCaseGivesBytePositionsAndCutsTakeWhatIsThere)
{
    EXPECT_EQ(findNoCase("Im Hafen von Köln", "KÖLN"), 13U);
    EXPECT_EQ(findNoCase("aXbx", "x", 2), 3U);
    EXPECT_EQ(findNoCase("abc", "", 3), 3U);
    EXPECT_EQ(findNoCase("abc", "", 4), std::string_view::npos);
    EXPECT_EQ(findNoCase("aab", "AB"), 1U);
    EXPECT_EQ(std::string("<").append(trimmed("  a b  ")).append(trimmed("   ")) + ">", "<a b>");
    EXPECT_EQ(std::string(right("abc", 2)).append(right("abc", 5)), "bcabc");
    EXPECT_EQ(withoutLast("photo.jpg.info", 5), "photo.jpg");
    EXPECT_EQ(withoutLast(".info", 5), "");
    EXPECT_EQ(failureOf([] { withoutLast("info", 5); }), "Invalid procedure call or argument");
    EXPECT_EQ(firstCharacters("Fähre €", 2) + firstCharacters("é", 9) + firstCharacters("é", 0), "Fäé");
}

TEST(Text, ALineOnDiskLosesNothing)
{
    for (const std::string_view good :
        {"", "plain ascii, longer than eight", "é", "\xE0\xA0\x80", "😀", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(isUtf8(good)) << good;
    for (const std::string_view bad : {"\xE9", "\xBF\xBF", "\xC3", "\xC0\xAF", "\xE0\x9F\xBF", "\xED\xA0\x80",
             "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF9\x80\x80\x80", "\xE2\x82", "12345678\xFF"})
        EXPECT_FALSE(isUtf8(bad));
    std::string bytes;
    for (int value = 0x80; value < 0x100; ++value)
        bytes += static_cast<char>(value);
    EXPECT_EQ(characterCount(fromWindows1252(bytes)), bytes.size());
    for (const auto& [text, line] :
        std::vector<std::pair<std::string, std::string>>{{"Title=Hafen", "Title=Hafen"}, {"Köln", "K\xF6ln"},
            {"10 €", "10 \x80"}, {"Āódź", "Āódź"}, {"漢字", "漢字"}, {"€\u0081Š\u008DŸé", "\x80\x81\x8A\x8D\x9F\xE9"},
            {"Ã©", "Ã©"}, // whose Windows-1252 bytes would read as "é"
            {"\u0080", "\u0080"}, {fromWindows1252(bytes), bytes}}) {
        EXPECT_EQ(encodeLine(text), line);
        EXPECT_EQ(fromWindows1252(line), text);
    }
}

TEST(Dates, AreStampedInLocalTimeAndTheirTextComesBackAsTheSameInstant)
{
    const auto at = [](std::int64_t seconds) { return Instant(std::chrono::seconds(seconds)); };
    const ScopedEnv zone("TZ", "WET0WEST,M3.5.0/1,M10.5.0"); // its rule, which needs no database of zones
    const Instant summer = at(1056975245);                   // 2003-06-30 12:14:05 UTC
    EXPECT_EQ(logCreatedStamp(summer), "06/30/03 13:14");
    EXPECT_EQ(logLineStamp(summer), "06/30/03  01:14:05PM");
    EXPECT_EQ(timeOfDayStamp(summer), "131405");
    EXPECT_EQ(dateText(summer), "2003-06-30 13:14:05 +01:00:00");
    EXPECT_EQ(dateText(at(253402214400)), "9999-12-31 00:00:00 +00:00:00");
    EXPECT_EQ(logLineStamp(at(12L * 3600)), "01/01/70  12:00:00PM");
    EXPECT_EQ(logLineStamp(at(0)), "01/01/70  12:00:00AM");
    // Both passes of the hour that the autumn of 2003 repeats, and dates at the ends of calendars.
    for (const std::int64_t seconds : {1067127000L, 1067130600L, 0L, -60000000000L, -62167392000L, 253402300799L,
             253402387200L, 1L << 55, -(1L << 60)}) {
        const std::string text = dateText(at(seconds));
        const ScopedEnv other("TZ", "NST3:30");
        EXPECT_EQ(dateFromText(text), at(seconds)) << text;
    }
    const std::string good = "2003-01-01 23:59:59 -00:00:01";
    ASSERT_EQ(dateFromText(good), at(1041465600));
    for (std::size_t length = 1; length < good.size(); ++length) // the last figure alone may be missed
        EXPECT_EQ(dateFromText(good.substr(0, length)).has_value(), length == good.size() - 1) << length;
    for (const char* text : {"", "@", "@1x", "-1-01-01 00:00:00 +00:00:00", "10000-01-01 00:00:00 +00:00:00",
             "2003-02-30 00:00:00 +00:00:00", "2003-01-01 24:00:00 +00:00:00", "2003-01-01 00:60:00 +00:00:00",
             "2003-01-01 00:00:61 +00:00:00", "2003-01-01 00:00:00 00:00:00", "2003-01-01 00:00:00 +24:00:00",
             "2003-01-01 00:00:00 +00:60:00", "2003-01-01 00:00:00 +00:00:60", "2003-01-01 00:00:00 +00:00:00 "})
        EXPECT_FALSE(dateFromText(text)) << text;
}

} // namespace trovarium
