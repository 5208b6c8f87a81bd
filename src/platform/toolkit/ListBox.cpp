// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/ListBox.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/RowList.h"

#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <QPointF>

#include <algorithm>
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

void ListBox::setList(int index, std::string text)
{
    if (index == ListCount())
        m_items.emplace_back();
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
    const auto behind = std::upper_bound(m_items.begin(), Sorted() ? m_items.end() : m_items.begin(), text,
        [](const std::string& added, const Item& item) { return listedBefore(added, item.text); });
    const auto place = Sorted() ? behind : m_items.end();
    if (m_listIndex >= place - m_items.begin())
        ++m_listIndex;
    m_items.insert(place, {.text = std::move(text)});
    rowsChanged();
}

void ListBox::RemoveItem(int index)
{
    at(index);
    m_items.erase(m_items.begin() + index);
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
    if (current >= ListCount() || selected.size() != m_items.size())
        return;
    bool isNew = !MultiSelect() && current != m_listIndex;
    m_listIndex = current;
    for (std::size_t row = 0; row < m_items.size(); ++row) {
        isNew = isNew || selected[row] != m_items[row].selected;
        m_items[row].selected = selected[row];
    }
    if (isNew)
        Click.raise();
}

} // namespace trovarium
