#include "platform/toolkit/Prompts.h"

#include "platform/Stage.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

namespace trovarium {

namespace {

class PromptsTest : public Stage {
protected:
    void SetUp() override
    {
        desktop.setPrompts(nullptr); // the real ones
        show();
    }

    static QDialog* box() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
    static bool isOpen() { return box() != nullptr && box()->isVisible(); }
    Answer asked(std::string_view text, const std::function<void(QDialog&)>& action, Buttons buttons = Buttons::YesNo,
        std::string_view title = "")
    {
        robot.when(isOpen, [&] { action(*box()); });
        return desktop.prompts().messageBox(text, buttons, title);
    }
    std::string entered(const std::function<void(QDialog&)>& action)
    {
        robot.when(isOpen, [&] { action(*box()); });
        return desktop.prompts().inputBox("Enter name for new group.", "New Album Group", "new group");
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
    static QString textOf(const QDialog& dialog)
    {
        const QLabel* label = dialog.findChildren<QLabel*>().last();
        return label->textFormat() == Qt::PlainText ? label->text() : QString();
    }
};

TEST_F(PromptsTest, AQuestionIsAnsweredByButtonEnterOrEscapeAndOutlivesItsFormButNotTheProgram)
{
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { press(dialog, QDialogButtonBox::Yes); }), Answer::Yes);
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { press(dialog, QDialogButtonBox::No); }), Answer::No);
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { key(dialog, Qt::Key_Return); }), Answer::Yes);
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { key(dialog, Qt::Key_Escape); }), Answer::No);
    EXPECT_EQ(asked("Sure?", [](QDialog& dialog) { dialog.close(); }), Answer::No);
    const auto unload = [&](QDialog& dialog) {
        form.unload();
        press(dialog, QDialogButtonBox::Yes);
    };
    EXPECT_EQ(asked("Sure?", unload), Answer::Yes);
    EXPECT_THROW(asked("Sure?", [](QDialog&) { testDesktop().endProgram(1); }), ProgramEnd);
    EXPECT_EQ(box(), nullptr);
}

TEST_F(PromptsTest, TextsAreShownAsTheyAre)
{
    const std::string title = "Removed unassociated INFO file(s)";
    const auto look = [&](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog), "<b>/home/ann/a & b</b>\n\nnext\nlast");
        EXPECT_EQ(dialog.windowTitle().toStdString(), title);
        EXPECT_GT(dialog.width(), dialog.fontMetrics().horizontalAdvance(dialog.windowTitle())) << "the title is whole";
        key(dialog, Qt::Key_Escape);
    };
    EXPECT_EQ(asked("<b>/home/ann/a & b</b>\r\rnext\r\nlast", look, Buttons::Ok, title), Answer::Ok);
    const auto lookAtMany = [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Trovarium");
        EXPECT_LT(dialog.height(), dialog.screen()->availableGeometry().height()) << "the buttons are in reach";
        press(dialog, QDialogButtonBox::Ok);
    };
    asked(std::string(500, '\r'), lookAtMany, Buttons::Ok);
}

TEST_F(PromptsTest, AnInputBoxGivesTheTextOrNothingWhenCancelled)
{
    const auto edit = [](QDialog& dialog) {
        auto* field = dialog.findChild<QLineEdit*>();
        EXPECT_EQ(textOf(dialog) + "|" + dialog.windowTitle(), "Enter name for new group.|New Album Group");
        EXPECT_EQ(field->selectedText(), "new group") << "typing replaces it";
        field->setText("Rome\n1998");
        key(dialog, Qt::Key_Return);
    };
    EXPECT_EQ(entered(edit), "Rome 1998");
    EXPECT_EQ(entered([](QDialog& dialog) { press(dialog, QDialogButtonBox::Cancel); }), "");
}

} // namespace

} // namespace trovarium
