#include "platform/toolkit/TextBox.h"

#include "platform/toolkit/OneLine.h"
#include "runtime/Text.h"

#include <utility>

namespace trovarium {

TextBox::TextBox(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , m_text(plan.Caption)
{
}

void TextBox::setText(std::string value)
{
    take(std::move(value));
}

void TextBox::typed(std::string value)
{
    take(std::move(value));
}

// The view is told even when the text stays, since the user may have typed what was taken out again.
void TextBox::take(std::string value)
{
    value = oneLine(value);
    if (MaxLength() > 0)
        value = firstCharacters(value, static_cast<std::size_t>(MaxLength()));
    const bool isNew = value != m_text;
    m_text = std::move(value);
    changed(trovarium::Change::Text);
    if (isNew)
        Change.raise();
}

} // namespace trovarium
