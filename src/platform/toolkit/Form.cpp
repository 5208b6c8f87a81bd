// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Form.h"

#include "platform/pictures/PictureData.h"
#include "platform/pictures/PicturePainter.h"
#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/ScrollBar.h"
#include "platform/toolkit/Timer.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cmath>
#include <utility>

namespace trovarium {

Form::Form(Desktop& desktop, const FormPlan& plan)
    : Component(plan.Name)
    , Container(plan.Scale)
    , Drawn(static_cast<Component*>(this))
    , Caption(this, plan.Caption)
    , m_desktop(desktop)
    , m_plan(plan)
    , m_clientWidth(plan.Width)
    , m_clientHeight(plan.Height)
    , m_painter(std::make_unique<PicturePainter>())
    , m_window(std::make_unique<FormWindow>(*this))
{
    showCaption();
}

Form::~Form()
{
    m_desktop.state().formUnloaded(*this);
}

QWidget* Form::client() const
{
    return &m_window->client();
}

void Form::setLeft(float value)
{
    m_left = value;
    m_placed = true;
    m_window->place();
}

void Form::setTop(float value)
{
    m_top = value;
    m_placed = true;
    m_window->place();
}

float Form::width() const
{
    return m_clientWidth + (m_loaded ? static_cast<float>(m_window->extraSize().width()) * TwipsPerPixel : 0);
}

void Form::setWidth(float value)
{
    m_clientWidth = std::max(0.0F, value - (width() - m_clientWidth));
    m_window->fitSize();
}

float Form::height() const
{
    return m_clientHeight + (m_loaded ? static_cast<float>(m_window->extraSize().height()) * TwipsPerPixel : 0);
}

void Form::setHeight(float value)
{
    m_clientHeight = std::max(0.0F, value - (height() - m_clientHeight));
    m_window->fitSize();
}

void Form::showCaption()
{
    m_window->setWindowTitle(toQString(Caption()));
}

void Form::showIcon()
{
    if (!Icon().empty())
        m_window->setWindowIcon(QIcon(QPixmap::fromImage(renderedImage(Icon()))));
}

// The form's mouse pointer takes precedence over the I-beam of text fields.
void Form::showPointer()
{
    const bool isDefault = MousePointer() == DefaultPointer;
    for (QLineEdit* text : m_window->findChildren<QLineEdit*>())
        isDefault ? text->setCursor(Qt::IBeamCursor) : text->unsetCursor();
    if (isDefault)
        m_window->unsetCursor();
    else
        m_window->setCursor(cursorOf(MousePointer(), m_window->devicePixelRatioF()));
}

void Form::takeOrRefuseFiles()
{
    m_window->setAcceptDrops(TakesFiles());
}

void Form::repaint()
{
    client()->update();
}

void Form::load()
{
    if (m_loaded)
        return;
    const DesktopState::HandlerScope scope(m_desktop.state());
    m_loaded = true;
    m_window->prepare();
    m_desktop.state().loaded.push_back(this);
    for (Timer* timer : m_timers)
        timer->restart();
    Load.raise();
}

void Form::show()
{
    load();
    if (m_loaded)
        present(false);
}

void Form::showModal()
{
    DesktopState& state = m_desktop.state();
    NestedLoop nested(m_desktop);
    load();
    if (!m_loaded)
        return;
    present(true);
    QEventLoop loop;
    state.modals.push_back({this, &loop});
    loop.exec();
    std::erase_if(state.modals, [&loop](const DesktopState::ModalShow& modal) { return modal.loop == &loop; });
    nested.finish();
    if (Form* next = state.activeForm())
        state.queueActivate(*next);
}

void Form::present(bool modal)
{
    m_window->present(modal);
    m_shown = true;
    m_desktop.state().formShown(*this);
}

void Form::hide()
{
    if (!m_shown)
        return;
    m_shown = false;
    const bool hadKeys = m_window->isActiveWindow();
    m_window->hide();
    m_desktop.state().formHidden(*this);
    if (hadKeys)
        m_desktop.state().activateNextWindow();
}

void Form::unload()
{
    if (!m_loaded || m_unloading)
        return;
    m_unloading = true;
    Unload.raise();
    hide();
    m_loaded = false;
    m_unloading = false;
    for (Timer* timer : m_timers)
        timer->restart();
    m_desktop.state().formUnloaded(*this);
    if (m_holder != nullptr)
        m_holder->release();
}

void Form::PopupMenu(Menu& menu)
{
    if (m_shown)
        menu.popUp();
}

// Enter among the rows of a list or a box is meant for one of them, and never for a button elsewhere.
Button* Form::buttonOf(int code) const
{
    const QWidget* focus = m_window->focusWidget();
    const bool isAmongRows =
        qobject_cast<const QAbstractItemView*>(focus) != nullptr || qobject_cast<const QComboBox*>(focus) != nullptr;
    const auto found = std::find_if(m_buttons.begin(), m_buttons.end(), [&](const Button* button) {
        const bool isMeant =
            (code == EnterKey && button->Default() && !isAmongRows) || (code == EscapeKey && button->Cancel());
        return isMeant && button->takesInput();
    });
    return found == m_buttons.end() ? nullptr : *found;
}

VScroll* Form::scrollFor(const QWidget* widget) const
{
    const auto takes = [](const VScroll* scroll) { return scroll->takesInput(); };
    if (widget == nullptr) {
        const auto first = std::find_if(m_scrolls.begin(), m_scrolls.end(), takes);
        return first == m_scrolls.end() ? nullptr : *first;
    }
    for (; widget != nullptr; widget = widget->parentWidget()) {
        for (VScroll* scroll : m_scrolls) {
            if (takes(scroll) && scroll->parent().client() == widget)
                return scroll;
        }
    }
    return nullptr;
}

void Form::movedTo(float left, float top)
{
    // The window stands on whole pixels; what code asked for keeps its fractions.
    if (std::abs(left - m_left) < TwipsPerPixel && std::abs(top - m_top) < TwipsPerPixel)
        return;
    m_left = left;
    m_top = top;
}

void Form::draw(QPainter& painter, const QRectF& place)
{
    painter.fillRect(place, toQColor(BackColor()));
    m_painter->paint(painter, Picture(), place);
}

QPointF Form::handlerPlace(const QPointF& pixels) const
{
    return handlerPlaceOn(*this, pixels);
}

// Destroys unloaded forms now: what they refer to may be destroyed together with the holder.
FormHolderBase::~FormHolderBase()
{
    DesktopState& state = m_desktop.state();
    if (state.scopes == 0)
        std::erase_if(state.unloadedForms, [this](const auto& unloaded) { return unloaded.holder == this; });
}

void FormHolderBase::release()
{
    m_form->setHolder(nullptr);
    m_desktop.state().unloadedForms.push_back({std::move(m_form), this});
}

void FormHolderBase::hold(std::unique_ptr<Form> form)
{
    form->setHolder(this);
    m_form = std::move(form);
}

} // namespace trovarium
