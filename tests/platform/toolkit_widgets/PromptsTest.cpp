#include "platform/toolkit/Prompts.h"

#include "platform/Stage.h"
#include "platform/toolkit/Timer.h"
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

namespace trovarium {

namespace {

using Button = QDialogButtonBox::StandardButton;

class PromptsTest : public Stage {
protected:
    void SetUp() override
    {
        desktop.setPrompts(nullptr); // the real ones
        show();
    }

    static QDialog* box() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
    void whenAsked(std::function<void(QDialog&)> action)
    {
        robot.when(
            [] { return box() != nullptr && box()->isVisible(); }, [action = std::move(action)] { action(*box()); });
    }
    Answer asked(std::string_view text, std::function<void(QDialog&)> action, Buttons buttons = Buttons::YesNo,
        std::string_view title = "")
    {
        whenAsked(std::move(action));
        return desktop.prompts().messageBox(text, buttons, title);
    }
    std::string entered(std::function<void(QDialog&)> action)
    {
        whenAsked(std::move(action));
        return desktop.prompts().inputBox("Enter name for new group.", "New Album Group", "new group");
    }
    static void press(QDialog& dialog, Button button)
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

    Timer timer{&form, {.Name = "timer", .Interval = 1}};
};

TEST_F(PromptsTest, AQuestionIsAnsweredByButtonEnterOrEscape)
{
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { press(dialog, Button::Yes); }), Answer::Yes);
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { press(dialog, Button::No); }), Answer::No);
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { key(dialog, Qt::Key_Return); }), Answer::Yes);
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { key(dialog, Qt::Key_Escape); }), Answer::No);
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { dialog.close(); }), Answer::No);
}

TEST_F(PromptsTest, TextsAreShownAsTheyAre)
{
    const auto look = [](QDialog& dialog) {
        EXPECT_TRUE(shows(dialog, "<b>/home/ann/a & b</b>\n\nnext\nlast"));
        EXPECT_EQ(dialog.windowTitle(), "Removed unassociated INFO file(s)");
        EXPECT_GT(dialog.width(), dialog.fontMetrics().horizontalAdvance(dialog.windowTitle())) << "the title is whole";
        key(dialog, Qt::Key_Escape);
    };
    EXPECT_EQ(asked("<b>/home/ann/a & b</b>\r\rnext\r\nlast", look, Buttons::Ok, "Removed unassociated INFO file(s)"),
        Answer::Ok);
    std::string text;
    for (int line = 0; line < 500; ++line)
        text += "photo.jpg    Error=File already exists\r";
    const auto lookAtMany = [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Trovarium");
        EXPECT_LT(dialog.height(), dialog.screen()->availableGeometry().height()) << "the buttons are in reach";
        press(dialog, Button::Ok);
    };
    asked(text, lookAtMany, Buttons::Ok);
}

TEST_F(PromptsTest, AnInputBoxGivesTheTextOrNothingWhenCancelled)
{
    const auto edit = [](QDialog& dialog) {
        auto* field = dialog.findChild<QLineEdit*>();
        EXPECT_TRUE(shows(dialog, "Enter name for new group."));
        EXPECT_EQ(dialog.windowTitle(), "New Album Group");
        EXPECT_EQ(field->selectedText(), "new group") << "typing replaces it";
        field->setText("Rome\n1998");
        key(dialog, Qt::Key_Return);
    };
    EXPECT_EQ(entered(edit), "Rome 1998");
    EXPECT_EQ(entered([](QDialog& dialog) { press(dialog, Button::Ok); }), "new group");
    EXPECT_EQ(entered([](QDialog& dialog) { key(dialog, Qt::Key_Escape); }), "");
    EXPECT_EQ(entered([](QDialog& dialog) { press(dialog, Button::Cancel); }), "");
}

TEST_F(PromptsTest, TimersRunWhileAQuestionStandsAndMayUnloadItsForm)
{
    note(timer.Tick, "tick");
    when["tick"] = [&] {
        if (box() != nullptr)
            form.unload();
    };
    timer.Enabled = true;
    robot.when(
        [&] { return !form.isLoaded() && box() != nullptr && box()->isVisible(); }, [] { press(*box(), Button::Yes); });
    EXPECT_EQ(desktop.prompts().messageBox("Sure?", Buttons::YesNo, ""), Answer::Yes);
}

TEST_F(PromptsTest, TheProgramMayEndWhileAQuestionStands)
{
    EXPECT_THROW(asked("Sure?", [](QDialog&) { testDesktop().endProgram(1); }), ProgramEnd);
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
