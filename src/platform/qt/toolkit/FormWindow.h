#pragma once

#include <QWidget>

namespace trovarium {

class Form;

// The top-level widget of a form.
class FormWindow : public QWidget {
public:
    FormWindow(Form& form, Qt::WindowFlags flags);

    // The form is unloaded: the widget stays until the event loop has it back, and does nothing.
    void detach() { m_form = nullptr; }
    Form* form() const { return m_form; }
    void screenChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    Form* m_form;
};

// Stands before every event of the application: closes forms to input, and shows keys to a form that
// previews them.
class InputGate : public QObject {
protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;
};

} // namespace trovarium
