#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/OpenOrClosedBar.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/ScrollBar.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOptionSlider>
#include <QTimerEvent>
#include <QWheelEvent>

#include <algorithm>

namespace trovarium {

namespace {

constexpr int WheelNotch = 120; // eighths of a degree

// It looks disabled, takes no input and is passed over by Tab, as its control says.
class Bar : public OpenOrClosedBar {
public:
    Bar(ScrollBar& control, QWidget* parent)
        : OpenOrClosedBar(control.orientation() == Orientation::Vertical ? Qt::Vertical : Qt::Horizontal, parent)
        , m_control(&control)
    {
    }

    bool takesInput() const override { return m_control != nullptr && m_control->takesInput(); }

    void detach() { m_control = nullptr; }

    void raise()
    {
        if (m_control == nullptr)
            return;
        const bool dragging = isSliderDown();
        const int position = dragging ? sliderPosition() : value();
        ++m_raising;
        fromDesktop(*m_control, [&] { dragging ? m_control->dragged(position) : m_control->released(position); });
        --m_raising;
    }

protected:
    void initStyleOption(QStyleOptionSlider* option) const override
    {
        QScrollBar::initStyleOption(option);
        if (takesInput())
            return;
        option->state &= ~QStyle::State_Enabled;
        option->palette.setCurrentColorGroup(QPalette::Disabled);
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        if (takesInput())
            QScrollBar::mousePressEvent(event);
    }
    // A drag that began may end whatever happened meanwhile.
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (takesInput() || isSliderDown())
            QScrollBar::mouseMoveEvent(event);
    }
    // The desktop's own handling takes Left for forwards.
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool right = event->key() == Qt::Key_Right;
        if (!takesInput())
            event->ignore();
        else if (right || event->key() == Qt::Key_Left)
            triggerAction(right ? SliderSingleStepAdd : SliderSingleStepSub);
        else
            QScrollBar::keyPressEvent(event);
    }
    // The repeat of a held arrow waits while a change is being handled, and goes on after it.
    void timerEvent(QTimerEvent* event) override
    {
        if (takesInput() && m_raising == 0)
            QScrollBar::timerEvent(event);
    }
    void wheelEvent(QWheelEvent* event) override
    {
        event->accept();
        if (!takesInput())
            return;
        const QPoint turned = event->angleDelta();
        const int turn = turned.y() != 0 ? turned.y() : turned.x();
        m_turned = (turn > 0) == (m_turned > 0) ? m_turned + turn : turn;
        const int notches = m_turned / WheelNotch;
        m_turned -= notches * WheelNotch;
        if (notches != 0)
            fromDesktop(*m_control, [&] { m_control->page(-notches); });
    }
    void contextMenuEvent(QContextMenuEvent* event) override { event->accept(); }

private:
    ScrollBar* m_control;
    int m_raising = 0;
    int m_turned = 0;
};

class ScrollBarView : public WidgetView {
public:
    explicit ScrollBarView(ScrollBar& control)
        : ScrollBarView(control, new Bar(control, surfaceWidget(control)))
    {
    }
    ~ScrollBarView() override
    {
        if (widget() != nullptr)
            m_bar->detach();
    }

    void apply(Change change) override
    {
        switch (change) {
        case Change::Appearance:
            showRange();
            break;
        case Change::Content: {
            const QSignalBlocker quiet(m_bar);
            m_bar->setValue(m_control.Value());
            break;
        }
        case Change::Enabled:
            showOpenOrClosed();
            break;
        default:
            WidgetView::apply(change);
        }
    }

private:
    ScrollBarView(ScrollBar& control, Bar* bar)
        : WidgetView(control, bar)
        , m_control(control)
        , m_bar(bar)
    {
        m_bar->setEnabled(true);
        showOpenOrClosed();
        showRange();
        QObject::connect(m_bar, &QScrollBar::valueChanged, m_bar, [this] { m_bar->raise(); });
        QObject::connect(m_bar, &QScrollBar::sliderReleased, m_bar, [this] { m_bar->raise(); });
    }

    void showOpenOrClosed()
    {
        m_bar->setFocusPolicy(m_control.Enabled() ? Qt::StrongFocus : Qt::NoFocus);
        m_bar->update();
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(m_bar, changed);
        QAccessible::updateAccessibility(&event);
    }

    void showRange()
    {
        const QSignalBlocker quiet(m_bar);
        m_bar->setRange(m_control.Min(), std::max(m_control.Min(), m_control.Max()));
        m_bar->setSingleStep(m_control.SmallChange());
        m_bar->setPageStep(m_control.LargeChange());
        m_bar->setValue(m_control.Value());
    }

    ScrollBar& m_control;
    Bar* m_bar;
};

} // namespace

std::unique_ptr<View> ScrollBar::makeView()
{
    return std::make_unique<ScrollBarView>(*this);
}

} // namespace trovarium
