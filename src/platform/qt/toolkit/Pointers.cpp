#include "platform/qt/toolkit/Pointers.h"

#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

namespace trovarium {

namespace {

// An arrow with a sheet under it that carries a plus: what is held here is copied there.
QCursor dropPointer(qreal ratio)
{
    QPixmap pixmap(QSize(32, 32) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(40, 40, 40), 1));
    painter.setBrush(QColor(255, 246, 190));
    painter.drawRoundedRect(QRectF(10.5, 13.5, 18, 15), 2, 2);
    painter.setPen(QPen(QColor(0, 100, 30), 2));
    painter.drawLine(QPointF(19.5, 17), QPointF(19.5, 25));
    painter.drawLine(QPointF(15.5, 21), QPointF(23.5, 21));
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygonF({{0.5, 0.5}, {0.5, 15.5}, {4.3, 12.1}, {7.1, 18.1}, {9.5, 16.9}, {6.9, 11.1}, {11.5, 11.1}}));
    painter.end();
    return QCursor(pixmap, 0, 0); // the corner, since desktops differ in whose pixels they count the hot spot in
}

} // namespace

QCursor cursorOf(int pointer, qreal ratio)
{
    switch (pointer) {
    case TextPointer:
        return QCursor(Qt::IBeamCursor);
    case HourglassPointer:
        return QCursor(Qt::WaitCursor);
    case NoDropPointer:
        return QCursor(Qt::ForbiddenCursor);
    case ArrowHourglassPointer:
        return QCursor(Qt::BusyCursor);
    case FourWayPointer:
        return QCursor(Qt::SizeAllCursor);
    case OwnPointer:
        return dropPointer(ratio);
    default:
        return QCursor(Qt::ArrowCursor);
    }
}

int effectivePointer(const Control& control)
{
    const int own = control.MousePointer();
    return own != DefaultPointer ? own : effectivePointer(control.parent());
}

int effectivePointer(Container& container)
{
    if (const auto* control = dynamic_cast<const Control*>(&container))
        return effectivePointer(*control);
    return container.form().MousePointer();
}

void pointerChangedOn(const Container& container)
{
    for (const Control* control : container.controls()) {
        if (control->view() == nullptr)
            continue;
        control->view()->pointerChanged();
        if (const auto* inner = dynamic_cast<const Container*>(control))
            pointerChangedOn(*inner);
    }
}

} // namespace trovarium
