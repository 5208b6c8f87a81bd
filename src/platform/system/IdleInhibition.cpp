// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/IdleInhibition.h"

#include "platform/files/Descriptor.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

namespace trovarium {

namespace {

constexpr uint PortalIdle = 8;       // of what the portal can inhibit
constexpr int BusMilliseconds = 500; // that a bus has to answer; it takes less than one

// The socket of the session's bus, as it is told to the kernel: an abstract one begins with a zero byte. Empty for an
// address of another kind.
QByteArray busSocket()
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (address.isEmpty())
        return qgetenv("XDG_RUNTIME_DIR") + "/bus";
    const QByteArray first = address.split(';').first();
    for (const auto& [key, start] : {std::pair("unix:path=", QByteArray()), {"unix:abstract=", QByteArray(1, '\0')}}) {
        if (first.startsWith(key))
            return start
                + QByteArray::fromPercentEncoding(first.mid(static_cast<qsizetype>(qstrlen(key))).split(',').first());
    }
    return {};
}

// The library waits long for a bus that hangs, and starts one where there is none.
bool busAnswers()
{
    const QByteArray path = busSocket();
    if (path.isEmpty())
        return true;
    sockaddr_un socketAddress{.sun_family = AF_UNIX, .sun_path = {}};
    if (path.size() > static_cast<qsizetype>(sizeof socketAddress.sun_path))
        return false;
    std::copy(path.begin(), path.end(), socketAddress.sun_path);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(path.size()));
    const Descriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (connect(connection.handle(), reinterpret_cast<const sockaddr*>(&socketAddress), length) != 0)
        return false;
    constexpr std::string_view question("\0AUTH\r\n", 7); // asks for the ways to log in, which any bus answers at once
    pollfd answer{.fd = connection.handle(), .events = POLLIN, .revents = 0};
    return send(connection.handle(), question.data(), question.size(), MSG_NOSIGNAL) > 0
        && poll(&answer, 1, BusMilliseconds) > 0;
}

// A connection of its own, made at the first inhibition. When it ends, by a kill too, the desktop drops what was
// inhibited by it.
QDBusConnection bus()
{
    const QString name = QStringLiteral("trovarium-idle");
    QDBusConnection known(name);
    if (known.isConnected() || !busAnswers())
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
