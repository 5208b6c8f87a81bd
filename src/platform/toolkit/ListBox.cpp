#include "platform/toolkit/ListBox.h"

#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <algorithm>
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
    m_listIndex = index;
    if (!MultiSelect())
        for (int item = 0; item < ListCount(); ++item)
            m_selected[static_cast<std::size_t>(item)] = item == index;
    changed(Change::Content);
    Click.raise();
}

void ListBox::setSorted(bool value)
{
    m_sorted = value;
    if (!value || std::is_sorted(m_items.begin(), m_items.end(), listedBefore))
        return;
    const std::vector<std::string> items = std::exchange(m_items, {});
    m_selected.clear();
    m_listIndex = -1;
    for (const std::string& item : items)
        AddItem(item);
}

const std::string& ListBox::List(int index) const
{
    checkIndex(index);
    return m_items[static_cast<std::size_t>(index)];
}

void ListBox::setList(int index, std::string text)
{
    if (index == ListCount()) {
        m_items.push_back(std::move(text));
        m_selected.push_back(false);
    } else {
        checkIndex(index);
        m_items[static_cast<std::size_t>(index)] = std::move(text);
    }
    changed(Change::Content);
}

std::string ListBox::Text() const
{
    return m_listIndex < 0 ? "" : m_items[static_cast<std::size_t>(m_listIndex)];
}

bool ListBox::Selected(int index) const
{
    checkIndex(index);
    return m_selected[static_cast<std::size_t>(index)];
}

void ListBox::setSelected(int index, bool value)
{
    checkIndex(index);
    if (!MultiSelect()) {
        if (value != Selected(index))
            setListIndex(value ? index : -1);
        return;
    }
    m_selected[static_cast<std::size_t>(index)] = value;
    changed(Change::Content);
}

void ListBox::AddItem(std::string text)
{
    const auto place = m_sorted ? std::upper_bound(m_items.begin(), m_items.end(), text, listedBefore) : m_items.end();
    const auto at = static_cast<int>(place - m_items.begin());
    m_selected.insert(m_selected.begin() + at, false);
    m_items.insert(place, std::move(text));
    if (m_listIndex >= at)
        ++m_listIndex;
    changed(Change::Content);
}

void ListBox::RemoveItem(int index)
{
    checkIndex(index);
    m_items.erase(m_items.begin() + index);
    m_selected.erase(m_selected.begin() + index);
    if (m_listIndex == index)
        m_listIndex = -1;
    else if (m_listIndex > index)
        --m_listIndex;
    changed(Change::Content);
}

void ListBox::Clear()
{
    m_items.clear();
    m_selected.clear();
    m_listIndex = -1;
    changed(Change::Content);
}

void ListBox::chosen(int index, const std::vector<bool>& selected)
{
    if (index >= ListCount() || selected.size() != m_items.size())
        return;
    const bool isNew = selected != m_selected || (!MultiSelect() && index != m_listIndex);
    m_listIndex = index;
    m_selected = selected;
    if (isNew)
        Click.raise();
}

void ListBox::checkIndex(int index) const
{
    if (index < 0 || index >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
}

} // namespace trovarium
