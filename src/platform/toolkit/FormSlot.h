#pragma once

#include "platform/toolkit/Form.h"

#include <functional>
#include <memory>
#include <utility>

namespace trovarium {

class Desktop;

// Holds the one instance of a form between its first mention and its unload.
class FormSlotBase {
public:
    explicit FormSlotBase(Desktop& desktop)
        : m_desktop(desktop)
    {
    }
    virtual ~FormSlotBase();
    FormSlotBase(const FormSlotBase&) = delete;
    FormSlotBase& operator=(const FormSlotBase&) = delete;

    bool isLoaded() const { return m_form != nullptr && m_form->isLoaded(); }

    // Called by the form at the end of its unload: the storage lives on until the outermost handler that
    // runs has returned, and the next mention makes a new form.
    void release();

protected:
    Form* current() const { return m_form.get(); }
    void hold(std::unique_ptr<Form> form);

private:
    Desktop& m_desktop;
    std::unique_ptr<Form> m_form;
};

template <class FormType>
class FormSlot : public FormSlotBase {
public:
    using Factory = std::function<std::unique_ptr<FormType>()>;

    FormSlot(Desktop& desktop, Factory factory)
        : FormSlotBase(desktop)
        , m_factory(std::move(factory))
    {
    }

    FormType& operator()()
    {
        if (current() == nullptr)
            hold(m_factory());
        return static_cast<FormType&>(*current());
    }

private:
    Factory m_factory;
};

} // namespace trovarium
