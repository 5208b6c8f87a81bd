// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"
#include "runtime/Failure.h"

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace trovarium {

// Controls of one name with the indexes that exist: form.pctArrows(2). Another index is "Control array
// element does not exist".
template <class ControlType>
class ControlArray {
public:
    using PlanOf = std::function<Plan(int index)>;

    // No element yet: `add` gives each its own parent.
    explicit ControlArray(std::string_view name)
        : m_name(name)
    {
    }

    // The elements `first` to `last`, each drawn by `planOf`; Name in the plan is not looked at.
    ControlArray(Container* parent, std::string_view name, int first, int last, const PlanOf& planOf)
        : m_name(name)
    {
        for (int index = first; index <= last; ++index)
            add(parent, index, planOf(index));
    }
    ControlArray(Container* parent, std::string_view name, std::initializer_list<std::pair<int, Plan>> plans)
        : m_name(name)
    {
        for (const auto& [index, plan] : plans)
            add(parent, index, plan);
    }

    void add(Container* parent, int index, Plan plan)
    {
        const std::string name = m_name + "(" + std::to_string(index) + ")";
        plan.Name = name;
        m_elements.emplace(index, std::make_unique<ControlType>(parent, plan));
    }

    ControlType& operator()(int index) const
    {
        const auto found = m_elements.find(index);
        if (found == m_elements.end())
            throw Failure(FailureKind::NoControlArrayElement);
        return *found->second;
    }

    template <class Visit>
    void forEach(const Visit& visit) const
    {
        for (const auto& [index, element] : m_elements)
            visit(index, *element);
    }

private:
    std::string m_name;
    std::map<int, std::unique_ptr<ControlType>> m_elements;
};

// Wires one event of all elements; the handler gets the index first:
// on(form.imgThumbnail, &Image::MouseDown, this, &Concern::imgThumbnail_MouseDown).
template <class ControlType, class Base, class... Arguments, class Object, class... Taken>
void on(const ControlArray<ControlType>& controls, Event<Arguments...> Base::*event, Object* object,
    void (Object::*handler)(int, Taken...))
{
    controls.forEach([&](int index, ControlType& element) {
        (element.*event).connect([object, handler, index](Arguments... arguments) {
            if constexpr (sizeof...(Taken) == 0)
                (object->*handler)(index);
            else
                (object->*handler)(index, arguments...);
        });
    });
}

} // namespace trovarium
