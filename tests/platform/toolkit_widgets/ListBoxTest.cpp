#include "platform/toolkit/ListBox.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace trovarium {

namespace {

class ListForm : public Form {
public:
    ListForm()
        : Form(testDesktop(), {.Name = "ListForm", .Width = 3000, .Height = 3000})
    {
        List1.Click.connect([this] { log += "Click "; });
        List1.MouseUp.connect([this](int button, int shift, float x, float y) {
            log += "Up" + std::to_string(button) + std::to_string(shift) + "@" + std::to_string(static_cast<int>(x))
                + "," + std::to_string(static_cast<int>(y)) + " ";
        });
        List1.KeyDown.connect([this](int code, int) {
            log += "Down" + std::to_string(code) + " ";
            if (onKeyDown)
                onKeyDown(code);
        });
        List1.KeyPress.connect([this](int ascii) { log += "Press" + std::to_string(ascii) + " "; });
    }

    void fill(std::initializer_list<const char*> items)
    {
        for (const char* item : items)
            List1.AddItem(item);
    }
    std::string items() const
    {
        std::string text;
        for (int i = 0; i < List1.ListCount(); ++i)
            text += (List1.Selected(i) ? "[" + List1.List(i) + "]" : List1.List(i)) + " ";
        return text;
    }
    std::string taken() { return std::exchange(log, {}); }

    ListBox List1{this, {.Name = "List1", .Width = 3000, .Height = 3000}};
    std::function<void(int)> onKeyDown;
    std::string log;
};

class ListBoxTest : public testing::Test {
protected:
    ~ListBoxTest() override { form.unload(); }

    void show()
    {
        form.show();
        testDesktop().DoEvents();
    }
    static At row(int index) { return {40, 8.0F + 16.0F * static_cast<float>(index)}; }

    ListForm form;
    ListBox& list = form.List1;
    Robot robot{testDesktop()};
};

TEST_F(ListBoxTest, ASortedListTakesAnItemAtItsPlaceAndAnEqualOneBehind)
{
    list.Sorted = true;
    form.fill({"pear", "Apple", "  All Photos  ", "apple", "_b", "Pear", "apple"});
    EXPECT_EQ(form.items(), "  All Photos   Apple apple apple Pear pear _b ");
    list.setList(1, "zebra");
    EXPECT_EQ(list.List(1), "zebra") << "writing an item doesn't move it";
}

TEST_F(ListBoxTest, WritingAtTheEndAddsAndIndexesBeyondItFail)
{
    list.setList(0, "a");
    list.setList(1, "b");
    const std::string expected = "Invalid property array index";
    for (const int index : {-1, 2}) {
        EXPECT_EQ(failureOf([&] { (void)list.List(index); }), expected) << index;
        EXPECT_EQ(failureOf([&] { (void)list.Selected(index); }), expected) << index;
        EXPECT_EQ(failureOf([&] { list.setSelected(index, true); }), expected) << index;
        EXPECT_EQ(failureOf([&] { list.RemoveItem(index); }), expected) << index;
    }
    EXPECT_EQ(failureOf([&] { list.setList(3, "x"); }), expected);
    EXPECT_EQ(failureOf([&] { list.ListIndex = 2; }), expected);
    EXPECT_EQ(form.items(), "a b ");
}

TEST_F(ListBoxTest, ThousandsComeAndGoAnywhere)
{
    list.Sorted = true;
    std::vector<std::string> expected;
    const auto check = [&] {
        ASSERT_EQ(list.ListCount(), static_cast<int>(expected.size()));
        for (int i = 0; i < list.ListCount(); ++i)
            ASSERT_EQ(list.List(i), expected[static_cast<std::size_t>(i)]) << i;
    };
    for (int i = 0; i < 3000; ++i) {
        const std::string item = std::to_string(10000 + i * 1009 % 3001);
        list.AddItem(item);
        expected.insert(std::upper_bound(expected.begin(), expected.end(), item), item);
    }
    check();
    for (int i = 0; i < 1400; ++i) {
        const int gone = i < 700 ? 0 : i;
        list.RemoveItem(gone);
        expected.erase(expected.begin() + gone);
    }
    list.Sorted = false;
    list.setList(list.ListCount(), "last");
    expected.emplace_back("last");
    check();
}

TEST_F(ListBoxTest, TheChoiceFollowsItsItem)
{
    list.Sorted = true;
    form.fill({"b", "d"});
    list.ListIndex = 1;
    form.fill({"a", "e"});
    EXPECT_EQ(list.Text(), "d");
    list.RemoveItem(0);
    EXPECT_EQ(list.Text(), "d");
    list.RemoveItem(list.ListIndex());
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), "");
    EXPECT_EQ(form.taken(), "Click ");
}

