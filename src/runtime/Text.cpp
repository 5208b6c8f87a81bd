// SPDX-License-Identifier: GPL-3.0-or-later

#include "runtime/Text.h"

#include "runtime/Failure.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>

namespace trovarium {

namespace {

unsigned char byteAt(std::string_view text, std::size_t position)
{
    return position < text.size() ? static_cast<unsigned char>(text[position]) : 0;
}

// The byte at `position` of the text in capitals. Every letter has as many bytes as its capital, so byte positions
// don't change. Two-byte letters: U+00E0..U+00FE lie 0x20 above their capitals, U+0153,
// U+0161 and U+017E one above, and U+00FF has its capital at U+0178.
unsigned char capitalAt(std::string_view text, std::size_t position)
{
    const unsigned char byte = byteAt(text, position);
    if (byte < 0x80)
        return byte >= 'a' && byte <= 'z' ? static_cast<unsigned char>(byte - 0x20) : byte;
    if (byte == 0xC3)
        return byteAt(text, position + 1) == 0xBF ? 0xC5 : byte;
    const unsigned char lead = position == 0 ? 0 : byteAt(text, position - 1);
    if (lead == 0xC3) {
        if (byte == 0xBF)
            return 0xB8;
        return byte >= 0xA0 && byte != 0xB7 ? static_cast<unsigned char>(byte - 0x20) : byte;
    }
    if (lead == 0xC5 && (byte == 0x93 || byte == 0xA1 || byte == 0xBE))
        return static_cast<unsigned char>(byte - 1);
    return byte;
}

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

struct Decoded {
    char32_t character;
    std::size_t bytes;
};

// One character at the start of `text`, which isn't empty; none for an overlong form, a surrogate or a truncated one.
std::optional<Decoded> decodeUtf8(std::string_view text)
{
    const unsigned char lead = byteAt(text, 0);
    if (lead < 0x80)
        return Decoded{lead, 1};
    const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes)
        return std::nullopt;
    char32_t character = lead & (0x7FU >> bytes);
    for (std::size_t index = 1; index < bytes; ++index) {
        const unsigned char byte = byteAt(text, index);
        if (!isContinuation(byte))
            return std::nullopt;
        character = character << 6 | (byte & 0x3FU);
    }
    const char32_t smallest = bytes == 4 ? 0x10000 : bytes == 3 ? 0x800 : 0x80;
    if (character < smallest || character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF))
        return std::nullopt;
    return Decoded{character, bytes};
}

// Characters of Windows-1252 are below U+10000.
void appendUtf8(std::string& text, char32_t character)
{
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | character >> 6);
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | character >> 12);
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

// Windows-1252 from 0x80 to 0x9F; all other bytes are their own character. The five that have none read as
// the control character of their value. Source: unicode.org, MAPPINGS/VENDORS/MICSFT/WINDOWS/CP1252.TXT.
constexpr std::size_t FirstSpecial = 0x80;
constexpr std::array<char16_t, 32> SpecialCharacters{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool isSpecial(char32_t value)
{
    return value >= FirstSpecial && value < FirstSpecial + SpecialCharacters.size();
}

std::optional<char> windows1252Byte(char32_t character)
{
    if (character < 0x100 && !isSpecial(character))
        return static_cast<char>(character);
    const auto* found = std::find(SpecialCharacters.begin(), SpecialCharacters.end(), character);
    if (found == SpecialCharacters.end())
        return std::nullopt;
    return static_cast<char>(FirstSpecial + static_cast<std::size_t>(found - SpecialCharacters.begin()));
}

// The bytes of the text in Windows-1252, none where it can't hold it.
std::optional<std::string> toWindows1252(std::string_view utf8)
{
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::optional<Decoded> decoded = decodeUtf8(utf8);
        const std::optional<char> byte = decoded ? windows1252Byte(decoded->character) : std::nullopt;
        if (!byte)
            return std::nullopt;
        bytes += *byte;
        utf8.remove_prefix(decoded->bytes);
    }
    return bytes;
}

} // namespace

std::string upper(std::string_view text)
{
    std::string capitals(text);
    for (std::size_t index = 0; index < text.size(); ++index)
        capitals[index] = static_cast<char>(capitalAt(text, index));
    return capitals;
}

bool equalInCapitals(std::string_view left, std::string_view right)
{
    if (left.size() != right.size())
        return false;
    for (std::size_t index = 0; index < left.size(); ++index) {
        if (capitalAt(left, index) != capitalAt(right, index))
            return false;
    }
    return true;
}

bool listedBefore(std::string_view left, std::string_view right)
{
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t index = 0; index < common; ++index) {
        const unsigned char leftByte = capitalAt(left, index);
        const unsigned char rightByte = capitalAt(right, index);
        if (leftByte != rightByte)
            return leftByte < rightByte;
    }
    return left.size() != right.size() ? left.size() < right.size() : left < right;
}

std::size_t findNoCase(std::string_view text, std::string_view part, std::size_t from)
{
    for (std::size_t start = from; start <= text.size() && part.size() <= text.size() - start; ++start) {
        std::size_t matched = 0;
        while (matched < part.size() && capitalAt(text, start + matched) == capitalAt(part, matched))
            ++matched;
        if (matched == part.size())
            return start;
    }
    return std::string_view::npos;
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view right(std::string_view text, std::size_t bytes)
{
    return text.substr(text.size() - std::min(bytes, text.size()));
}

std::string_view withoutLast(std::string_view text, std::size_t bytes)
{
    if (bytes > text.size())
        throw Failure(FailureKind::InvalidProcedureCall);
    return text.substr(0, text.size() - bytes);
}

std::size_t characterCount(std::string_view utf8)
{
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char byte) { return !isContinuation(static_cast<unsigned char>(byte)); }));
}

std::string firstCharacters(std::string_view utf8, std::size_t count)
{
    std::size_t end = 0;
    for (; end < utf8.size(); ++end) {
        if (isContinuation(byteAt(utf8, end)))
            continue;
        if (count == 0)
            break;
        --count;
    }
    return std::string(utf8.substr(0, end));
}

bool isAscii(std::string_view text)
{
    const char* data = text.data();
    std::size_t rest = text.size();
    constexpr std::uint64_t HighBits = 0x8080808080808080;
    for (; rest >= sizeof(std::uint64_t); rest -= sizeof(std::uint64_t), data += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, data, sizeof word);
        if ((word & HighBits) != 0)
            return false;
    }
    return std::none_of(data, data + rest, [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

bool isUtf8(std::string_view bytes)
{
    if (isAscii(bytes))
        return true;
    while (!bytes.empty()) {
        const std::optional<Decoded> decoded = decodeUtf8(bytes);
        if (!decoded)
            return false;
        bytes.remove_prefix(decoded->bytes);
    }
    return true;
}

std::string fromWindows1252(std::string_view bytes)
{
    if (isUtf8(bytes))
        return std::string(bytes);
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        appendUtf8(text, isSpecial(value) ? SpecialCharacters[value - FirstSpecial] : value);
    }
    return text;
}

std::string encodeLine(std::string_view utf8)
{
    if (isAscii(utf8))
        return std::string(utf8);
    const std::optional<std::string> bytes = toWindows1252(utf8);
    return bytes && !isUtf8(*bytes) ? *bytes : std::string(utf8);
}

} // namespace trovarium
