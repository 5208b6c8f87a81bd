// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

// A property that holds its value: read as `control.Left()`, written as `control.Left = 20`. A new value is followed
// by a call of `Follow`, a member function of the owner; setting the same value again does nothing.
template <auto Follow, class Value>
class Stored;

template <class Owner, void (Owner::*Follow)(), class Value>
class Stored<Follow, Value> {
public:
    template <class... First>
    explicit Stored(Owner* owner, First&&... first)
        : m_owner(owner)
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
        (m_owner->*Follow)();
    }

private:
    Owner* m_owner;
    Value m_value;
};

// A number that is refused below `Least` with "Invalid property value".
template <auto Follow, class Value, int Least>
class AtLeast : public Stored<Follow, Value> {
public:
    using Stored<Follow, Value>::Stored;

    void operator=(Value value) // NOLINT(misc-unconventional-assign-operator)
    {
        if (value < Least)
            throw Failure(FailureKind::InvalidPropertyValue);
        Stored<Follow, Value>::operator=(value);
    }
};

// A property whose value is kept elsewhere, read and written in the same way. Get and Set are member functions of the
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
