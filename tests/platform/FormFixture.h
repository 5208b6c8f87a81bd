// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

namespace trovarium {

// A form for the controls of a test, and a diary of what they raise.
struct FormFixture : testing::Test {
    explicit FormFixture(const FormPlan& plan = {.Name = "FormFixture", .Width = 4500, .Height = 7500})
        : form(desktop, plan)
    {
    }
    void TearDown() override { form.unload(); }

    void show()
    {
        form.show();
        desktop.DoEvents();
    }

    // Notes each raise: the name, the arguments and what `more` tells then. Afterwards does what stands in `when`.
    template <class... Values>
    void note(Event<Values...>& event, const std::string& name, std::function<std::string()> more = {})
    {
        event.connect([this, name, more = std::move(more)](Values... values) {
            diary += name;
            ((diary += ":" + std::to_string(static_cast<int>(values))), ...);
            diary += more ? ":" + more() + " " : " ";
            if (const std::function<void()> act = when[name])
                act();
        });
    }
    std::string taken() { return std::exchange(diary, {}); }

    void keys(std::initializer_list<int> codes)
    {
        for (const int code : codes)
            robot.key(form, code);
    }

    Desktop& desktop = testDesktop();
    Form form;
    Robot robot{desktop};
    std::string diary;
    std::map<std::string, std::function<void()>> when;
};

} // namespace trovarium
