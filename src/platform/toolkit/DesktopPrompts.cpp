// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/DesktopPrompts.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/TextBox.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <array>

namespace trovarium {

namespace {

constexpr int TextWidth = 420; // pixels
constexpr int IconSize = 32;
constexpr int FrameButtons = 6; // heights of a line that a frame's icon and buttons take beside its title

// Texts of the program end their lines with CR LF, CR or LF.
QString withLines(std::string_view text)
{
    return toQString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
}

struct Symbol {
    QStyle::StandardPixmap picture;
    const char* name; // for screen readers
};

// In the order of Message.
constexpr std::array<Symbol, 4> Symbols{
    {{QStyle::SP_MessageBoxInformation, "Notice"}, {QStyle::SP_MessageBoxCritical, "Error"},
        {QStyle::SP_MessageBoxQuestion, "Question"}, {QStyle::SP_MessageBoxWarning, "Warning"}}};

// A box that belongs to the active form without being its child: a timer may unload the form while the
// question stands, and the question must stay.
class Box : public QDialog {
public:
    Box(Desktop& desktop, std::string_view title, std::string_view text)
        : m_desktop(desktop)
        , m_over(desktop.activeForm() == nullptr ? nullptr : &desktop.activeForm()->window())
        , m_text(new QLabel(withLines(text)))
        , m_buttons(new QDialogButtonBox(this))
    {
        setWindowTitle(title.empty() ? QStringLiteral("Trovarium") : toQString(title));
        setAccessibleDescription(m_text->text());
        m_text->setTextFormat(Qt::PlainText);
        m_text->setWordWrap(true);
        m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        m_text->setFixedWidth(std::clamp(naturalWidth(), 1, TextWidth));
        m_buttons->setMinimumWidth(std::min(titleWidth(), screenOfForm().availableGeometry().width() * 3 / 4));
        connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    }

    QLabel& text() { return *m_text; }
    QDialogButtonBox& buttons() { return *m_buttons; }

    // The text, on a part of the screen's height at most.
    QWidget* textArea()
    {
        const int highest = screenOfForm().availableGeometry().height() / 2;
        const int height = m_text->heightForWidth(m_text->width());
        if (height <= highest)
            return m_text;
        auto* area = new QScrollArea;
        area->setWidget(m_text);
        m_text->setFixedHeight(height);
        area->setFixedHeight(highest);
        area->setMinimumWidth(m_text->width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2);
        return area;
    }

    bool ask()
    {
        adjustSize();
        winId(); // the window's handle is made here
        if (m_over != nullptr) {
            windowHandle()->setTransientParent(m_over->windowHandle());
            move(overForm());
        }
        NestedLoop loop(m_desktop);
        const bool accepted = exec() == QDialog::Accepted;
        loop.finish();
        return accepted;
    }

    void done(int result) override
    {
        const bool hadKeys = isActiveWindow();
        QDialog::done(result);
        if (hadKeys)
            m_desktop.state().activateNextWindow();
    }

protected:
    // If the form was last used with the keyboard, the box shows its focus ring at once. Qt clears the attribute when
    // it shows a window.
    void showEvent(QShowEvent* event) override
    {
        QDialog::showEvent(event);
        setAttribute(
            Qt::WA_KeyboardFocusChange, m_over != nullptr && m_over->testAttribute(Qt::WA_KeyboardFocusChange));
    }

private:
    QScreen& screenOfForm() const { return m_over != nullptr ? screenOf(*m_over) : *screen(); }

    // The middle of the form, but not beyond its screen.
    QPoint overForm() const
    {
        const QRect free = screenOfForm().availableGeometry();
        const QPoint middle = m_over->frameGeometry().center() - rect().center();
        return {std::clamp(middle.x(), free.left(), std::max(free.left(), free.right() + 1 - width())),
            std::clamp(middle.y(), free.top(), std::max(free.top(), free.bottom() + 1 - height()))};
    }

    int naturalWidth() const
    {
        return m_text->fontMetrics().size(0, m_text->text()).width() + 2 * m_text->margin() + 1;
    }
    // The frame belongs to the window manager, whose title may be bold.
    int titleWidth() const
    {
        QFont font = QFontDatabase::systemFont(QFontDatabase::TitleFont);
        font.setBold(true);
        const QFontMetrics metrics(font);
        return metrics.horizontalAdvance(windowTitle()) + FrameButtons * metrics.height();
    }

    Desktop& m_desktop;
    QWidget* m_over;
    QLabel* m_text;
    QDialogButtonBox* m_buttons;
};

} // namespace

Answer DesktopPrompts::messageBox(std::string_view text, Message kind, std::string_view title)
{
    const bool isQuestion = kind == Message::Question || kind == Message::Warning;
    const auto& [picture, name] = Symbols.at(static_cast<std::size_t>(kind));
    Box box(m_desktop, title, text);
    auto* icon = new QLabel;
    icon->setAccessibleName(QString::fromLatin1(name));
    icon->setPixmap(box.style()->standardIcon(picture).pixmap(IconSize));
    auto* row = new QHBoxLayout;
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(box.textArea(), 1, Qt::AlignLeft | Qt::AlignVCenter);
    auto* column = new QVBoxLayout(&box);
    column->addLayout(row);
    column->addWidget(&box.buttons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    box.buttons().setStandardButtons(isQuestion ? QDialogButtonBox::Yes | QDialogButtonBox::No
                                                : QDialogButtonBox::StandardButtons(QDialogButtonBox::Ok));
    QPushButton* first = box.buttons().button(isQuestion ? QDialogButtonBox::Yes : QDialogButtonBox::Ok);
    first->setDefault(true);
    first->setFocus();
    const bool accepted = box.ask();
    if (!isQuestion)
        return Answer::Ok;
    return accepted ? Answer::Yes : Answer::No;
}

std::string DesktopPrompts::inputBox(std::string_view prompt, std::string_view title, std::string_view initial)
{
    Box box(m_desktop, title, prompt);
    auto* edit = new QLineEdit(toQString(initial));
    edit->setAccessibleName(box.text().text());
    edit->setMinimumWidth(TextWidth);
    edit->selectAll();
    auto* column = new QVBoxLayout(&box);
    column->addWidget(box.textArea(), 0, Qt::AlignLeft);
    column->addWidget(edit);
    column->addWidget(&box.buttons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    box.buttons().setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    box.buttons().button(QDialogButtonBox::Ok)->setDefault(true);
    edit->setFocus();
    return box.ask() ? oneLine(toText(edit->text())) : std::string();
}

} // namespace trovarium
