#include "platform/qt/toolkit/FormView.h"

#include "platform/pictures/PictureData.h"
#include "platform/pictures/PicturePainter.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FormWindow.h"
#include "platform/qt/toolkit/Menus.h"
#include "platform/qt/toolkit/Pointers.h"
#include "platform/qt/toolkit/Screens.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Control.h"
#include "platform/toolkit/Form.h"

#include <QGuiApplication>
#include <QIcon>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <cmath>
#include <utility>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

// Until a window manager has a window in its place and has told so.
constexpr auto SettlingTime = 100ms;

class FormSurface : public SurfaceView, public MouseTarget {
public:
    FormSurface(Form& form, QWidget* window)
        : SurfaceView(form.desktop().state(), form, window)
        , m_form(form)
    {
    }

    Component& component() override { return m_form; }
    bool takesInput() const override { return m_form.Enabled(); }
    QRectF place() const override { return rect(); }
    int pointer() const override { return m_form.MousePointer(); }
    std::string toolTip() const override { return {}; }

    void mouseDown(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_form.MouseDown, button, shift, pixels, m_form);
    }
    void mouseMove(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_form.MouseMove, button, shift, pixels, m_form);
    }
    void click() override { m_form.Click.raise(); }

protected:
    MouseTarget& ownTarget() override { return *this; }

    void paintBack(QPainter& painter) override
    {
        painter.fillRect(rect(), toQColor(m_form.BackColor()));
        const Picture picture = m_form.Picture();
        if (!picture.empty())
            m_painter.paint(painter, picture, rect());
    }

private:
    Form& m_form;
    PicturePainter m_painter;
};

Qt::WindowFlags windowFlags(const FormPlan& plan)
{
    if (plan.Border == BorderKind::None)
        return Qt::Window | Qt::FramelessWindowHint;
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    flags.setFlag(Qt::WindowCloseButtonHint, plan.CloseBox);
    flags.setFlag(Qt::WindowMinimizeButtonHint, plan.MinimizeBox);
    return flags;
}

int toPixels(float twips)
{
    return static_cast<int>(std::lround(twips / TwipsPerPixel));
}

float toTwips(int pixels)
{
    return static_cast<float>(pixels) * TwipsPerPixel;
}

} // namespace

FormView::FormView(Form& form)
    : m_form(form)
    , m_window(new FormWindow(form, windowFlags(form.plan()))) // deleted when the event loop has it back
    , m_menuBar(makeMenuBar(form, m_window))
    , m_client(new FormSurface(form, m_window)) // its parent widget owns it
{
    for (const Change change : {Change::Text, Change::Content, Change::Enabled})
        apply(change);
    resize();
    for (Control* control : form.controls())
        control->attachView();
    // Tab goes through the controls that are widgets first, and then through the form's own drawn items.
    QWidget::setTabOrder(m_window->previousInFocusChain(), m_client);
}

FormView::~FormView()
{
    for (Control* control : m_form.controls())
        control->detachView();
    if (!m_window)
        return;
    m_client->detach();
    m_window->detach();
    m_window->hide();
    m_form.desktop().state().discard(m_window);
}

QWidget& FormView::window() const
{
    return *m_window;
}

SurfaceView& FormView::client() const
{
    return *m_client;
}

void FormView::apply(Change change)
{
    switch (change) {
    case Change::Text:
        m_window->setWindowTitle(toQString(m_form.Caption()));
        break;
    case Change::Appearance:
        m_client->addDirty(m_client->rect());
        break;
    case Change::Content:
        if (!m_form.Icon().empty())
            m_window->setWindowIcon(QIcon(QPixmap::fromImage(renderedImage(m_form.Icon()))));
        break;
    case Change::Hint:
        m_client->updatePointer();
        pointerChangedOn(m_form);
        break;
    case Change::Enabled:
        m_window->setEnabled(m_form.Enabled());
        break;
    default:
        break;
    }
}

void FormView::place()
{
    m_window->move(corner());
}

