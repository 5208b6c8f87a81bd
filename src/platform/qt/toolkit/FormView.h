#pragma once

#include <QPointer>
#include <QWidget>

namespace trovarium {

class Form;
class FormWindow;
class SurfaceView;

// What of a form its window follows.
enum class FormChange { Caption, Place, Size, Back, Icon, Pointer, Enabled };

// The window of a loaded form: a menu bar when the form has menus, and the client surface below it.
class FormView {
public:
    explicit FormView(Form& form);
    ~FormView();
    FormView(const FormView&) = delete;
    FormView& operator=(const FormView&) = delete;

    QWidget& window() const;
    SurfaceView& client() const;

    void apply(FormChange change);
    void show(bool modal);
    void hide();

    // Frame and menu bar around the client area, in pixels; the frame counts once the window is shown.
    int extraWidth() const;
    int extraHeight() const;

private:
    Form& m_form;
    QPointer<FormWindow> m_window;
};

} // namespace trovarium
