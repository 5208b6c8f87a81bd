// SPDX-License-Identifier: GPL-3.0-or-later

#include "runtime/Numbers.h"

#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace trovarium {

namespace {

// A number beyond the range of a double: zero if it is too small, else a failure.
double outOfRangeNumber(std::string_view number)
{
    const std::size_t exponent = number.find_first_of("eE");
    const bool tiny = exponent != std::string_view::npos
        ? number[exponent + 1] == '-'
        : number.substr(0, number.find('.')).find_first_of("123456789") == std::string_view::npos;
    if (tiny)
        return 0;
    throw Failure(FailureKind::Overflow);
}

struct ParsedNumber {
    double value = 0;
    std::size_t length = 0;
};

// The number at the start of `text`: sign, digits, one point, an exponent. The length is 0 if there is none.
ParsedNumber parseNumber(std::string_view text)
{
    const std::size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
    // from_chars would also accept "inf" and "nan", and no "+".
    if (text.substr(sign).find_first_of(".0123456789") != 0)
        return {};
    const std::string_view number = text.substr(text.starts_with('+') ? 1 : 0);
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::invalid_argument)
        return {};
    const auto length = static_cast<std::size_t>(end - text.data());
    if (error == std::errc::result_out_of_range)
        value = outOfRangeNumber(text.substr(0, length));
    return {value, length};
}

// The shortest text that reads back the same. From 1e21 on and below 1e-6 it has an exponent, which keeps it short.
template <class Real>
std::string shortestText(Real value)
{
    if (value == 0)
        return "0";
    const double size = std::abs(static_cast<double>(value));
    const bool plain = size >= 1e-6 && size < 1e21;
    char buffer[64];
    const auto result = plain ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
                              : std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    return std::string(buffer, result.ptr);
}

template <class Whole>
Whole toWhole(double value)
{
    const double rounded = roundHalfEven(value);
    if (!(rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max()))
        throw Failure(FailureKind::Overflow);
    return static_cast<Whole>(rounded);
}

template <class Real>
Real quotient(Real dividend, Real divisor)
{
    if (divisor == 0)
        throw Failure(dividend == 0 ? FailureKind::Overflow : FailureKind::DivisionByZero);
    const Real result = dividend / divisor;
    if (!std::isfinite(result))
        throw Failure(FailureKind::Overflow);
    return result;
}

} // namespace

double roundHalfEven(double value)
{
    return std::nearbyint(value);
}

std::int16_t toInt16(double value)
{
    return toWhole<std::int16_t>(value);
}

std::int32_t toInt32(double value)
{
    return toWhole<std::int32_t>(value);
}

double divide(double dividend, double divisor)
{
    return quotient(dividend, divisor);
}

float divideSingle(float dividend, float divisor)
{
    return quotient(dividend, divisor);
}

double roundToPlaces(double value, int places)
{
    const double scale = std::pow(10.0, places);
    const double scaled = value * scale;
    return std::isfinite(scaled) ? roundHalfEven(scaled) / scale : value;
}

double leadingNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    return parseNumber(text).value;
}

double strictNumber(std::string_view text)
{
    text = trimmed(text);
    const ParsedNumber number = parseNumber(text);
    if (number.length == 0 || number.length != text.size())
        throw Failure(FailureKind::TypeMismatch);
    return number.value;
}

bool toBoolean(std::string_view text)
{
    text = trimmed(text);
    if (equalInCapitals(text, booleanText(true)))
        return true;
    if (equalInCapitals(text, booleanText(false)))
        return false;
    return strictNumber(text) != 0;
}

std::string_view booleanText(bool value)
{
    return value ? "True" : "False";
}

std::string numberText(double value)
{
    return shortestText(value);
}

std::string numberText(float value)
{
    return shortestText(value);
}

std::string formatWhole(double value, int digits)
{
    const double rounded = std::round(value); // half away from zero
    char buffer[std::numeric_limits<double>::max_exponent10 + 8];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, std::abs(rounded), std::chars_format::fixed, 0);
    std::string text(buffer, result.ptr);
    if (digits > 0 && text.size() < static_cast<std::size_t>(digits))
        text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
    if (rounded < 0)
        text.insert(0, 1, '-');
    return text;
}

double FixedRandom::next()
{
    // The linear congruential generator of "Numerical Recipes", chapter 7.
    m_state = m_state * 1664525U + 1013904223U;
    return m_state / 4294967296.0;
}

} // namespace trovarium
