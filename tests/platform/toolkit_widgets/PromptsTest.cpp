#include "platform/toolkit/Prompts.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Timer.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <functional>

namespace trovarium {

namespace {

class PromptsTest : public testing::Test {
protected:
    PromptsTest()
    {
        testDesktop().setPrompts(nullptr); // the real ones
        form.show();
        testDesktop().DoEvents();
    }
    ~PromptsTest() override { form.unload(); }

    static QDialog* box() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
    void whenAsked(std::function<void(QDialog&)> action)
    {
        robot.when(
            [] { return box() != nullptr && box()->isVisible(); }, [action = std::move(action)] { action(*box()); });
    }
    static void press(QDialog& dialog, QDialogButtonBox::StandardButton button)
    {
        dialog.findChild<QDialogButtonBox*>()->button(button)->click();
    }
    static void key(QDialog& dialog, int key)
    {
        QWidget* receiver = dialog.focusWidget() != nullptr ? dialog.focusWidget() : &dialog;
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(receiver, &press);
    }
    static bool shows(const QDialog& dialog, const QString& text)
    {
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            if (label->text() == text && label->textFormat() == Qt::PlainText)
                return true;
        return false;
    }
    Prompts& prompts() { return testDesktop().prompts(); }

    Form form{testDesktop(), {.Name = "PromptForm", .Width = 6000, .Height = 3000}};
    Timer tmrTick{&form, {.Name = "tmrTick", .Interval = 1}};
    Robot robot{testDesktop()};
};

TEST_F(PromptsTest, AQuestionIsAnsweredByButtonEnterOrEscape)
{
    const std::vector<std::pair<std::function<void(QDialog&)>, Answer>> cases{
        {[](QDialog& dialog) { press(dialog, QDialogButtonBox::Yes); }, Answer::Yes},
        {[](QDialog& dialog) { press(dialog, QDialogButtonBox::No); }, Answer::No},
        {[](QDialog& dialog) { key(dialog, Qt::Key_Return); }, Answer::Yes},
        {[](QDialog& dialog) { key(dialog, Qt::Key_Escape); }, Answer::No},
        {[](QDialog& dialog) { dialog.close(); }, Answer::No},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        whenAsked(cases[i].first);
        EXPECT_EQ(prompts().messageBox("Sure?", Buttons::YesNo, ""), cases[i].second) << i;
    }
    whenAsked([](QDialog& dialog) {
        EXPECT_GT(dialog.width(), dialog.fontMetrics().horizontalAdvance(dialog.windowTitle())) << "the title is whole";
        dialog.close();
    });
    prompts().messageBox("Sure?", Buttons::YesNo, "Removed unassociated INFO file(s)");
}

TEST_F(PromptsTest, TextsAreShownAsTheyAre)
{
    whenAsked([](QDialog& dialog) {
        EXPECT_TRUE(shows(dialog, "<b>/home/ann/a & b</b>\n\nnext\nlast"));
        EXPECT_EQ(dialog.windowTitle(), "Group Exists.");
        key(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(prompts().messageBox("<b>/home/ann/a & b</b>\r\rnext\r\nlast", Buttons::Ok, "Group Exists."), Answer::Ok);
    std::string text;
    for (int line = 0; line < 500; ++line)
        text += "photo.jpg    Error=File already exists\r";
    whenAsked([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Trovarium");
        EXPECT_LT(dialog.height(), dialog.screen()->availableGeometry().height()) << "the buttons are in reach";
        press(dialog, QDialogButtonBox::Ok);
    });
    prompts().messageBox(text, Buttons::Ok, "");
}

TEST_F(PromptsTest, AnInputBoxGivesTheTextOrNothingWhenCancelled)
{
    whenAsked([](QDialog& dialog) {
        auto* edit = dialog.findChild<QLineEdit*>();
        EXPECT_TRUE(shows(dialog, "Enter name for new group."));
        EXPECT_EQ(edit->text(), "new group");
        EXPECT_EQ(edit->selectedText(), "new group") << "typing replaces it";
        edit->setText("Rome\n1998");
        key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(prompts().inputBox("Enter name for new group.", "New Album Group", "new group"), "Rome 1998");
    whenAsked([](QDialog& dialog) { press(dialog, QDialogButtonBox::Ok); });
    EXPECT_EQ(prompts().inputBox("text", "title", "new group"), "new group");
    whenAsked([](QDialog& dialog) { key(dialog, Qt::Key_Escape); });
    EXPECT_EQ(prompts().inputBox("text", "title", "new group"), "");
    whenAsked([](QDialog& dialog) { press(dialog, QDialogButtonBox::Cancel); });
    EXPECT_EQ(prompts().inputBox("text", "title", "new group"), "");
}

TEST_F(PromptsTest, TimersRunWhileAQuestionStandsAndMayUnloadItsForm)
{
    int ticks = 0;
    tmrTick.Tick.connect([&] {
        if (++ticks == 1 && box() != nullptr)
            form.unload();
    });
    tmrTick.Enabled = true;
    robot.when([&] { return ticks > 0 && box() != nullptr && box()->isVisible(); },
        [] { press(*box(), QDialogButtonBox::Yes); });
    EXPECT_EQ(prompts().messageBox("Sure?", Buttons::YesNo, ""), Answer::Yes);
    EXPECT_FALSE(form.isLoaded());
}

TEST_F(PromptsTest, TheProgramMayEndWhileAQuestionStands)
{
    whenAsked([](QDialog&) { testDesktop().endProgram(1); });
    EXPECT_THROW(prompts().messageBox("Sure?", Buttons::YesNo, ""), ProgramEnd);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(ScriptedPromptsTest, WhatWasNotForeseenFailsTheTest)
{
    ScriptedPrompts prompts;
    EXPECT_NONFATAL_FAILURE(prompts.messageBox("Sure?", Buttons::YesNo, ""), "not expected");
    prompts.expectNotice("Done");
    EXPECT_NONFATAL_FAILURE(prompts.messageBox("Gone", Buttons::Ok, ""), "got this notice");
    prompts.expectNotice("Done");
    EXPECT_NONFATAL_FAILURE(prompts.messageBox("Done", Buttons::YesNo, ""), "got this question");
    prompts.expectInput("Name?", "");
    EXPECT_NONFATAL_FAILURE(prompts.verify(), "never came");
}

} // namespace

} // namespace trovarium
