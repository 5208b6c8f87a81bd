#pragma once

#include "platform/qt/toolkit/FormWindow.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/toolkit/Component.h"

#include <QMenuBar>
#include <QPointer>

namespace trovarium {

class Form;

// The window of a loaded form: a menu bar when the form has menus, and the client surface below it.
class FormView {
public:
    explicit FormView(Form& form);
    ~FormView();
    FormView(const FormView&) = delete;
    FormView& operator=(const FormView&) = delete;

    QWidget& window() const;
    SurfaceView& client() const;

    void apply(Change change);
    void place(); // where the form is said to be
    void resize();
    void show(bool modal);
    bool hide(); // gives whether the window had the keys
    void windowMoved();
    void screenChanged();
    QScreen& screen() const; // where the form stands

    // Frame and menu bar around the client area, in pixels; the frame counts once the window is shown.
    int extraWidth() const;
    int extraHeight() const;

private:
    void standInTheMiddle(const QScreen& screen);
    QPoint corner() const;
    bool isBare() const; // without a frame, so that no user moves it

    Form& m_form;
    QPointer<FormWindow> m_window;
    QPointer<QMenuBar> m_menuBar;
    QPointer<SurfaceView> m_client;
    QPoint m_origin; // of the screen that the form counts its place from
    bool m_keepsPlace = false;
};

} // namespace trovarium
