// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <utility>

namespace trovarium {

class Component;

// The exception barrier: every handler runs through it. A failure that escapes becomes a line on standard error; only
// the end of the program passes, to whoever raised the event.
void invokeHandler(Component& sender, const std::function<void()>& handler);

// An event of a control or a form, with at most one handler.
template <class... Arguments>
class Event {
public:
    explicit Event(Component* sender)
        : m_sender(sender)
    {
    }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    void connect(std::function<void(Arguments...)> handler) { m_handler = std::move(handler); }
    bool isWired() const { return static_cast<bool>(m_handler); }

    // Runs the handler now, inside the statement that raised it.
    void raise(Arguments... arguments)
    {
        if (m_handler)
            invokeHandler(*m_sender, [&] { m_handler(arguments...); });
    }

private:
    Component* m_sender;
    std::function<void(Arguments...)> m_handler;
};

// Wires one handler: on(form.cmdExit.Click, this, &Concern::cmdExit_Click). A handler takes all
// arguments or none.
template <class... Arguments, class Object, class... Taken>
void on(Event<Arguments...>& event, Object* object, void (Object::*handler)(Taken...))
{
    event.connect([object, handler](Arguments... arguments) {
        if constexpr (sizeof...(Taken) == 0)
            (object->*handler)();
        else
            (object->*handler)(arguments...);
    });
}

} // namespace trovarium
