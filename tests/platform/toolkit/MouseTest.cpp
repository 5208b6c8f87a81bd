#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FormSlot.h"
#include "platform/toolkit/Frame.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/Line.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/PictureButton.h"
#include "platform/toolkit/ScrollBar.h"
#include "platform/toolkit/Shape.h"
#include "platform/toolkit/TextBox.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace trovarium {

namespace {

using Diary = std::vector<std::string>;

std::string number(float value)
{
    return std::to_string(static_cast<int>(value));
}

std::string mouse(const std::string& what, int button, int shift, float x, float y)
{
    return what + " " + std::to_string(button) + " " + std::to_string(shift) + " " + number(x) + "," + number(y);
}

// A pixel-scaled box of 200 by 160 pixels on a twip-scaled form, with two images that overlap in it, a
// shape over both, and a label on a picture button.
class Board : public Form {
public:
    explicit Board(Desktop& desktop)
        : Form(desktop, {.Name = "Board", .Width = 6000, .Height = 4500})
    {
        for (Image* image : {&low, &high}) {
            const auto noted = [this, image](const char* what) {
                return [this, image, what](
                           int b, int s, float x, float y) { note(mouse(image->Name() + what, b, s, x, y)); };
            };
            image->MouseDown.connect(noted(" down"));
            image->MouseMove.connect(noted(" move"));
            image->MouseUp.connect(noted(" up"));
            image->Click.connect([this, image] { note(image->Name() + " click"); });
        }
        box.MouseDown.connect([this](int b, int s, float x, float y) { note(mouse("box down", b, s, x, y)); });
        box.Click.connect([this] { note("box click"); });
        on(MouseDown, this, &Board::Form_MouseDown);
        on(button.Click, this, &Board::button_Click);
        on(text.Click, this, &Board::text_Click);
    }

    PictureBox box{this, {.Name = "box", .Left = 300, .Top = 300, .Width = 3000, .Height = 2400}, ScaleMode::Pixels};
    Image low{&box, {.Name = "low", .Left = 150, .Top = 150, .Width = 900, .Height = 900}};
    Image high{&box, {.Name = "high", .Left = 600, .Top = 600, .Width = 900, .Height = 900}};
    Shape frame{&box, {.Name = "frame", .Width = 2000, .Height = 2000}};
    Line line{&box, {.Name = "line", .Width = 2000, .Height = 2000}};
    PictureButton button{this, {.Name = "button", .Left = 3900, .Top = 300, .Width = 1500, .Height = 450}};
    Label text{this, {.Name = "text", .Left = 4200, .Top = 375, .Width = 600, .Height = 240}};
    Menu menu{this, {.Name = "menu", .Caption = "Pop", .Visible = false}};
    Menu entry{&menu, {.Name = "entry", .Caption = "Entry"}};

    Diary diary;
    std::function<void(const std::string&)> meanwhile;

private:
    void note(const std::string& what)
    {
        diary.push_back(what);
        if (meanwhile)
            meanwhile(what);
    }
    void Form_MouseDown(int b, int s, float x, float y) { note(mouse("form down", b, s, x, y)); }
    void button_Click() { note("button click"); }
    void text_Click() { note("text click"); }
};

class Mouse : public testing::Test {
protected:
    Mouse() { board().show(); }

    Diary& diary() { return board().diary; }

    Desktop& desktop = testDesktop();
    Robot robot{desktop};
    FormSlot<Board> board{desktop, [this] { return std::make_unique<Board>(desktop); }};
};

} // namespace

