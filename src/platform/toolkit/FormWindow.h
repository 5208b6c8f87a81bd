// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QPointer>
#include <QSize>
#include <QWidget>

#include <optional>

class QMenuBar;

namespace trovarium {

class Container;
class Drawn;
class DrawnWidget;
class Form;
struct DesktopState;

// The window of a form: a menu bar when the form has menus, and the client area below it.
class FormWindow : public QWidget {
public:
    explicit FormWindow(Form& form);

    QWidget& client() const;
    QMenuBar& menuBar(); // made when it is asked for

    void prepare(); // the form is loaded
    void present(bool modal);
    void place(); // where the form is said to be
    void fitSize();
    // Of frame and menu bar around the client area, in pixels; the frame counts once the window is shown.
    QSize extraSize() const;
    QScreen& standsOn() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void makeNative();
    bool takesFiles() const;
    void screenChanged();
    void centerOn(const QScreen& screen);
    QPoint corner() const;
    bool isBare() const; // without a frame, so that no user moves it

    Form& m_form;
    QMenuBar* m_menuBar = nullptr;
    DrawnWidget* m_client;
    QPoint m_origin; // of the screen that the form counts its place from
    bool m_keepsPlace = false;
};

// Stands before every event of the application: withholds input from forms that are closed to it, shows keys to a form
// that previews them, and paces repaints.
class EventFilter : public QObject {
public:
    explicit EventFilter(DesktopState& state)
        : m_state(state)
    {
    }

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool isHeldAnswer(const QWidget& receiver, const QKeyEvent& press);
    bool hasClosedPopUp(const QEvent& event);

    DesktopState& m_state;
    QPointer<QWidget> m_answers;       // the window that Enter or Escape was pressed in
    std::optional<quint64> m_popUpKey; // time stamp of the last key that an open list or menu saw first
};

} // namespace trovarium
