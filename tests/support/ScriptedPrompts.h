// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
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
        std::string title;
        std::string initial{};
    };

    explicit ScriptedPrompts(Desktop& desktop)
        : m_desktop(desktop)
    {
        desktop.setPrompts(this);
    }
    ~ScriptedPrompts() override
    {
        verify();
        m_desktop.setPrompts(nullptr);
    }
    ScriptedPrompts(const ScriptedPrompts&) = delete;
    ScriptedPrompts& operator=(const ScriptedPrompts&) = delete;

    void expectNotice(const std::string& text, Meanwhile meanwhile = {})
    {
        m_expected.push_back({"notice: " + text, Answer::Ok, {}, std::move(meanwhile)});
    }
    void expectQuestion(const std::string& text, Answer answer, Meanwhile meanwhile = {})
    {
        m_expected.push_back({"question: " + text, answer, {}, std::move(meanwhile)});
    }
    void expectInput(const std::string& prompt, std::string answer, Meanwhile meanwhile = {})
    {
        m_expected.push_back({"input box: " + prompt, {}, std::move(answer), std::move(meanwhile)});
    }

    // From now on whatever isn't expected is agreed to, and `name` given to the first box that asks for one.
    void agreeWith(const std::string& name) { m_name = name; }

    // All that was asked, expected or not.
    const std::vector<Asked>& asked() const { return m_asked; }

    // Fails the test for every expected question that hasn't come by now, and forgets it.
    void verify()
    {
        for (const Expected& expected : std::exchange(m_expected, {}))
            ADD_FAILURE() << expected.what << "\nnever came";
    }

    Answer messageBox(std::string_view text, Message kind, std::string_view title) override
    {
        const bool isQuestion = kind == Message::Question || kind == Message::Warning;
        m_asked.push_back({std::string(title)});
        return take(isQuestion ? "question: " : "notice: ", text, isQuestion ? Answer::No : Answer::Ok).answer;
    }
    std::string inputBox(std::string_view prompt, std::string_view title, std::string_view initial) override
    {
        m_asked.push_back({std::string(title), std::string(initial)});
        return take("input box: ", prompt, {}).input;
    }

private:
    struct Expected {
        std::string what;
        Answer answer;
        std::string input;
        Meanwhile meanwhile;
    };

    // The next expected question if it is this one; otherwise fails the test and refuses.
    Expected take(std::string what, std::string_view text, Answer refusal)
    {
        what += text;
        Expected next{"nothing", refusal, {}, {}};
        if (m_name && m_expected.empty())
            return {{}, refusal == Answer::No ? Answer::Yes : refusal, std::exchange(*m_name, {}), {}};
        if (!m_expected.empty()) {
            next = std::move(m_expected.front());
            m_expected.pop_front();
        }
        if (next.what != what) {
            ADD_FAILURE() << what << "\nwas not expected, but " << next.what;
            return {{}, refusal, {}, {}};
        }
        if (next.meanwhile)
            next.meanwhile();
        return next;
    }

    Desktop& m_desktop;
    std::deque<Expected> m_expected;
    std::vector<Asked> m_asked;
    std::optional<std::string> m_name;
};

} // namespace trovarium