TEST_F(Mouse, APressGoesToTheTopmostVisibleItemInItsOwnScale)
{
    const At both{50, 50}; // of the lower one; the upper one covers it there
    robot.click(board().low, LeftButton, CtrlKey | ShiftKey, At{10, 20});
    robot.click(board().low, RightButton, AltKey, both);
    board().low.ZOrder();
    robot.click(board().low, RightButton, NoKeys, both);
    board().low.Visible = false;
    board().high.Visible = false;
    robot.click(board().low, RightButton, NoKeys, both);
    robot.click(static_cast<Form&>(board()), At{2, 3}, RightButton);
    EXPECT_EQ(diary(),
        (Diary{"low down 1 3 150,300", "low up 1 3 150,300", "low click", "high down 2 4 300,300",
            "high up 2 4 300,300", "low down 2 0 750,750", "low up 2 0 750,750", "box down 2 0 60,60",
            "form down 2 0 30,45"}));
}

TEST_F(Mouse, ADisabledItemSwallowsItsPressAndADisabledBoxThatOfItsChildren)
{
    board().high.Enabled = false;
    robot.click(board().high);
    board().high.Enabled = true;
    board().box.Enabled = false;
    robot.click(board().high);
    robot.click(board().box, LeftButton, NoKeys, At{190, 150});
    EXPECT_EQ(diary(), Diary{});
}

TEST_F(Mouse, APressedItemKeepsTheMouseEvenOutsideTheWindowAndHidden)
{
    robot.moveTo(board().high, At{40, 40});
    robot.press(board().low, LeftButton, NoKeys, At{20, 20});
    robot.moveTo(board().low, At{-500, 20});
    board().low.Visible = false;
    robot.moveTo(board().high, At{50, 50});
    robot.release();
    EXPECT_EQ(diary(),
        (Diary{"high move 0 0 600,600", "low down 1 0 300,300", "low move 1 0 -7500,300", "low move 1 0 1200,1200",
            "low up 1 0 1200,1200"}))
        << "and no click, since it was let go elsewhere";
}

TEST_F(Mouse, AHandlerThatMovesItsItemSeesTheStartPointComeBack)
{
    robot.press(board().low, LeftButton, NoKeys, At{20, 20});
    const float left = board().low.Left();
    board().meanwhile = [&](const std::string& what) {
        if (what.find("move") != std::string::npos)
            board().low.Left = left + 5; // follows the pointer
    };
    robot.moveTo(board().low, At{25, 20});
    EXPECT_EQ(diary().back(), "low move 1 0 375,300");
    robot.release();
    EXPECT_EQ(diary()[2], "low up 1 0 300,300");
}

TEST_F(Mouse, TheSecondPressOfADoubleClickIsADoubleClickWhereItIsKnown)
{
    board().low.DblClick.connect([this] { diary().push_back("low double"); });
    robot.doubleClick(board().low, NoKeys, At{10, 10});
    robot.doubleClick(board().button, NoKeys, At{5, 5});
    robot.doubleClick(board().text);
    EXPECT_EQ(diary(),
        (Diary{"low down 1 0 150,150", "low up 1 0 150,150", "low click", "low double", "low up 1 0 150,150",
            "button click", "button click", "text click", "text click"}));
}

TEST_F(Mouse, TwoQuickPressesOnTwoItemsAreNoDoubleClick)
{
    board().high.DblClick.connect([this] { diary().push_back("high double"); });
    board().meanwhile = [this](const std::string& what) {
        if (what == "low click")
            board().low.Visible = false; // as a page that turns; then the upper one takes its place
        board().high.Left = board().low.Left();
        board().high.Top = board().low.Top();
    };
    board().low.ZOrder();
    robot.doubleClick(board().low);
    EXPECT_EQ(diary()[3], "high down 1 0 450,450");
}

TEST_F(Mouse, APressThatOpensAMenuGetsNoRelease)
{
    board().entry.Click.connect([this] { diary().push_back("entry click"); });
    board().meanwhile = [this](const std::string& what) {
        if (what.starts_with("low down"))
            board().PopupMenu(board().menu);
    };
    robot.whenMenuOpens([this] { robot.choose(board().entry); });
    robot.click(board().low, RightButton, NoKeys, At{10, 10});
    EXPECT_EQ(diary(), (Diary{"low down 2 0 150,150", "entry click"}));
    board().meanwhile = {};
    robot.click(board().low, LeftButton, NoKeys, At{10, 10});
    EXPECT_EQ(diary().back(), "low click") << "the next press is whole again";
}