TEST_F(ListBoxTest, CodeChoosesOneOrSeveral)
{
    form.fill({"a", "b", "c"});
    list.setSelected(0, true);
    list.setSelected(2, true);
    EXPECT_EQ(form.items(), "a b [c] ") << "one at a time";
    EXPECT_EQ(list.ListIndex(), 2);

    list.MultiSelect = true;
    list.setSelected(0, true);
    EXPECT_EQ(form.items(), "[a] b [c] ");
    list.Clear();
    EXPECT_EQ(list.ListCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxTest, PressesAndKeysChooseTheRow)
{
    form.fill({"a", "b", "c"});
    show();
    robot.click(list, LeftButton, CtrlKey, At{40, 24});
    EXPECT_EQ(form.taken(), "Click Up12@600,360 ");
    EXPECT_EQ(list.Text(), "b");
    robot.click(list, LeftButton, NoKeys, At{40, 24});
    EXPECT_EQ(form.taken(), "Up10@600,360 ") << "the choice is the same";
    list.SetFocus();
    robot.key(form, 40);
    EXPECT_EQ(form.taken(), "Down40 Click ") << "keys are told before they act";
    EXPECT_EQ(list.Text(), "c");
    robot.key(form, 13);
    EXPECT_EQ(form.taken(), "Down13 Press13 ");
}

TEST_F(ListBoxTest, APressBelowTheLastRowKeepsTheChoice)
{
    form.fill({"a", "b"});
    list.ListIndex = 1;
    form.taken();
    show();
    robot.click(list, LeftButton, NoKeys, At{40, 150});
    EXPECT_EQ(list.Text(), "b");
    EXPECT_EQ(form.taken().substr(0, 4), "Up10");
    testDesktop().DoEvents();
    robot.key(form, 38);
    EXPECT_EQ(list.Text(), "a") << "and the keyboard goes on from it";
    list.Clear();
    form.taken();
    robot.click(list);
    EXPECT_EQ(form.taken().substr(0, 4), "Up10") << "an empty list tells of a click too";
}

TEST_F(ListBoxTest, AHandlerMayRemoveTheRowsChosenByShiftAndCtrlAndTheListKeepsTheFocus)
{
    list.MultiSelect = true;
    form.fill({"a", "b", "x", "c", "d"});
    form.onKeyDown = [&](int code) {
        if (code != 46)
            return;
        list.Enabled = false;
        for (int i = list.ListCount() - 1; i >= 0; --i)
            if (list.Selected(i))
                list.RemoveItem(i);
        list.Enabled = true;
    };
    show();
    robot.click(list, LeftButton, NoKeys, row(1));
    robot.click(list, LeftButton, ShiftKey, row(3));
    robot.click(list, LeftButton, CtrlKey, row(2));
    EXPECT_EQ(form.items(), "a [b] x [c] d ");
    form.taken();
    robot.key(form, 46);
    EXPECT_EQ(form.items(), "a x d ");
    EXPECT_EQ(form.taken(), "Down46 ");
    robot.click(list, LeftButton, NoKeys, row(1));
    robot.key(form, 46);
    EXPECT_EQ(form.items(), "a d ");
}

TEST_F(ListBoxTest, TheUserSeesAndChoosesFromWhatTheListIsNow)
{
    show();
    const Shot empty = robot.shot(form);
    form.fill({"a", "b", "c"});
    EXPECT_TRUE(robot.until([&] { return !(robot.shot(form) == empty); }));
    list.Clear();
    form.fill({"x", "y"}); // not painted yet
    robot.click(list, LeftButton, NoKeys, row(1));
    EXPECT_EQ(list.Text(), "y");
}

TEST_F(ListBoxTest, ADisabledListTakesNoInput)
{
    form.fill({"a", "b"});
    show();
    list.Enabled = false;
    robot.click(list, LeftButton, NoKeys, row(0));
    testDesktop().DoEvents();
    robot.click(list, LeftButton, NoKeys, row(0));
    EXPECT_EQ(form.taken(), "");
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxTest, AHandlerMayUnloadTheForm)
{
    form.fill({"a", "b"});
    show();
    std::string opened;
    list.DblClick.connect([&] {
        opened = list.Text();
        form.unload();
    });
    robot.doubleClick(list, NoKeys, row(1));
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(opened, "b");
    EXPECT_EQ(list.Text(), "b");
}

} // namespace

} // namespace trovarium
