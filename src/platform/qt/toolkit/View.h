#pragma once

#include "platform/toolkit/Control.h"
#include "platform/toolkit/Event.h"

#include <QCursor>
#include <QPointer>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <string_view>

namespace trovarium {

class SurfaceView;

// Shows one control while its form is loaded. Made by the control's makeView, which shows all values as
// they stand; `apply` follows what changes later.
class View {
public:
    explicit View(Control& control)
        : m_control(control)
    {
    }
    virtual ~View() = default;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    Control& control() const { return m_control; }
    virtual QWidget* widget() const { return nullptr; } // null for a drawn item
    virtual void apply(Change change) = 0;
    virtual void pointerChanged() { } // here, or on what the control lies on

private:
    Control& m_control;
};

// A control that is a widget of the desktop. The widget belongs to the view and outlives it until control
// returns to the event loop, hidden and with its signals blocked, since the view may go inside its own event.
class WidgetView : public View {
public:
    // Takes a widget made with `surfaceWidget(control)` as its parent; sets place, visibility, input, tool
    // tip, pointer, accessible name and font.
    WidgetView(Control& control, QWidget* widget);
    ~WidgetView() override;

    QWidget* widget() const override { return m_widget; }
    // Geometry, Visible, Enabled, Pointer and Order; a kind of control adds Text, Appearance and Content.
    void apply(Change change) override;
    void pointerChanged() override;

private:
    void placeWidget();

    QPointer<QWidget> m_widget;
    QCursor m_ownCursor; // the widget's default, such as the text beam
    bool m_hasOwnCursor;
};

// The surface that the control lies on; the form must have its window.
QWidget* surfaceWidget(const Control& control);

QString toQString(std::string_view text);
std::string toText(const QString& text);

// A tool tip that shows its text as it stands, whatever it may look like.
QString toolTipText(std::string_view text);

// A font of so many pixels of the plan, and the size of all that no plan makes larger.
inline constexpr float PlanFont = 12;
QFont planFont(float pixels, bool bold = false);
// The font, made so much narrower, within reason, that the text fits into a width. `flags` as for measuring it.
QFont narrowedFont(QFont font, int flags, const QString& text, qreal width);

QColor toQColor(Color color);

// The control's place in pixels of its parent, fractions kept.
QRectF placeInPixels(const Control& control);

// Raises a mouse event at a place that is given in pixels of what raises it; its handler gets twips, or the scale of
// a container.
void raiseAt(Event<int, int, float, float>& event, int button, int shift, QPointF pixels);
void raiseAt(Event<int, int, float, float>& event, int button, int shift, QPointF pixels, const Container& scale);

// The desktop's modifiers and buttons as handlers get them, and the other way round.
int shiftKeys(Qt::KeyboardModifiers modifiers);
int mouseButton(Qt::MouseButton button);
int mouseButtons(Qt::MouseButtons buttons);
// 13 Enter, 27 Escape, 37 to 40 the arrows, letters as capitals, letters and digits on every keyboard layout; 0
// for a key without a number.
int keyCode(const QKeyEvent& event);
// The character of a key press (13 Enter, 27 Escape, 8 Backspace), 0 for a key without one.
int keyAscii(const QKeyEvent& event);

} // namespace trovarium
