#pragma once

#include <utility>

namespace trovarium {

// A property of a control: read as `control.Left()`, written as `control.Left = 20`. Get and Set are
// member functions of the owner.
template <auto Get, auto Set>
class Property;

template <class Owner, class Value, Value (Owner::*Get)() const, class Argument, void (Owner::*Set)(Argument)>
class Property<Get, Set> {
public:
    explicit Property(Owner* owner)
        : m_owner(owner)
    {
    }
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    Value operator()() const { return (m_owner->*Get)(); }
    void operator=(Argument value) const { (m_owner->*Set)(value); } // NOLINT(misc-unconventional-assign-operator)

private:
    Owner* m_owner;
};

} // namespace trovarium
