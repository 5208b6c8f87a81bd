#include "platform/qt/pictures/PictureData.h"
#include "platform/qt/toolkit/ButtonLook.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Button.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QPixmap>
#include <QPushButton>

#include <memory>

namespace trovarium {

namespace {

// Dense enough for every screen; a face is scaled down from it.
constexpr int FaceDensity = 3;

constexpr int EdgeWidth = 6; // pixels that a caption leaves free, both edges together

QIcon faceIcon(const Picture& picture)
{
    if (picture.empty())
        return {};
    QPixmap pixels =
        QPixmap::fromImage(drawnImage(*picture.data(), QSize(picture.width(), picture.height()) * FaceDensity));
    pixels.setDevicePixelRatio(FaceDensity);
    return QIcon(pixels);
}

// Enter and Escape that no control of the window wanted.
class WindowKeys : public QObject {
public:
    explicit WindowKeys(Button& button)
        : m_button(button)
    {
    }

protected:
    bool eventFilter(QObject* window, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(window, event);
        const int code = keyCode(static_cast<QKeyEvent&>(*event));
        const bool meant =
            (code == 13 && m_button.Default() && !choosesRows(window)) || (code == 27 && m_button.Cancel());
        if (!meant || !m_button.takesInput() || !m_button.isShown())
            return QObject::eventFilter(window, event);
        fromDesktop(m_button, [&] { m_button.Click.raise(); });
        return true;
    }

private:
    // Enter among the rows of a list or a box is meant for one of them, and never for a button elsewhere.
    static bool choosesRows(const QObject* window)
    {
        const QWidget* focus = static_cast<const QWidget*>(window)->focusWidget();
        return qobject_cast<const QAbstractItemView*>(focus) != nullptr
            || qobject_cast<const QComboBox*>(focus) != nullptr;
    }

    Button& m_button;
};

class ButtonView : public WidgetView {
public:
    explicit ButtonView(Button& button)
        : ButtonView(button, new QPushButton(surfaceWidget(button)))
    {
    }

    void apply(Change change) override
    {
        switch (change) {
        case Change::Geometry:
            WidgetView::apply(change);
            [[fallthrough]];
        case Change::Text:
            showCaption(*m_push, m_button.Caption(), EdgeWidth);
            break;
        case Change::Appearance:
            m_push->setIcon(faceIcon(m_button.Picture()));
            m_push->setIconSize({m_button.Picture().width(), m_button.Picture().height()});
            m_push->setDefault(m_button.Default());
            break;
        default:
            WidgetView::apply(change);
            nameByToolTip(*m_push, m_button);
        }
    }

private:
    ButtonView(Button& button, QPushButton* push)
        : WidgetView(button, push)
        , m_button(button)
        , m_push(push)
        , m_keys(std::make_unique<WindowKeys>(button))
    {
        m_push->setAutoDefault(true); // Enter presses it while it has the focus
        for (const Change change : {Change::Text, Change::Appearance, Change::Hint})
            ButtonView::apply(change);
        m_push->window()->installEventFilter(m_keys.get());
        QObject::connect(
            m_push, &QPushButton::clicked, m_push, [this] { fromDesktop(m_button, [&] { m_button.Click.raise(); }); });
    }

    Button& m_button;
    QPushButton* m_push;
    std::unique_ptr<WindowKeys> m_keys;
};

} // namespace

std::unique_ptr<View> Button::makeView()
{
    return std::make_unique<ButtonView>(*this);
}

} // namespace trovarium
