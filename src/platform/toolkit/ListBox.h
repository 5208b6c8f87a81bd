// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"
#include "platform/toolkit/ListItems.h"

#include <cstddef>
#include <string>
#include <vector>

namespace trovarium {

class RowList;

// A list of rows on the screen. What the user does comes to the functions below.
class RowsControl : public Control {
protected:
    friend class RowList;

    RowsControl(Container* parent, const Plan& plan, bool multiSelect = false);

    // For the widget, which asks while it is seen.
    int rowCount() const; // none where ListCount fails
    virtual std::string rowText(int row) const = 0;
    virtual bool isRowSelected(int row) const = 0;
    virtual int currentRow() const { return -1; }                // -1 for none
    virtual std::string widestMark() const { return {}; }        // of those with which the rows begin
    virtual int rowLevel(int /*row*/) const { return NoFolder; } // of a folder below the root
    virtual bool isOpenFolder(int /*row*/) const { return false; }

    virtual void rowsChosen(int current, const std::vector<bool>& selected) = 0;
    virtual void rowDoubleClicked(int /*row*/) { }
    virtual bool rowEntered(int /*row*/) { return false; } // by Enter; true when it meant something
    virtual void mouseReleased(int /*button*/, int /*shift*/, float /*X*/, float /*Y*/) { }
    virtual void keyDown(int /*code*/, int /*shift*/) { }
    virtual void keyPressed(int /*ascii*/) { }

    // The rows changed, and the widget follows soon: before the user acts on it, or with the next repaint.
    void rowsChanged();
    void showChoice();
    void enableOrDisable() override { rowsChanged(); }
    RowList& rows() const;

    std::size_t checked(int index) const; // "Invalid property array index" beyond the ends

    static constexpr int NoFolder = -1;

public:
    Stored<&RowsControl::showChoice, bool> MultiSelect; // by the user

    virtual int ListCount() const = 0;
};

// Indexes are 0-based; beyond the ends "Invalid property array index". Writing List at the end adds.
class ListBox : public RowsControl {
public:
    ListBox(Container* parent, const Plan& plan);

private:
    int listIndex() const { return m_listIndex; }
    void setListIndex(int index);

public:
    Property<&ListBox::listIndex, &ListBox::setListIndex> ListIndex{this}; // -1 for none
    // Entries are added in the order of `listedBefore`; those that are there stay where they are.
    Stored<&ListBox::rowsChanged, bool> Sorted{this};
    // The rows begin with marks in brackets, all of this length. This is the widest one; the others are drawn as wide.
    Stored<&ListBox::rowsChanged, std::string> Mark{this};

    int ListCount() const override { return m_items.size(); }
    const std::string& List(int index) const { return at(index).text; }
    void setList(int index, std::string text); // replaces; a sorted list is not sorted again
    std::string Text() const;                  // the chosen entry, empty for none
    int entryAt(float X, float Y) const;       // by a place as MouseUp tells it; -1 for none
    bool Selected(int index) const { return at(index).selected; }
    void setSelected(int index, bool value);
    void AddItem(std::string text); // a sorted list takes it at its place, an equal one behind
    void RemoveItem(int index);
    void Clear();

    Event<> Click{this};
    Event<> DblClick{this};
    Event<int, int, float, float> MouseUp{this}; // Button, Shift, X, Y in twips
    Event<int, int> KeyDown{this};
    Event<int> KeyPress{this};

private:
    using Item = ListItems::Item;

    int sortedPlace(const std::string& text) const;
    std::string rowText(int row) const override;
    bool isRowSelected(int row) const override { return Selected(row); }
    int currentRow() const override { return m_listIndex; }
    std::string widestMark() const override { return Mark(); }
    void rowsChosen(int current, const std::vector<bool>& selected) override;
    void rowDoubleClicked(int) override { DblClick.raise(); }
    void mouseReleased(int button, int shift, float X, float Y) override { MouseUp.raise(button, shift, X, Y); }
    void keyDown(int code, int shift) override { KeyDown.raise(code, shift); }
    void keyPressed(int ascii) override { KeyPress.raise(ascii); }

    const Item& at(int index) const { return m_items[static_cast<int>(checked(index))]; }
    Item& at(int index) { return m_items[static_cast<int>(checked(index))]; }

    ListItems m_items;
    int m_listIndex = -1;
};

} // namespace trovarium
