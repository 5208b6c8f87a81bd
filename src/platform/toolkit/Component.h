#pragma once

#include <string>
#include <string_view>

namespace trovarium {

class Desktop;
class Form;

// What changed in a component, for what shows it. Hint: pointer, tool tip or accessible name.
enum class Change : unsigned char { Geometry, Visible, Enabled, Text, Appearance, Content, Hint, Order };

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

protected:
    template <class Value>
    friend class Stored;
    virtual void changed(Change change) = 0; // tells what shows it, if it has a window

private:
    std::string m_name;
};

} // namespace trovarium
