#include "platform/toolkit/ListBox.h"

#include "platform/Stage.h"

#include <algorithm>

namespace trovarium {

namespace {

class ListBoxTest : public Stage {
protected:
    ListBoxTest()
    {
        note(list.Click, "Click");
        note(list.DblClick, "Open");
        note(list.MouseUp, "Up");
        note(list.KeyDown, "Down");
        note(list.KeyPress, "Press");
    }

    void fill(std::initializer_list<const char*> items)
    {
        for (const char* item : items)
            list.AddItem(item);
    }
    std::string items() const
    {
        std::string text;
        for (int i = 0; i < list.ListCount(); ++i)
            text += (list.Selected(i) ? "[" + list.List(i) + "]" : list.List(i)) + " ";
        return text;
    }
    void click(int row, int shift = NoKeys)
    {
        robot.click(list, LeftButton, shift, At{40, 8.0F + 16.0F * static_cast<float>(row)});
    }

    ListBox list{&form, {.Name = "List1", .Width = 3000, .Height = 3000}};
};

TEST_F(ListBoxTest, ASortedListTakesAnItemAtItsPlaceAndAnEqualOneBehind)
{
    list.Sorted = true;
    fill({"pear", "Apple", "  All Photos  ", "apple", "_b", "Pear", "apple"});
    EXPECT_EQ(items(), "  All Photos   Apple apple apple Pear pear _b ");
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
    EXPECT_EQ(items(), "a b ");
}

TEST_F(ListBoxTest, ThousandsComeAndGoAnywhere)
{
    list.Sorted = true;
    std::vector<std::string> expected;
    for (int i = 0; i < 3000; ++i) {
        expected.push_back(std::to_string(10000 + i * 1009 % 3001));
        list.AddItem(expected.back());
    }
    std::sort(expected.begin(), expected.end());
    for (int i = 0; i < 1400; ++i) {
        const int gone = i < 700 ? 0 : i;
        list.RemoveItem(gone);
        expected.erase(expected.begin() + gone);
    }
    list.Sorted = false;
    list.setList(list.ListCount(), "last");
    expected.emplace_back("last");
    ASSERT_EQ(list.ListCount(), static_cast<int>(expected.size()));
    for (int i = 0; i < list.ListCount(); ++i)
        ASSERT_EQ(list.List(i), expected[static_cast<std::size_t>(i)]) << i;
}

TEST_F(ListBoxTest, CodeChoosesOneOrSeveralAndTheChoiceFollowsItsItem)
{
    list.Sorted = true;
    fill({"b", "d"});
    list.ListIndex = 1;
    fill({"a", "e"});
    EXPECT_EQ(list.Text(), "d");
    list.RemoveItem(0);
    EXPECT_EQ(list.Text(), "d");
    list.RemoveItem(list.ListIndex());
    EXPECT_EQ(std::to_string(list.ListIndex()) + list.Text(), "-1");
    EXPECT_EQ(taken(), "Click ");
    fill({"a"});
    list.setSelected(0, true);
    list.setSelected(2, true);
    EXPECT_EQ(items(), "a b [e] ") << "one at a time";
    EXPECT_EQ(list.ListIndex(), 2);
    list.MultiSelect = true;
    list.setSelected(0, true);
    EXPECT_EQ(items(), "[a] b [e] ");
    list.Clear();
    EXPECT_EQ(list.ListCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxTest, PressesAndKeysChooseTheRow)
{
    show();
    const Shot empty = robot.shot(form);
    fill({"a", "b", "c"});
    EXPECT_TRUE(robot.until([&] { return !(robot.shot(form) == empty); }));
    click(1, CtrlKey);
    EXPECT_EQ(taken(), "Click Up:1:2:600:360 ");
    EXPECT_EQ(list.Text(), "b");
    click(1);
    EXPECT_EQ(taken(), "Up:1:0:600:360 ") << "the choice is the same";
    list.SetFocus();
    keys({40});
    EXPECT_EQ(taken(), "Down:40:0 Click ") << "keys are told before they act";
    EXPECT_EQ(list.Text(), "c");
    keys({13});
    EXPECT_EQ(taken(), "Down:13:0 Press:13 ");
    click(9);
    EXPECT_EQ(list.Text() + taken(), "cUp:1:0:600:2280 ") << "a press below the last row keeps the choice";
    desktop.DoEvents();
    keys({38});
    EXPECT_EQ(list.Text(), "b") << "and the keyboard goes on from it";
    list.Clear();
    fill({"x", "y"}); // not painted yet
    click(1);
    EXPECT_EQ(list.Text(), "y");
    list.Clear();
    taken();
    click(0);
    EXPECT_EQ(taken(), "Up:1:0:600:120 ") << "an empty list tells of a click too";
    fill({"a"});
    list.Enabled = false;
    click(0);
    desktop.DoEvents();
    click(0);
    EXPECT_EQ(taken(), "");
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxTest, AHandlerMayRemoveTheRowsChosenByShiftAndCtrlAndTheListKeepsTheFocus)
{
    list.MultiSelect = true;
    fill({"a", "b", "x", "c", "d"});
    when["Down"] = [&] {
        list.Enabled = false;
        for (int i = list.ListCount() - 1; i >= 0; --i)
            if (list.Selected(i))
                list.RemoveItem(i);
        list.Enabled = true;
    };
    show();
    click(1);
    click(3, ShiftKey);
    click(2, CtrlKey);
    EXPECT_EQ(items(), "a [b] x [c] d ");
    taken();
    keys({46});
    EXPECT_EQ(items(), "a x d ");
    EXPECT_EQ(taken(), "Down:46:0 ");
    click(1);
    keys({46});
    EXPECT_EQ(items(), "a d ");
}

TEST_F(ListBoxTest, AHandlerMayUnloadTheForm)
{
    fill({"a", "b"});
    show();
    std::string opened;
    when["Open"] = [&] {
        opened = list.Text();
        form.unload();
    };
    robot.doubleClick(list, NoKeys, At{40, 24});
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(opened + list.Text(), "bb");
}

} // namespace

} // namespace trovarium
