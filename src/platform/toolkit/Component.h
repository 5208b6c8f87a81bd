#pragma once

#include <string>
#include <string_view>

namespace trovarium {

class Desktop;
class Form;

// What a form is made of: the form itself, its controls, menus and timers.
class Component {
public:
    explicit Component(std::string_view name)
        : m_name(name)
    {
    }
    virtual ~Component() = default;
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    const std::string& Name() const { return m_name; }
    virtual Form& form() = 0;
    Desktop& desktop();

private:
    std::string m_name;
};

} // namespace trovarium
