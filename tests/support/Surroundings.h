#pragma once

#include <optional>
#include <stdlib.h>
#include <string>
#include <time.h>

namespace trovarium {

// A variable of the environment with another value, or none, for as long as this lives.
class VariableForNow {
public:
    VariableForNow(const char* name, const std::optional<std::string>& value)
        : m_name(name)
    {
        if (const char* old = getenv(name))
            m_old = old;
        set(value);
    }
    ~VariableForNow() { set(m_old); }
    VariableForNow(const VariableForNow&) = delete;
    VariableForNow& operator=(const VariableForNow&) = delete;

private:
    void set(const std::optional<std::string>& value)
    {
        if (value)
            setenv(m_name, value->c_str(), 1);
        else
            unsetenv(m_name);
        tzset(); // it may be the time zone
    }

    const char* m_name;
    std::optional<std::string> m_old;
};

} // namespace trovarium
