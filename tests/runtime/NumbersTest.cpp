#include "runtime/Numbers.h"
#include "support/FailureOf.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace trovarium {

namespace {

using FromValue = std::vector<std::pair<double, std::string>>;
using FromText = std::vector<std::pair<std::string, std::string>>;

constexpr double Infinity = std::numeric_limits<double>::infinity();

// What the call gives, or what it fails with.
template <class Call>
std::string answer(Call&& call)
{
    std::string text;
    const std::string failure = failureOf([&] { text = numberText(call()); });
    return failure + text;
}

} // namespace

TEST(Numbers, RoundHalfToEvenAndCheckTheRangeAfterwards)
{
    const FromValue cases{{0.5, "0"}, {1.5, "2"}, {2.5, "2"}, {-0.5, "0"}, {-1.5, "-2"}, {2.51, "3"},
        {32767.49, "32767"}, {32767.5, "Overflow"}, {-32768.5, "-32768"}, {-32768.51, "Overflow"},
        {std::nan(""), "Overflow"}, {Infinity, "Overflow"}};
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(answer([value = value] { return toInt16(value); }), expected) << value;
    EXPECT_EQ(answer([] { return toInt32(2147483647.5); }), "Overflow");
    EXPECT_EQ(toInt32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(roundToPlaces(1.125, 2), 1.12);
    EXPECT_EQ(roundToPlaces(-1.375, 2), -1.38);
    EXPECT_EQ(roundToPlaces(1e308, 2), 1e308);
}

TEST(Numbers, DivisionTellsZeroByZeroFromTheOthers)
{
    EXPECT_EQ(divide(1, 4), 0.25);
    EXPECT_EQ(answer([] { return divide(1, 0); }), "Division by zero");
    EXPECT_EQ(answer([] { return divide(0, 0); }), "Overflow");
    EXPECT_EQ(answer([] { return divide(1e308, 1e-10); }), "Overflow");
    EXPECT_EQ(answer([] { return divideSingle(0, 0); }), "Overflow");
}

TEST(Numbers, TheLeadingNumberEndsWhereTheTextStopsBeingOne)
{
    const FromText cases{{"", "0"}, {"abc", "0"}, {"  12abc", "12"}, {"\t-3.5.7", "-3.5"}, {"+7", "7"}, {".5", "0.5"},
        {"5.", "5"}, {".", "0"}, {"-", "0"}, {"1e3x", "1000"}, {"1e", "1"}, {"1e+", "1"}, {"1E-2", "0.01"},
        {"1,5", "1"}, {"e5", "0"}, {"1 2", "1"}, {"--1", "0"}, {"0x10", "0"}, {"1e-999", "0"}, {"nan", "0"},
        {"1e999", "Overflow"}, {std::string(400, '9'), "Overflow"}, {"0." + std::string(400, '0') + "1", "0"}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(answer([&, &text = text] { return leadingNumber(text); }), expected) << "'" << text << "'";
}

TEST(Numbers, AStrictNumberIsTheWholeTrimmedTextAndABooleanAlsoAWord)
{
    const std::string mismatch = "Type mismatch";
    const FromText numbers{{" -12.5e1 ", "-125"}, {"", mismatch}, {" ", mismatch}, {"12x", mismatch}, {"1 2", mismatch},
        {"1e", mismatch}, {"True", mismatch}, {".", mismatch}};
    for (const auto& [text, expected] : numbers)
        EXPECT_EQ(answer([&, &text = text] { return strictNumber(text); }), expected) << "'" << text << "'";
    const FromText booleans{{"True", "1"}, {"TRUE", "1"}, {" true ", "1"}, {"-1", "1"}, {"0.1", "1"}, {"False", "0"},
        {"fALSE", "0"}, {"0.0", "0"}, {"-0", "0"}, {"", mismatch}, {"yes", mismatch}, {"Truee", mismatch},
        {"Tru", mismatch}};
    for (const auto& [text, expected] : booleans)
        EXPECT_EQ(answer([&, &text = text] { return toBoolean(text); }), expected) << "'" << text << "'";
}

TEST(Numbers, ATextIsTheShortestThatReadsBackTheSame)
{
    const FromValue cases{{-0.0, "0"}, {12, "12"}, {12.3, "12.3"}, {-0.25, "-0.25"}, {1e15, "1000000000000000"},
        {1.0 / 3, "0.3333333333333333"}, {0.000001, "0.000001"}, {1e-7, "1e-07"}, {5e-324, "5e-324"},
        {1e20, "100000000000000000000"}, {1e21, "1e+21"}, {-1e300, "-1e+300"}};
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(numberText(value), expected);
        EXPECT_EQ(strictNumber(expected), value);
    }
    EXPECT_EQ(numberText(0.1F), "0.1");
    EXPECT_EQ(numberText(std::int64_t{3} << 30), "3221225472");
}

TEST(Numbers, AWholeNumberIsPaddedAndNeverCut)
{
    const FromValue cases{
        {0, "0"}, {0.5, "1"}, {1.5, "2"}, {2.5, "3"}, {-2.5, "-3"}, {-0.4, "0"}, {1e20, "100000000000000000000"}};
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(formatWhole(value), expected);
    EXPECT_EQ(formatWhole(7, 4) + formatWhole(12345, 4) + formatWhole(-7, 4), "000712345-0007");
}

TEST(Numbers, TheFixedSequenceIsTheSameAtEachStart)
{
    FixedRandom random;
    EXPECT_EQ(random.next(), 1015568748 / 4294967296.0);
    EXPECT_EQ(random.next(), 1586005467 / 4294967296.0);
}

} // namespace trovarium
