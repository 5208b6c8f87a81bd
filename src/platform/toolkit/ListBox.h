#pragma once

#include "platform/toolkit/Control.h"
#include "platform/toolkit/ListItems.h"

#include <string>
#include <vector>

namespace trovarium {

// Indexes are 0-based; beyond the ends "Invalid property array index". Writing List at the end adds.
class ListBox : public Control {
public:
    ListBox(Container* parent, const Plan& plan);

private:
    int listIndex() const { return m_listIndex; }
    void setListIndex(int index);
    bool sorted() const { return m_sorted; }
    void setSorted(bool value);

public:
    Property<&ListBox::listIndex, &ListBox::setListIndex> ListIndex{this}; // -1 for none
    Property<&ListBox::sorted, &ListBox::setSorted> Sorted{this};          // in the order of `listedBefore`
    Stored<bool> MultiSelect{this, Change::Appearance};
    // The widest of the marks in brackets with which the rows begin, all of its length: they are drawn as wide as it.
    Stored<std::string> Mark{this, Change::Appearance};

    int ListCount() const { return m_items.size(); }
    const std::string& List(int index) const;
    void setList(int index, std::string text); // replaces; a sorted list is not sorted again
    std::string Text() const;                  // the chosen entry, empty for none
    int entryAt(float X, float Y) const; // by a place as MouseUp tells it; -1 for none, and for a list not on show
    bool Selected(int index) const;
    void setSelected(int index, bool value);

    void AddItem(std::string text); // a sorted list takes it at its place, an equal one behind
    void RemoveItem(int index);
    void Clear();

    Event<> Click{this};
    Event<> DblClick{this};
    Event<int, int, float, float> MouseUp{this}; // Button, Shift, X, Y in twips
    Event<int, int> KeyDown{this};
    Event<int> KeyPress{this};

    std::unique_ptr<View> makeView() override;

    // The view tells what the user chose.
    void chosen(int index, const std::vector<bool>& selected);

private:
    int sortedPlace(const std::string& text) const;
    void mark(int index, bool selected); // nothing for -1
    void checkIndex(int index) const;

    ListItems m_items;
    int m_listIndex = -1;
    bool m_sorted = false;
};

} // namespace trovarium