TEST_F(Mouse, APressThatShowsAModalFormOrAsksGetsNoRelease)
{
    ScriptedPrompts prompts(desktop);
    prompts.expectNotice("asked");
    Form other(desktop, {.Name = "Other", .Width = 1500, .Height = 1500});
    board().meanwhile = [&](const std::string& what) {
        if (what.starts_with("low down 1"))
            other.showModal();
        else if (what.starts_with("low down 2"))
            desktop.prompts().messageBox("asked", Buttons::Ok, {});
    };
    robot.whenShown("Other", [&] { other.hide(); });
    robot.click(board().low, LeftButton, NoKeys, At{10, 10});
    robot.click(board().low, RightButton, NoKeys, At{10, 10});
    EXPECT_EQ(diary(), (Diary{"low down 1 0 150,150", "low down 2 0 150,150"}));
}

TEST_F(Mouse, AHandlerMayUnloadTheFormUnderThePressedItem)
{
    Diary seen;
    board().meanwhile = [&](const std::string& what) {
        seen.push_back(what);
        board().unload();
    };
    robot.click(board().low, LeftButton, NoKeys, At{10, 10});
    EXPECT_EQ(seen, (Diary{"low down 1 0 150,150"}));
    EXPECT_FALSE(board.isLoaded());
}

TEST_F(Mouse, TheWheelTurnsThePagesOfTheNearestScrollbar)
{
    class Scrolled : public Form {
    public:
        explicit Scrolled(Desktop& desktop)
            : Form(desktop, {.Name = "Scrolled", .Width = 4500, .Height = 4500})
        {
        }
        PictureBox box{this, {.Name = "box", .Width = 3000, .Height = 3000}};
        VScroll scroll{&box, {.Name = "scroll", .Left = 2700, .Width = 255, .Height = 3000}};
        PictureBox inner{&box, {.Name = "inner", .Width = 1500, .Height = 1500}};
    };
    Scrolled form(desktop);
    form.scroll.Min = 1;
    form.scroll.Max = 9;
    form.scroll.LargeChange = 2;
    form.show();
    robot.wheel(form.inner, 1);
    EXPECT_EQ(form.scroll.Value(), 3);
    robot.wheel(form.box, -1);
    EXPECT_EQ(form.scroll.Value(), 1);
    robot.key(form, 34); // Page Down
    EXPECT_EQ(form.scroll.Value(), 3);
    form.scroll.Enabled = false;
    robot.wheel(form.box, 1);
    EXPECT_EQ(form.scroll.Value(), 3);
}

TEST(ControlArrays, HandlersGetTheIndexAndOtherIndexesFail)
{
    class Arrayed : public Form {
    public:
        explicit Arrayed(Desktop& desktop)
            : Form(desktop, {.Name = "Arrayed", .Width = 4500, .Height = 1500})
        {
            on(img, &Image::MouseDown, this, &Arrayed::img_MouseDown);
            on(img, &Image::Click, this, &Arrayed::img_Click);
        }
        ControlArray<Image> img{
            this, "img", 2, 4, [](int index) { return Plan{.Left = index * 600.0F, .Width = 450, .Height = 450}; }};
        Diary diary;

    private:
        void img_MouseDown(int index, int button, int, float x, float)
        {
            diary.push_back(std::to_string(index) + " down " + std::to_string(button) + " " + number(x));
        }
        void img_Click(int index) { diary.push_back(std::to_string(index) + " click"); }
    };
    Arrayed form(testDesktop());
    form.show();
    Robot(testDesktop()).click(form.img(3), LeftButton, NoKeys, At{4, 4});
    EXPECT_EQ(form.diary, (Diary{"3 down 1 60", "3 click"}));
    EXPECT_EQ(form.img(4).Name(), "img(4)");
    EXPECT_THROW(form.img(1), Failure);
}

} // namespace trovarium
