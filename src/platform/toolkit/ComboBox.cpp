#include "platform/toolkit/ComboBox.h"

#include "platform/toolkit/OneLine.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <utility>

namespace trovarium {

ComboBox::ComboBox(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , m_text(plan.Caption)
{
}

void ComboBox::setText(std::string value)
{
    typed(std::move(value));
}

void ComboBox::setListIndex(int index)
{
    if (index < -1 || index >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
    if (index == m_listIndex)
        return;
    chosen(index);
}

const std::string& ComboBox::List(int index) const
{
    if (index < 0 || index >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
    return m_items[static_cast<std::size_t>(index)];
}

void ComboBox::AddItem(std::string text)
{
    m_items.push_back(std::move(text));
    changed(trovarium::Change::Content);
}

void ComboBox::Clear()
{
    m_items.clear();
    m_listIndex = -1;
    changed(trovarium::Change::Content);
}

void ComboBox::typed(std::string value)
{
    value = oneLine(value);
    const auto found = std::find(m_items.begin(), m_items.end(), value);
    m_listIndex = found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
    const bool isNew = value != m_text;
    m_text = std::move(value);
    changed(trovarium::Change::Text);
    if (isNew)
        Change.raise();
}

void ComboBox::chosen(int index)
{
    if (index >= ListCount())
        return;
    m_listIndex = index;
    m_text = index < 0 ? "" : m_items[static_cast<std::size_t>(index)];
    changed(trovarium::Change::Text);
    Click.raise();
}

} // namespace trovarium
