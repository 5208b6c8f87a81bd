// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/SettingsText.h"

#include "runtime/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

namespace trovarium {

namespace {

constexpr std::string_view HexDigits = "0123456789ABCDEF";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

bool isControl(char character)
{
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
}

// Blanks at the ends are escaped too: those that a person adds around a value are dropped.
std::string escaped(std::string_view text, std::string_view special)
{
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        const bool blankAtEnd = character == ' ' && (index == 0 || index + 1 == text.size());
        if (character != '%' && !isControl(character) && !blankAtEnd && special.find(character) == special.npos) {
            result += character;
            continue;
        }
        const auto code = static_cast<unsigned char>(character);
        result += '%';
        result += HexDigits[code >> 4];
        result += HexDigits[code & 0x0F];
    }
    return result;
}

std::string escapedName(std::string_view name)
{
    return escaped(name, "=[");
}

// A "%" without two digits behind it stands for itself.
std::string unescaped(std::string_view text)
{
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char* const digits = text.data() + index + 1;
        unsigned char code = 0;
        if (text[index] == '%' && index + 2 < text.size()
            && std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
            result += static_cast<char>(code);
            index += 2;
        } else {
            result += text[index];
        }
    }
    return result;
}

std::string_view content(std::string_view line)
{
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return trimmed(line);
}

bool startsSection(std::string_view line)
{
    return !line.empty() && line.front() == '[';
}

// A damaged head starts a section without a name, so that its values don't belong to the section before.
bool isSection(std::string_view line, std::string_view section)
{
    return line.back() == ']' && isUtf8(line)
        && equalInCapitals(unescaped(trimmed(line.substr(1, line.size() - 2))), section);
}

bool holdsName(std::string_view line, std::string_view name)
{
    const std::size_t equals = line.find('=');
    return equals != line.npos && isUtf8(unescaped(line))
        && equalInCapitals(unescaped(trimmed(line.substr(0, equals))), name);
}

} // namespace

SettingsText::SettingsText(std::string_view text)
{
    if (text.substr(0, ByteOrderMark.size()) == ByteOrderMark)
        text.remove_prefix(ByteOrderMark.size());
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        m_lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::optional<std::string> SettingsText::value(std::string_view section, std::string_view name) const
{
    const Place place = find(section, name);
    if (!place.valueFound)
        return std::nullopt;
    const std::string_view line = content(m_lines[place.line]);
    return unescaped(trimmed(line.substr(line.find('=') + 1)));
}

void SettingsText::setValue(std::string_view section, std::string_view name, std::string_view value)
{
    std::string line = escapedName(name) + "=" + escaped(value, "");
    const Place place = find(section, name);
    if (place.valueFound) {
        m_lines[place.line] = std::move(line);
        return;
    }
    const auto at = [&] { return m_lines.begin() + static_cast<std::ptrdiff_t>(place.line); };
    m_lines.insert(at(), std::move(line));
    if (place.sectionFound)
        return;
    m_lines.insert(at(), "[" + escaped(section, "") + "]");
    if (place.line > 0)
        m_lines.insert(at(), "");
}

std::string SettingsText::text() const
{
    std::string result;
    for (const std::string& line : m_lines)
        result += line + "\n";
    return result;
}

// A new value goes after the last line of its section that isn't blank, a new section to the end.
SettingsText::Place SettingsText::find(std::string_view section, std::string_view name) const
{
    Place place{m_lines.size(), false, false};
    bool inside = false;
    for (std::size_t index = 0; index < m_lines.size(); ++index) {
        const std::string_view line = content(m_lines[index]);
        if (startsSection(line))
            inside = isSection(line, section);
        if (!inside || line.empty())
            continue;
        if (!startsSection(line) && holdsName(line, name))
            return {index, true, true};
        place = {index + 1, true, false};
    }
    return place;
}

} // namespace trovarium