void FormView::resize()
{
    const int bar = m_menuBar ? m_menuBar->sizeHint().height() : 0;
    const QSize client(toPixels(m_form.clientWidth()), toPixels(m_form.clientHeight()));
    if (m_menuBar)
        m_menuBar->setGeometry(0, 0, client.width(), bar);
    m_client->setGeometry(QRect(QPoint(0, bar), client));
    m_window->setFixedSize(client.width(), client.height() + bar);
}

bool FormView::isBare() const
{
    return m_form.plan().Border == BorderKind::None;
}

QScreen& FormView::screen() const
{
    QScreen* shownOn = isBare() ? QGuiApplication::screenAt(m_origin) : nullptr;
    return shownOn != nullptr ? *shownOn : screenOf(*m_window);
}

// On a screen of another scale a window keeps its native pixels, which are too many or too few there. And while a
// window manager takes a window in, that may seem to stand at the first screen's corner, which is put right later for
// those with a frame only; here once, since no other place may be had.
void FormView::screenChanged()
{
    if (isBare() && std::exchange(m_keepsPlace, false)) {
        m_window->setScreen(&screen()); // by whose scale the place counts
        place();
    }
    if (m_window->size() != m_window->maximumSize())
        m_window->resize(m_window->maximumSize());
}

void FormView::show(bool modal)
{
    if (!m_window->isVisible()) {
        QScreen& screen = screenInUse(m_form.desktop().state());
        m_window->setScreen(&screen);
        m_window->setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
        if (m_window->windowHandle() == nullptr) {
            m_window->winId(); // makes the native window, which carries what follows
            QObject::connect(m_window->windowHandle(), &QWindow::screenChanged, m_window,
                [window = m_window.data()] { QTimer::singleShot(SettlingTime, window, &FormWindow::screenChanged); });
        }
        const Form* owner = m_form.desktop().activeForm();
        const bool owned = modal && owner != nullptr && owner != &m_form && owner->view() != nullptr;
        m_window->windowHandle()->setTransientParent(owned ? owner->view()->window().windowHandle() : nullptr);
        m_origin = screen.geometry().topLeft();
        m_keepsPlace = true;
        standInTheMiddle(screen);
        place();
        const bool covers =
            isBare() && m_window->width() >= screen.size().width() && m_window->height() >= screen.size().height();
        if (covers)
            m_window->setWindowState(Qt::WindowFullScreen); // over panels too
        m_window->show(); // forgets what follows: a dialog opened by a key shows its ring at once
        m_window->setAttribute(Qt::WA_KeyboardFocusChange,
            owned && !isBare() && owner->view()->window().testAttribute(Qt::WA_KeyboardFocusChange));
    } else {
        m_window->raise();
    }
    m_window->activateWindow();
}

bool FormView::hide()
{
    const bool hadKeys = m_window->isActiveWindow();
    m_window->hide();
    return hadKeys;
}

void FormView::windowMoved()
{
    const QPoint now = m_window->frameGeometry().topLeft();
    if (now == corner() || isBare())
        return;
    m_origin = screenOf(*m_window).geometry().topLeft();
    m_form.movedTo(toTwips(now.x() - m_origin.x()), toTwips(now.y() - m_origin.y()));
}

// Where no code has placed it.
void FormView::standInTheMiddle(const QScreen& screen)
{
    if (m_form.isPlaced())
        return;
    const QRect free = screen.availableGeometry();
    const QPoint place = free.topLeft() - m_origin;
    m_form.movedTo(toTwips(place.x() + (free.width() - m_window->width()) / 2),
        toTwips(place.y() + (free.height() - m_window->height()) / 2));
}

// On the desktop, which is all screens together.
QPoint FormView::corner() const
{
    return m_origin + QPoint(toPixels(m_form.Left()), toPixels(m_form.Top()));
}

int FormView::extraWidth() const
{
    return m_window->frameGeometry().width() - m_window->width();
}

int FormView::extraHeight() const
{
    return m_window->frameGeometry().height() - m_window->height() + (m_menuBar ? m_menuBar->height() : 0);
}

} // namespace trovarium
