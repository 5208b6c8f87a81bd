#include "support/ScriptedPrompts.h"

#include "platform/toolkit/Desktop.h"

#include <gtest/gtest.h>

#include <utility>

namespace trovarium {

namespace {

std::string_view kindOf(bool isInput, Buttons buttons)
{
    if (isInput)
        return "input box";
    return buttons == Buttons::YesNo ? "question" : "notice";
}

} // namespace

ScriptedPrompts::ScriptedPrompts(Desktop& desktop)
    : m_desktop(&desktop)
{
    desktop.setPrompts(this);
}

ScriptedPrompts::~ScriptedPrompts()
{
    verify();
    if (m_desktop != nullptr)
        m_desktop->setPrompts(nullptr);
}

void ScriptedPrompts::expectNotice(std::string text, Meanwhile meanwhile)
{
    m_expected.push_back({false, std::move(text), Buttons::Ok, Answer::Ok, {}, std::move(meanwhile)});
}

void ScriptedPrompts::expectQuestion(std::string text, Answer answer, Meanwhile meanwhile)
{
    m_expected.push_back({false, std::move(text), Buttons::YesNo, answer, {}, std::move(meanwhile)});
}

void ScriptedPrompts::expectInput(std::string prompt, std::string answer, Meanwhile meanwhile)
{
    m_expected.push_back({true, std::move(prompt), Buttons::Ok, Answer::Ok, std::move(answer), std::move(meanwhile)});
}

void ScriptedPrompts::verify()
{
    for (const Expected& expected : m_expected)
        ADD_FAILURE() << "this " << kindOf(expected.isInput, expected.buttons) << " never came:\n" << expected.text;
    m_expected.clear();
}

Answer ScriptedPrompts::messageBox(std::string_view text, Buttons buttons, std::string_view title)
{
    Expected expected;
    if (!take({false, std::string(text), std::string(title), buttons, {}}, expected))
        return buttons == Buttons::YesNo ? Answer::No : Answer::Ok;
    if (expected.meanwhile)
        expected.meanwhile();
    return expected.answer;
}

std::string ScriptedPrompts::inputBox(std::string_view prompt, std::string_view title, std::string_view initial)
{
    Expected expected;
    if (!take({true, std::string(prompt), std::string(title), Buttons::Ok, std::string(initial)}, expected))
        return {};
    if (expected.meanwhile)
        expected.meanwhile();
    return expected.input;
}

bool ScriptedPrompts::take(const Asked& asked, Expected& expected)
{
    m_asked.push_back(asked);
    if (m_expected.empty()) {
        ADD_FAILURE() << "this " << kindOf(asked.isInput, asked.buttons) << " was not expected:\n" << asked.text;
        return false;
    }
    expected = std::move(m_expected.front());
    m_expected.pop_front();
    if (expected.isInput == asked.isInput && expected.buttons == asked.buttons && expected.text == asked.text)
        return true;
    ADD_FAILURE() << "expected this " << kindOf(expected.isInput, expected.buttons) << ":\n"
                  << expected.text << "\nand got this " << kindOf(asked.isInput, asked.buttons) << ":\n"
                  << asked.text;
    return false;
}

} // namespace trovarium
