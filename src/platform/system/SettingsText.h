// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

// The text of a settings file: a line "[key path]" for each section, a line "name=value" for each value.
// What a line can't hold is written as "%" and two hexadecimal digits. Section and value names compare
// without regard to case. A damaged line is kept in its place and counts as absent.
class SettingsText {
public:
    explicit SettingsText(std::string_view text);

    std::optional<std::string> value(std::string_view section, std::string_view name) const;
    void setValue(std::string_view section, std::string_view name, std::string_view value);
    std::string text() const;

private:
    struct Place {
        std::size_t line = 0; // of the value, or where it would be inserted
        bool sectionFound = false;
        bool valueFound = false;
    };

    Place find(std::string_view section, std::string_view name) const;

    std::vector<std::string> m_lines;
};

} // namespace trovarium
