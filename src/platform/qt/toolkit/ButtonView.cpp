#include "platform/pictures/PictureData.h"
#include "platform/qt/toolkit/ButtonLook.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/toolkit/Button.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QPixmap>
#include <QPushButton>

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

class ButtonView final : public CaptionedView<Button, QPushButton> {
public:
    explicit ButtonView(Button& button)
        : CaptionedView(button, EdgeWidth)
        , m_keys(button)
    {
        this->button()->setAutoDefault(true); // Enter presses it while it has the focus
        showAll();
        this->button()->window()->installEventFilter(&m_keys);
        QObject::connect(this->button(), &QPushButton::clicked, this->button(),
            [this] { fromDesktop(kind(), [&] { kind().Click.raise(); }); });
    }

private:
    void showLook() override
    {
        const Picture face = kind().Picture();
        button()->setIcon(faceIcon(face));
        button()->setIconSize({face.width(), face.height()});
        button()->setDefault(kind().Default());
    }

    WindowKeys m_keys;
};

} // namespace

std::unique_ptr<View> Button::makeView()
{
    return std::make_unique<ButtonView>(*this);
}

} // namespace trovarium
