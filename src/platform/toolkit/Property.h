#pragma once

#include "platform/toolkit/Component.h"
#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

// A property that holds its value: read as `control.Left()`, written as `control.Left = 20`. Its owner is
// told of each new value, and of none that was there already.
template <class Value>
class Stored {
public:
    template <class... First>
    explicit Stored(Component* owner, Change change, First&&... first)
        : m_owner(owner)
        , m_change(change)
        , m_value(std::forward<First>(first)...)
    {
    }
    Stored(const Stored&) = delete;
    Stored& operator=(const Stored&) = delete;

    const Value& operator()() const { return m_value; }
    void operator=(Value value) // NOLINT(misc-unconventional-assign-operator)
    {
        if (value == m_value)
            return;
        m_value = std::move(value);
        m_owner->changed(m_change);
    }

private:
    Component* m_owner;
    Change m_change;
    Value m_value;
};

// A number that is refused below `Least` with "Invalid property value".
template <class Value, int Least>
class AtLeast : public Stored<Value> {
public:
    using Stored<Value>::Stored;

    void operator=(Value value) // NOLINT(misc-unconventional-assign-operator)
    {
        if (value < Least)
            throw Failure(FailureKind::InvalidPropertyValue);
        Stored<Value>::operator=(value);
    }
};

// A property with more to it, read and written in the same way. Get and Set are member functions of the
// owner.
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
    void operator=(Argument value) { (m_owner->*Set)(std::move(value)); } // NOLINT(misc-unconventional-assign-operator)

private:
    Owner* m_owner;
};

} // namespace trovarium
