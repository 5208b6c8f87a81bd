#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/TextBox.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

#include <utility>

namespace trovarium {

namespace {

class LineEdit : public QLineEdit {
public:
    LineEdit(TextBox& box, QWidget* parent)
        : QLineEdit(parent)
        , m_box(&box)
    {
    }

    void detach() { m_box = nullptr; }

protected:
    // Where its window comes up with the focus here, typing replaces what it suggests, as when Tab led here.
    void focusInEvent(QFocusEvent* event) override
    {
        QLineEdit::focusInEvent(event);
        if (m_box != nullptr)
            m_box->desktop().state().lastText = this;
        if (std::exchange(m_unvisited, false) && event->reason() == Qt::ActiveWindowFocusReason)
            selectAll();
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        const int ascii = keyAscii(*event);
        if (m_box != nullptr && ascii != 0)
            fromDesktop(*m_box, [&] { m_box->KeyPress.raise(ascii); });
        if (m_box != nullptr && m_box->takesInput())
            QLineEdit::keyPressEvent(event);
    }

private:
    TextBox* m_box;
    bool m_unvisited = true;
};

// Where the text is too long, what was put in last goes: the characters before the cursor. Counts
// characters, where the widget's own limit would count a smiley as two.
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

class TextBoxView : public WidgetView {
public:
    explicit TextBoxView(TextBox& box)
        : TextBoxView(box, new LineEdit(box, surfaceWidget(box)))
    {
    }
    ~TextBoxView() override
    {
        if (widget() != nullptr)
            m_edit->detach();
    }

    void apply(Change change) override
    {
        if (change == Change::Text)
            showText(toQString(m_box.Text()), m_edit->cursorPosition());
        else
            WidgetView::apply(change);
    }

private:
    TextBoxView(TextBox& box, LineEdit* edit)
        : WidgetView(box, edit)
        , m_box(box)
        , m_edit(edit)
    {
        showText(toQString(box.Text()), 0);
        QObject::connect(m_edit, &QLineEdit::textEdited, m_edit, [this] { edited(); });
    }

    void edited()
    {
        int cursor = m_edit->cursorPosition();
        const QString text = limited(m_edit->text(), m_box.MaxLength(), cursor);
        showText(text, cursor);
        fromDesktop(m_box, [&] { m_box.typed(toText(text)); });
    }

    void showText(const QString& text, int cursor)
    {
        if (text == m_edit->text())
            return;
        const QSignalBlocker quiet(m_edit);
        m_edit->setText(text);
        m_edit->setCursorPosition(cursor);
    }

    TextBox& m_box;
    LineEdit* m_edit;
};

} // namespace

std::unique_ptr<View> TextBox::makeView()
{
    return std::make_unique<TextBoxView>(*this);
}

} // namespace trovarium
