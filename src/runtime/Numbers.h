// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

// Rounds half to even, as the processor's default mode does.
double roundHalfEven(double value);

// Round half to even; "Overflow" outside the type's range or for no number.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);

// x / 0 is "Division by zero", 0 / 0 and a quotient beyond the type's range are "Overflow".
double divide(double dividend, double divisor);
float divideSingle(float dividend, float divisor);

// Half to even on the value scaled by 10^places.
double roundToPlaces(double value, int places);

// The leading numeric text of `text` (blanks skipped, sign, digits, one point, exponent), 0 if none.
// Independent of the locale; "Overflow" beyond the range of a double.
double leadingNumber(std::string_view text);

// The whole trimmed text as a number, or "Type mismatch".
double strictNumber(std::string_view text);

// "True" or "False" in upper or lower case, or a number (0 is false); else "Type mismatch".
bool toBoolean(std::string_view text);
std::string_view booleanText(bool value);

// The shortest decimal that reads back the same; no sign for zero, no blank in front.
// Below 1e-6 and from 1e21 on it has an exponent.
std::string numberText(double value);
std::string numberText(float value);
template <std::integral Whole>
std::string numberText(Whole value)
{
    return std::to_string(value);
}

// Picture "0" (half away from zero, at least one digit) and its longer forms "00", "0000", which
// pad with zeros up to `digits` and never cut.
std::string formatWhole(double value, int digits = 1);

// The random sequence that is never seeded: the same first value at each start, in [0, 1).
class FixedRandom {
public:
    double next();

private:
    std::uint32_t m_state = 1;
};

} // namespace trovarium
