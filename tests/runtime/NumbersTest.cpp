#include "runtime/Numbers.h"
#include "support/FailureOf.h"

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
    EXPECT_EQ(toInt32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(roundToPlaces(1.125, 2), 1.12);
    EXPECT_EQ(roundToPlaces(1e308, 2), 1e308);
    EXPECT_EQ(divide(1, 4), 0.25);
    EXPECT_EQ(answer([] { return divide(1, 0); }), "Division by zero");
    EXPECT_EQ(answer([] { return divideSingle(0, 0); }), "Overflow");
    EXPECT_EQ(answer([] { return divide(1e308, 1e-10); }), "Overflow");
}

TEST(Numbers, AreReadFromTheStartOfATextOrFromTheWholeAndABooleanAlsoFromAWord)
{
    const FromText leading{{"", "0"}, {"abc", "0"}, {"\t 12abc", "12"}, {"-3.5.7", "-3.5"}, {"+7", "7"}, {".5", "0.5"},
        {"5.", "5"}, {".", "0"}, {"-", "0"}, {"1e3x", "1000"}, {"1e", "1"}, {"1e+", "1"}, {"1E-2", "0.01"},
        {"1,5", "1"}, {"0x10", "0"}, {"nan", "0"}, {"1e-999", "0"}, {"1e999", "Overflow"},
        {std::string(400, '9'), "Overflow"}, {"0." + std::string(400, '0') + "1", "0"}};
    for (const auto& [text, expected] : leading)
        EXPECT_EQ(answer([&, &text = text] { return leadingNumber(text); }), expected) << text;
    const std::string mismatch = "Type mismatch";
    const FromText whole{
        {" -12.5e1 ", "-125"}, {" ", mismatch}, {"12x", mismatch}, {"1e", mismatch}, {"True", mismatch}};
    for (const auto& [text, expected] : whole)
        EXPECT_EQ(answer([&, &text = text] { return strictNumber(text); }), expected) << text;
    const FromText booleans{{" tRUE ", "1"}, {"-1", "1"}, {"0.1", "1"}, {"fALSE", "0"}, {"0.0", "0"}, {"", mismatch},
        {"Truee", mismatch}, {"Tru", mismatch}};
    for (const auto& [text, expected] : booleans)
        EXPECT_EQ(answer([&, &text = text] { return toBoolean(text); }), expected) << text;
    EXPECT_EQ(toBoolean(booleanText(true)), !toBoolean(booleanText(false)));
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

} // namespace trovarium
