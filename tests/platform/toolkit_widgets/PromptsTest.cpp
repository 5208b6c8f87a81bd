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

struct PromptsTest : Stage {
    PromptsTest()
    {
        desktop.setPrompts(nullptr); // the real ones
        show();
    }

    static QDialog* box() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
    // What the user does in the box that opens next.
    void expect(const std::function<void(QDialog&)>& act)
    {
        robot.when([] { return box() != nullptr && box()->isVisible(); }, [act] { act(*box()); });
    }
    Answer sure(const std::function<void(QDialog&)>& act)
    {
        expect(act);
        return desktop.prompts().messageBox("Sure?", Buttons::YesNo, "");
    }
    static void press(QDialog& dialog, QDialogButtonBox::StandardButton button)
    {
        dialog.findChild<QDialogButtonBox*>()->button(button)->click();
    }
    static void key(QDialog& dialog, int key)
    {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(dialog.focusWidget(), &press);
    }
    static QString textOf(const QDialog& dialog)
    {
        const QLabel* label = dialog.findChildren<QLabel*>().last();
        return label->textFormat() == Qt::PlainText ? label->text() : QString();
    }
};

TEST_F(PromptsTest, AQuestionIsAnsweredByButtonEnterOrEscapeAndOutlivesItsFormButNotTheProgram)
{
    EXPECT_EQ(sure([](QDialog& dialog) { press(dialog, QDialogButtonBox::No); }), Answer::No);
    EXPECT_EQ(sure([](QDialog& dialog) { key(dialog, Qt::Key_Return); }), Answer::Yes);
    EXPECT_EQ(sure([](QDialog& dialog) { key(dialog, Qt::Key_Escape); }), Answer::No);
    EXPECT_EQ(sure([](QDialog& dialog) { dialog.close(); }), Answer::No);
    const auto unload = [&](QDialog& dialog) {
        form.unload();
        press(dialog, QDialogButtonBox::Yes);
    };
    EXPECT_EQ(sure(unload), Answer::Yes);
    EXPECT_THROW(sure([](QDialog&) { testDesktop().endProgram(1); }), ProgramEnd);
    EXPECT_EQ(box(), nullptr);
}

TEST_F(PromptsTest, TextsAreShownAsTheyAreAndAnInputBoxGivesItsTextOrNothingWhenCancelled)
{
    expect([&](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog), "<b>/home/ann/a & b</b>\n\nnext\nlast");
        EXPECT_EQ(dialog.windowTitle(), "Removed unassociated INFO file(s)");
        EXPECT_GT(dialog.width(), dialog.fontMetrics().horizontalAdvance(dialog.windowTitle())) << "the title is whole";
        key(dialog, Qt::Key_Escape);
    });
    Prompts& prompts = desktop.prompts();
    const std::string text = "<b>/home/ann/a & b</b>\r\rnext\r\nlast";
    EXPECT_EQ(prompts.messageBox(text, Buttons::Ok, "Removed unassociated INFO file(s)"), Answer::Ok);
    expect([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Trovarium");
        EXPECT_LT(dialog.height(), dialog.screen()->availableGeometry().height()) << "the buttons are in reach";
        press(dialog, QDialogButtonBox::Ok);
    });
    prompts.messageBox(std::string(500, '\r'), Buttons::Ok, "");
    expect([](QDialog& dialog) {
        auto* field = dialog.findChild<QLineEdit*>();
        EXPECT_EQ(textOf(dialog) + "|" + dialog.windowTitle(), "Enter name for new group.|New Album Group");
        EXPECT_EQ(field->selectedText(), "new group") << "typing replaces it";
        field->setText("Rome\n1998");
        key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(prompts.inputBox("Enter name for new group.", "New Album Group", "new group"), "Rome 1998");
    expect([](QDialog& dialog) { press(dialog, QDialogButtonBox::Cancel); });
    EXPECT_EQ(prompts.inputBox("", "", "new group"), "");
}

} // namespace

} // namespace trovarium
