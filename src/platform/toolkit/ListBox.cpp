// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/ListBox.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/RowList.h"

#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <QPointF>

#include <iterator>
#include <numeric>
#include <utility>

namespace trovarium {

RowsControl::RowsControl(Container* parent, const Plan& plan, bool multiSelect)
    : Control(parent, plan, new RowList(*this, parent->client()))
    , MultiSelect(this, multiSelect)
{
    showChoice();
}

RowList& RowsControl::rows() const
{
    return static_cast<RowList&>(*widget());
}

void RowsControl::rowsChanged()
{
    rows().follow();
}

void RowsControl::showChoice()
{
    rows().setSelectionMode(MultiSelect() ? RowList::ExtendedSelection : RowList::SingleSelection);
    rowsChanged();
}

// A failure is ignored here: code that reads ListCount itself gets it.
int RowsControl::rowCount() const
{
    int count = 0;
    attempt([&] { count = ListCount(); });
    return count;
}

std::size_t RowsControl::checked(int index) const
{
    if (index < 0 || index >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
    return static_cast<std::size_t>(index);
}

ListBox::ListBox(Container* parent, const Plan& plan)
    : RowsControl(parent, plan)
{
}

void ListBox::setListIndex(int index)
{
    if (index != -1)
        at(index);
    if (index == m_listIndex)
        return;
    if (!MultiSelect() && m_listIndex >= 0)
        at(m_listIndex).selected = false;
    m_listIndex = index;
    if (!MultiSelect() && index >= 0)
        at(index).selected = true;
    rowsChanged();
    Click.raise();
}

// Behind its equals.
int ListBox::sortedPlace(const std::string& text) const
{
    int first = 0;
    int last = ListCount();
    while (first < last) {
        const int middle = std::midpoint(first, last);
        if (listedBefore(text, m_items[middle].text))
            last = middle;
        else
            first = middle + 1;
    }
    return first;
}

void ListBox::setList(int index, std::string text)
{
    if (index == ListCount())
        m_items.insert(index, {});
    at(index).text = std::move(text);
    rowsChanged();
}

std::string ListBox::Text() const
{
    return m_listIndex < 0 ? "" : List(m_listIndex);
}

std::string ListBox::rowText(int row) const
{
    return readablePath(List(row));
}

int ListBox::entryAt(float X, float Y) const
{
    return rows().rowAt(QPointF(X, Y) / TwipsPerPixel);
}

void ListBox::setSelected(int index, bool value)
{
    if (MultiSelect()) {
        at(index).selected = value;
        rowsChanged();
    } else if (value != Selected(index)) {
        setListIndex(value ? index : -1);
    }
}

void ListBox::AddItem(std::string text)
{
    const int place = Sorted() ? sortedPlace(text) : ListCount();
    m_items.insert(place, {.text = std::move(text)});
    if (m_listIndex >= place)
        ++m_listIndex;
    rowsChanged();
}

void ListBox::RemoveItem(int index)
{
    at(index);
    m_items.erase(index);
    if (m_listIndex == index)
        m_listIndex = -1;
    else if (m_listIndex > index)
        --m_listIndex;
    rowsChanged();
}

void ListBox::Clear()
{
    m_items.clear();
    m_listIndex = -1;
    rowsChanged();
}

void ListBox::rowsChosen(int current, const std::vector<bool>& selected)
{
    if (current >= ListCount() || std::ssize(selected) != ListCount())
        return;
    bool isNew = !MultiSelect() && current != m_listIndex;
    m_listIndex = current;
    for (int row = 0; row < ListCount(); ++row) {
        const bool value = selected[static_cast<std::size_t>(row)];
        isNew = isNew || value != m_items[row].selected;
        m_items[row].selected = value;
    }
    if (isNew)
        Click.raise();
}

} // namespace trovarium
