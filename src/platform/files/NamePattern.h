#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

// Patterns for names: "*" is any text, "?" one character, several are joined by ";". Without regard to case;
// "*.*" and no pattern at all match every name.
class NamePattern {
public:
    explicit NamePattern(std::string_view patterns);

    bool matches(std::string_view capitals) const; // the name as `upper` gives it

private:
    std::vector<std::string> m_patterns; // in capitals
    bool m_all = false;
};

} // namespace trovarium
