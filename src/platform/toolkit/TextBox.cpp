// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/TextBox.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/QtValues.h"
#include "runtime/Text.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace trovarium {

namespace {

class LineEdit : public QLineEdit {
public:
    LineEdit(TextBox& box, QWidget* parent)
        : QLineEdit(parent)
        , m_box(box)
    {
    }

protected:
    // If its window opens with the focus here, the suggested text is selected, as after Tab, so that typing replaces
    // it.
    void focusInEvent(QFocusEvent* event) override
    {
        QLineEdit::focusInEvent(event);
        m_box.desktop().state().lastText = this;
        if (std::exchange(m_unvisited, false) && event->reason() == Qt::ActiveWindowFocusReason)
            selectAll();
    }

private:
    TextBox& m_box;
    bool m_unvisited = true;
};

class Combo : public QComboBox {
public:
    Combo(ComboBox& box, QWidget* parent)
        : QComboBox(parent)
        , m_box(box)
    {
        setEditable(true);
        // The text is used as typed: nothing is added to the list or put in its place.
        setInsertPolicy(NoInsert);
        setDuplicatesEnabled(true);
        setCompleter(nullptr);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!isEnter || !m_box.Enter.isWired())
            QComboBox::keyPressEvent(event);
        else
            deliverEvent(m_box, [this] { m_box.Enter.raise(); });
    }

    // A turn of the wheel on the way over must not choose another entry.
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    ComboBox& m_box;
};

// Cuts a text that is too long where the user has just typed: before the cursor. Counts code points, where the widget's
// own limit would count an emoji as two.
QString limited(const QString& text, int limit, int& cursor)
{
    QList<uint> characters = text.toUcs4();
    const auto excess = characters.size() - limit;
    if (limit == 0 || excess <= 0)
        return text;
    const auto before = QStringView(text).left(cursor).toUcs4().size();
    const auto first = std::max<qsizetype>(0, before - excess);
    characters.remove(first, excess);
    const QList<uint> kept = characters.first(first);
    cursor = static_cast<int>(QString::fromUcs4(reinterpret_cast<const char32_t*>(kept.data()), kept.size()).size());
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.data()), characters.size());
}

void showIn(QLineEdit& edit, const QString& text, int cursor)
{
    if (text == edit.text())
        return;
    const QSignalBlocker quiet(edit);
    edit.setText(text);
    edit.setCursorPosition(cursor);
}

} // namespace

std::string oneLine(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool secondOfPair = text[index] == '\n' && index > 0 && text[index - 1] == '\r';
        if (secondOfPair)
            continue;
        const bool lineEnd = text[index] == '\r' || text[index] == '\n';
        result += lineEnd ? ' ' : text[index];
    }
    return result;
}

TextBox::TextBox(Container* parent, const Plan& plan)
    : Control(parent, plan, new LineEdit(*this, parent->client()))
    , m_edit(static_cast<QLineEdit&>(*widget()))
    , m_text(plan.Caption)
{
    Control::enableOrDisable();
    showIn(m_edit, toQString(m_text), 0);
    // By keys, a paste or an assistive technology; the last may come at any time.
    QObject::connect(&m_edit, &QLineEdit::textChanged, &m_edit, [this] {
        if (desktop().state().eventsSuspended)
            desktop().state().invokeLater([this, edit = QPointer(&m_edit)] {
                if (edit)
                    edited();
            });
        else
            edited();
    });
}

void TextBox::setText(std::string value)
{
    value = oneLine(value);
    if (MaxLength() > 0)
        value = firstCharacters(value, static_cast<std::size_t>(MaxLength()));
    const bool isNew = value != m_text;
    m_text = std::move(value);
    showIn(m_edit, toQString(m_text), m_edit.cursorPosition()); // also where the user typed what was taken out again
    if (isNew)
        Change.raise();
}

void TextBox::edited()
{
    int cursor = m_edit.cursorPosition();
    const QString text = limited(m_edit.text(), MaxLength(), cursor);
    showIn(m_edit, text, cursor);
    deliverEvent(*this, [&] { setText(toText(text)); });
}

void TextBox::SetFocus()
{
    Control::SetFocus();
    if (hasFocus())
        m_edit.selectAll();
}

ComboBox::ComboBox(Container* parent, const Plan& plan)
    : Control(parent, plan, new Combo(*this, parent->client()))
    , m_box(static_cast<QComboBox&>(*widget()))
{
    Control::enableOrDisable();
    setText(plan.Caption);
    QObject::connect(
        m_box.lineEdit(), &QLineEdit::textEdited, &m_box, [this](const QString& text) { setText(toText(text)); });
}

std::string ComboBox::text() const
{
    return toText(m_box.currentText());
}

// The choice with this text becomes the current one, from which the arrow keys go on.
void ComboBox::setText(std::string_view value)
{
    const QString text = toQString(oneLine(value));
    const int cursor = m_box.lineEdit()->cursorPosition();
    m_box.setCurrentIndex(m_box.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    showIn(*m_box.lineEdit(), text, cursor);
}

void ComboBox::AddItem(std::string_view text)
{
    const std::string shown = Text();
    m_box.addItem(toQString(text));
    if (m_box.count() == 1) // the library chooses the first one by itself
        Text = shown;
}

} // namespace trovarium
