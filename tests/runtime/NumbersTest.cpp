#include "runtime/Numbers.h"
#include "support/FailureOf.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace trovarium {

TEST(Numbers, RoundHalfToEvenAndCheckTheRangeAfterwards)
{
    struct Case {
        double value;
        std::string result;
    };
    for (const auto& [value, result] : {Case{0.5, "0"}, {1.5, "2"}, {2.5, "2"}, {-0.5, "0"}, {-1.5, "-2"}, {2.51, "3"},
             {32767.49, "32767"}, {32767.5, "Overflow"}, {-32768.5, "-32768"}, {-32768.51, "Overflow"},
             {std::nan(""), "Overflow"}, {std::numeric_limits<double>::infinity(), "Overflow"}}) {
        std::string answer;
        const std::string failure = failureOf([&, value = value] { answer = numberText(toInt16(value)); });
        EXPECT_EQ(failure + answer, result) << value;
    }
    EXPECT_EQ(failureOf([] { toInt32(2147483647.5); }), "Overflow");
    EXPECT_EQ(toInt32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
}

TEST(Numbers, DivisionTellsZeroByZeroFromTheOthers)
{
    EXPECT_EQ(divide(1, 4), 0.25);
    EXPECT_EQ(failureOf([] { divide(1, 0); }), "Division by zero");
    EXPECT_EQ(failureOf([] { divide(0, 0); }), "Overflow");
    EXPECT_EQ(failureOf([] { divide(1e308, 1e-10); }), "Overflow");
    EXPECT_EQ(failureOf([] { divideSingle(0, 0); }), "Overflow");
}

TEST(Numbers, PlacesAreRoundedHalfToEvenOnTheScaledValue)
{
    EXPECT_EQ(roundToPlaces(0.25, 1), 0.2);
    EXPECT_EQ(roundToPlaces(1.125, 2), 1.12);
    EXPECT_EQ(roundToPlaces(-1.375, 2), -1.38);
    EXPECT_EQ(roundToPlaces(1e308, 2), 1e308);
}

TEST(Numbers, TheLeadingNumberEndsWhereTheTextStopsBeingOne)
{
    struct Case {
        std::string_view text;
        double value;
    };
    for (const auto& [text, value] :
        {Case{"", 0}, {"abc", 0}, {"12", 12}, {"  12abc", 12}, {"\t-3.5.7", -3.5}, {"+7", 7}, {".5", 0.5}, {"5.", 5},
            {".", 0}, {"-", 0}, {"1e3x", 1000}, {"1e", 1}, {"1e+", 1}, {"1E-2", 0.01}, {"1,5", 1}, {"e5", 0},
            {"1 2", 1}, {"--1", 0}, {"0x10", 0}, {"1e-999", 0}, {"nan", 0}, {"inf", 0}})
        EXPECT_EQ(leadingNumber(text), value) << "'" << text << "'";
    EXPECT_EQ(failureOf([] { leadingNumber("1e999"); }), "Overflow");
    EXPECT_EQ(failureOf([] { leadingNumber(std::string(400, '9')); }), "Overflow");
    EXPECT_EQ(leadingNumber("0." + std::string(400, '0') + "1"), 0);
}

TEST(Numbers, AStrictNumberIsTheWholeTrimmedText)
{
    EXPECT_EQ(strictNumber(" -12.5e1 "), -125);
    for (const std::string_view text : {"", " ", "12x", "1 2", "1e", "True", "."})
        EXPECT_EQ(failureOf([&] { strictNumber(text); }), "Type mismatch") << "'" << text << "'";
}

TEST(Numbers, ABooleanIsAWordOrANumber)
{
    for (const std::string_view text : {"True", "TRUE", "true", " true ", "-1", "1", "0.1"})
        EXPECT_TRUE(toBoolean(text)) << text;
    for (const std::string_view text : {"False", "fALSE", "0", "0.0", "-0"})
        EXPECT_FALSE(toBoolean(text)) << text;
    for (const std::string_view text : {"", "yes", "Truee", "Tru"})
        EXPECT_EQ(failureOf([&] { toBoolean(text); }), "Type mismatch") << text;
}

TEST(Numbers, ATextIsTheShortestThatReadsBackTheSame)
{
    struct Case {
        double value;
        std::string_view text;
    };
    for (const auto& [value, text] :
        {Case{0, "0"}, {-0.0, "0"}, {12, "12"}, {12.3, "12.3"}, {0.5, "0.5"}, {-0.25, "-0.25"}, {100000, "100000"},
            {1e15, "1000000000000000"}, {0.1, "0.1"}, {1.0 / 3, "0.3333333333333333"}, {0.000001, "0.000001"}}) {
        EXPECT_EQ(numberText(value), text);
        EXPECT_EQ(strictNumber(numberText(value)), value);
    }
    for (const double value : {1e300, 5e-324, 1e-7, 1e21})
        EXPECT_EQ(strictNumber(numberText(value)), value);
    EXPECT_EQ(numberText(0.1F), "0.1");
    EXPECT_EQ(numberText(std::int64_t{3} << 30), "3221225472");
}

TEST(Numbers, AWholeNumberIsPaddedAndNeverCut)
{
    struct Case {
        double value;
        int digits;
        std::string_view text;
    };
    for (const auto& [value, digits, text] :
        {Case{0, 1, "0"}, {0.5, 1, "1"}, {1.5, 1, "2"}, {2.5, 1, "3"}, {-2.5, 1, "-3"}, {-0.4, 1, "0"}, {7, 2, "07"},
            {7, 4, "0007"}, {12345, 4, "12345"}, {-7, 4, "-0007"}, {1e20, 1, "100000000000000000000"}})
        EXPECT_EQ(formatWhole(value, digits), text);
}

TEST(Numbers, TheFixedSequenceIsTheSameAtEachStartAndSpreads)
{
    FixedRandom one;
    FixedRandom other;
    int lower = 0;
    for (int count = 0; count < 1000; ++count) {
        const double value = one.next();
        ASSERT_EQ(value, other.next());
        ASSERT_GE(value, 0);
        ASSERT_LT(value, 1);
        lower += value < 0.5 ? 1 : 0;
    }
    EXPECT_NEAR(lower, 500, 60);
}

} // namespace trovarium
