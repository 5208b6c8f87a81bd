// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/IdleInhibition.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QFile>

#include <functional>
#include <utility>

namespace trovarium {

namespace {

constexpr uint PortalIdle = 8; // of what the portal can inhibit

// Without an address the library would start a bus.
bool hasBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")
        || QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
}

// A connection of its own, made at the first inhibition. When it ends, by a kill too, the desktop drops what was
// inhibited by it.
QDBusConnection bus()
{
    const QString name = QStringLiteral("trovarium-idle");
    QDBusConnection known(name);
    if (known.isConnected() || !hasBus())
        return known;
    QDBusConnection::disconnectFromBus(name);
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}

QDBusMessage screenSaver(const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.ScreenSaver"),
        QStringLiteral("/org/freedesktop/ScreenSaver"), QStringLiteral("org.freedesktop.ScreenSaver"), method);
    call.setArguments(arguments);
    call.setAutoStartService(false); // where none runs, none is in charge of the screen
    return call;
}

QDBusMessage portal(const QString& path, const QString& interface, const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), path, "org.freedesktop.portal." + interface, method);
    call.setArguments(arguments);
    return call;
}

} // namespace

// Lives until it is answered, though the inhibition may have ended before.
struct IdleInhibition::Request : std::enable_shared_from_this<Request> {
    QString reason;
    QDBusMessage release; // invalid while nothing is inhibited
    bool isOver = false;

    void askScreenSaver();
    void askPortal();
    void end();

private:
    // `answered` gets the one value of the answer, an invalid one after an error.
    void ask(const QDBusMessage& call, const std::function<void(const QVariant&)>& answered);
    void inhibited(const QDBusMessage& releasedBy);
};

void IdleInhibition::Request::ask(const QDBusMessage& call, const std::function<void(const QVariant&)>& answered)
{
    auto* watcher = new QDBusPendingCallWatcher(bus().asyncCall(call), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished,
        [self = shared_from_this(), answered](QDBusPendingCallWatcher* done) {
            answered(done->isError() ? QVariant() : done->reply().arguments().value(0));
            done->deleteLater();
        });
}

void IdleInhibition::Request::askScreenSaver()
{
    ask(screenSaver(QStringLiteral("Inhibit"), {"Trovarium", reason}), [this](const QVariant& cookie) {
        if (cookie.isValid())
            inhibited(screenSaver(QStringLiteral("UnInhibit"), {cookie}));
        else if (!isOver)
            askPortal();
    });
}

void IdleInhibition::Request::askPortal()
{
    const QVariantList arguments{QString(), PortalIdle, QVariantMap{{QStringLiteral("reason"), reason}}};
    const QDBusMessage call = portal(QStringLiteral("/org/freedesktop/portal/desktop"), QStringLiteral("Inhibit"),
        QStringLiteral("Inhibit"), arguments);
    ask(call, [this](const QVariant& handle) {
        if (handle.isValid())
            inhibited(
                portal(handle.value<QDBusObjectPath>().path(), QStringLiteral("Request"), QStringLiteral("Close"), {}));
    });
}

void IdleInhibition::Request::inhibited(const QDBusMessage& releasedBy)
{
    release = releasedBy;
    if (isOver)
        end();
}

void IdleInhibition::Request::end()
{
    isOver = true;
    if (release.type() == QDBusMessage::MethodCallMessage)
        bus().send(release);
}

IdleInhibition::IdleInhibition(std::string_view reason)
    : m_request(std::make_shared<Request>())
{
    m_request->reason = QString::fromUtf8(reason.data(), static_cast<qsizetype>(reason.size()));
    if (bus().isConnected())
        m_request->askScreenSaver();
}

IdleInhibition::~IdleInhibition()
{
    m_request->end();
}

} // namespace trovarium
