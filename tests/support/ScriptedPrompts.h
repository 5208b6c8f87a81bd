#pragma once

#include "platform/toolkit/Prompts.h"

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

class Desktop;

// Questions that a test expects, with their answers, in order. A question that was not expected, or came
// with another text, fails the test, and so does an expected one that never came. While one lives it
// answers instead of the desktop's own boxes.
class ScriptedPrompts : public Prompts {
public:
    using Meanwhile = std::function<void()>; // what happens while the box is open

    struct Asked {
        bool isInput = false;
        std::string text;
        std::string title;
        Buttons buttons = Buttons::Ok;
        std::string initial;
    };

    explicit ScriptedPrompts(Desktop& desktop);
    ScriptedPrompts() = default; // for code that takes `Prompts` itself
    ~ScriptedPrompts() override;
    ScriptedPrompts(const ScriptedPrompts&) = delete;
    ScriptedPrompts& operator=(const ScriptedPrompts&) = delete;

    void expectNotice(std::string text, Meanwhile meanwhile = {});
    void expectQuestion(std::string text, Answer answer, Meanwhile meanwhile = {});
    void expectInput(std::string prompt, std::string answer, Meanwhile meanwhile = {});

    // All that was asked, expected or not.
    const std::vector<Asked>& asked() const { return m_asked; }

    // Fails the test for every expected question that hasn't come by now, and forgets it.
    void verify();

    Answer messageBox(std::string_view text, Buttons buttons, std::string_view title) override;
    std::string inputBox(std::string_view prompt, std::string_view title, std::string_view initial) override;

private:
    struct Expected {
        bool isInput = false;
        std::string text;
        Buttons buttons = Buttons::Ok;
        Answer answer = Answer::Ok;
        std::string input;
        Meanwhile meanwhile;
    };

    // Takes the next expected question if it is `asked`; otherwise fails the test.
    bool take(const Asked& asked, Expected& expected);

    Desktop* m_desktop = nullptr;
    std::deque<Expected> m_expected;
    std::vector<Asked> m_asked;
};

} // namespace trovarium
