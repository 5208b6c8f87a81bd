#include "platform/qt/toolkit/LateUpdate.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace trovarium {

LateUpdate::LateUpdate(std::function<void()> update)
    : m_update(std::move(update))
{
}

void LateUpdate::schedule()
{
    if (std::exchange(m_due, true))
        return;
    QCoreApplication::postEvent(this, new QEvent(QEvent::User)); // NOLINT(*-owning-memory): Qt's to delete
}

void LateUpdate::flush()
{
    if (std::exchange(m_due, false))
        m_update();
}

bool LateUpdate::event(QEvent* event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    flush();
    return true;
}

} // namespace trovarium
