// SPDX-License-Identifier: GPL-3.0-or-later

// Shows a window of the main window's size with nothing in it, and ends as soon as it is painted.

#include <QApplication>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <cstdlib>

namespace {

class BareWindow : public QWidget {
protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter(this).fillRect(rect(), Qt::darkBlue);
        QTimer::singleShot(0, [] { std::_Exit(0); });
    }
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    BareWindow window;
    window.resize(800, 600);
    window.show();
    return QApplication::exec();
}
