#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/LateUpdate.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/ComboBox.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <functional>
#include <utility>

namespace trovarium {

namespace {

class Combo : public QComboBox {
public:
    Combo(ComboBox& box, QWidget* parent)
        : QComboBox(parent)
        , m_box(&box)
    {
        setEditable(true);
        // The text is used as typed: nothing is added to the list or put in its place.
        setInsertPolicy(NoInsert);
        setDuplicatesEnabled(true);
        setCompleter(nullptr);
    }

    void beforeUse(std::function<void()> action) { m_beforeUse = std::move(action); }
    void detach()
    {
        m_beforeUse = [] {};
        m_box = nullptr;
    }

    void showPopup() override
    {
        m_beforeUse();
        QComboBox::showPopup();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        m_beforeUse();
        const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!isEnter || m_box == nullptr || !m_box->Enter.isWired())
            QComboBox::keyPressEvent(event);
        else if (!event->isAutoRepeat()) // a key that is held is one press
            fromDesktop(*m_box, [this] { m_box->Enter.raise(); });
    }
    // A turn of the wheel on the way over must not choose another entry.
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    std::function<void()> m_beforeUse = [] {};
    ComboBox* m_box;
};

class ComboBoxView : public WidgetView {
public:
    explicit ComboBoxView(ComboBox& box)
        : ComboBoxView(box, new Combo(box, surfaceWidget(box)))
    {
    }
    ~ComboBoxView() override
    {
        if (widget() == nullptr)
            return;
        m_combo->detach();
        m_combo->lineEdit()->blockSignals(true);
    }

    void apply(Change change) override
    {
        switch (change) {
        case Change::Content:
            m_update.schedule();
            break;
        case Change::Text:
            showText();
            break;
        default:
            WidgetView::apply(change);
        }
    }

private:
    ComboBoxView(ComboBox& box, Combo* combo)
        : WidgetView(box, combo)
        , m_box(box)
        , m_combo(combo)
        , m_update(box.desktop().state(), [this] { showItems(); })
    {
        showItems();
        m_combo->beforeUse([this] { m_update.flush(); });
        QObject::connect(m_combo->lineEdit(), &QLineEdit::textEdited, m_combo,
            [this](const QString& text) { fromDesktop(m_box, [&] { m_box.typed(toText(text)); }); });
        QObject::connect(m_combo, &QComboBox::activated, m_combo,
            [this](int index) { fromDesktop(m_box, [&] { m_box.chosen(index); }); });
    }

    void showItems()
    {
        const QSignalBlocker quiet(m_combo);
        m_combo->clear();
        for (int index = 0; index < m_box.ListCount(); ++index)
            m_combo->addItem(toQString(m_box.List(index)));
        showText();
    }

    void showText()
    {
        const QString text = toQString(m_box.Text());
        const QSignalBlocker quiet(m_combo);
        const QSignalBlocker quietEdit(m_combo->lineEdit());
        const int cursor = m_combo->lineEdit()->cursorPosition();
        if (!m_update.isDue())
            m_combo->setCurrentIndex(m_box.ListIndex());
        if (text == m_combo->lineEdit()->text())
            return;
        m_combo->setEditText(text);
        m_combo->lineEdit()->setCursorPosition(cursor);
    }

    ComboBox& m_box;
    Combo* m_combo;
    LateUpdate m_update;
};

} // namespace

std::unique_ptr<View> ComboBox::makeView()
{
    return std::make_unique<ComboBoxView>(*this);
}

} // namespace trovarium
