#pragma once

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trovarium {

// Questions that a test expects, with their answers, in order. A question that was not expected, or came
// with another text, fails the test, and so does an expected one that never came. While one lives it
// answers instead of the desktop's own boxes.
class ScriptedPrompts : public Prompts {
public:
    using Meanwhile = std::function<void()>; // what happens while the box is open

    struct Asked {
        std::string kind;
        std::string text;
        std::string title;
        std::string initial;
    };

    explicit ScriptedPrompts(Desktop& desktop)
        : m_desktop(&desktop)
    {
        desktop.setPrompts(this);
    }
    ScriptedPrompts() = default; // for code that takes `Prompts` itself
    ~ScriptedPrompts() override
    {
        verify();
        if (m_desktop != nullptr)
            m_desktop->setPrompts(nullptr);
    }
    ScriptedPrompts(const ScriptedPrompts&) = delete;
    ScriptedPrompts& operator=(const ScriptedPrompts&) = delete;

    void expectNotice(std::string text, Meanwhile meanwhile = {})
    {
        m_expected.push_back({"notice", std::move(text), Answer::Ok, {}, std::move(meanwhile)});
    }
    void expectQuestion(std::string text, Answer answer, Meanwhile meanwhile = {})
    {
        m_expected.push_back({"question", std::move(text), answer, {}, std::move(meanwhile)});
    }
    void expectInput(std::string prompt, std::string answer, Meanwhile meanwhile = {})
    {
        m_expected.push_back({"input box", std::move(prompt), {}, std::move(answer), std::move(meanwhile)});
    }

    // All that was asked, expected or not.
    const std::vector<Asked>& asked() const { return m_asked; }

    // Fails the test for every expected question that hasn't come by now, and forgets it.
    void verify()
    {
        for (const Expected& expected : std::exchange(m_expected, {}))
            ADD_FAILURE() << "this " << expected.kind << " never came:\n" << expected.text;
    }

    Answer messageBox(std::string_view text, Buttons buttons, std::string_view title) override
    {
        const bool isQuestion = buttons == Buttons::YesNo;
        const Answer refusal = isQuestion ? Answer::No : Answer::Ok;
        return take({isQuestion ? "question" : "notice", std::string(text), std::string(title), {}}, refusal).answer;
    }
    std::string inputBox(std::string_view prompt, std::string_view title, std::string_view initial) override
    {
        return take({"input box", std::string(prompt), std::string(title), std::string(initial)}, {}).input;
    }

private:
    struct Expected {
        std::string kind;
        std::string text;
        Answer answer;
        std::string input;
        Meanwhile meanwhile;
    };

    // The next expected question if it is `asked`; otherwise fails the test and refuses.
    Expected take(const Asked& asked, Answer refusal)
    {
        m_asked.push_back(asked);
        const Expected refused{{}, {}, refusal, {}, {}};
        if (m_expected.empty()) {
            ADD_FAILURE() << "this " << asked.kind << " was not expected:\n" << asked.text;
            return refused;
        }
        const Expected expected = std::move(m_expected.front());
        m_expected.pop_front();
        if (expected.kind != asked.kind || expected.text != asked.text) {
            ADD_FAILURE() << "expected this " << expected.kind << ":\n"
                          << expected.text << "\nand got this " << asked.kind << ":\n"
                          << asked.text;
            return refused;
        }
        if (expected.meanwhile)
            expected.meanwhile();
        return expected;
    }

    Desktop* m_desktop = nullptr;
    std::deque<Expected> m_expected;
    std::vector<Asked> m_asked;
};

} // namespace trovarium
