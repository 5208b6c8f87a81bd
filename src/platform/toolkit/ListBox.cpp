#include "platform/toolkit/ListBox.h"

#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace trovarium {

ListBox::ListBox(Container* parent, const Plan& plan)
    : Control(parent, plan)
{
}

void ListBox::setListIndex(int index)
{
    if (index != -1)
        checkIndex(index);
    if (index == m_listIndex)
        return;
    if (!MultiSelect())
        mark(m_listIndex, false);
    m_listIndex = index;
    if (!MultiSelect())
        mark(m_listIndex, true);
    changed(Change::Content);
    Click.raise();
}

void ListBox::setSorted(bool value)
{
    m_sorted = value;
    const int count = ListCount();
    int inOrder = std::min(count, 1);
    while (inOrder < count && !listedBefore(m_items[inOrder].text, m_items[inOrder - 1].text))
        ++inOrder;
    if (!value || inOrder == count)
        return;
    ListItems items = std::exchange(m_items, {});
    m_listIndex = -1;
    for (int index = 0; index < count; ++index)
        AddItem(std::move(items[index].text));
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

const std::string& ListBox::List(int index) const
{
    checkIndex(index);
    return m_items[index].text;
}

void ListBox::setList(int index, std::string text)
{
    if (index == ListCount()) {
        m_items.insert(index, {.text = std::move(text)});
    } else {
        checkIndex(index);
        m_items[index].text = std::move(text);
    }
    changed(Change::Content);
}

std::string ListBox::Text() const
{
    return m_listIndex < 0 ? "" : m_items[m_listIndex].text;
}

bool ListBox::Selected(int index) const
{
    checkIndex(index);
    return m_items[index].selected;
}

void ListBox::setSelected(int index, bool value)
{
    checkIndex(index);
    if (!MultiSelect()) {
        if (value != Selected(index))
            setListIndex(value ? index : -1);
        return;
    }
    mark(index, value);
    changed(Change::Content);
}

void ListBox::AddItem(std::string text)
{
    const int at = m_sorted ? sortedPlace(text) : ListCount();
    m_items.insert(at, {.text = std::move(text)});
    if (m_listIndex >= at)
        ++m_listIndex;
    changed(Change::Content);
}

void ListBox::RemoveItem(int index)
{
    checkIndex(index);
    m_items.erase(index);
    if (m_listIndex == index)
        m_listIndex = -1;
    else if (m_listIndex > index)
        --m_listIndex;
    changed(Change::Content);
}

void ListBox::Clear()
{
    m_items.clear();
    m_listIndex = -1;
    changed(Change::Content);
}

void ListBox::chosen(int index, const std::vector<bool>& selected)
{
    if (index >= ListCount() || selected.size() != static_cast<std::size_t>(ListCount()))
        return;
    bool isNew = !MultiSelect() && index != m_listIndex;
    m_listIndex = index;
    for (int row = 0; row < ListCount(); ++row) {
        const bool value = selected[static_cast<std::size_t>(row)];
        isNew = isNew || value != m_items[row].selected;
        mark(row, value);
    }
    if (isNew)
        Click.raise();
}

void ListBox::mark(int index, bool selected)
{
    if (index >= 0)
        m_items[index].selected = selected;
}

void ListBox::checkIndex(int index) const
{
    if (index < 0 || index >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
}

} // namespace trovarium
