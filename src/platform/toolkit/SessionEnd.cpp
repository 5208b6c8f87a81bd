// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/SessionEnd.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QSocketNotifier>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace trovarium {

namespace {

// All that a signal's handler may know.
volatile std::sig_atomic_t pipeOfSignals = -1;

void tell(int /*signal*/)
{
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(pipeOfSignals, "", 1); // a full pipe tells enough
    errno = error;
}

} // namespace

SessionEnd::SessionEnd(DesktopState& state)
    : m_state(state)
{
    QCoreApplication::instance()->installEventFilter(this);
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this] { endsPerhaps(); });
    if (pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // they end the program at once, as before
    pipeOfSignals = m_pipe[1];
    connect(new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this), &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (read(m_pipe[0], &byte, 1) == 1)
            end();
    });
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        listenTo(signal);
}

SessionEnd::~SessionEnd()
{
    for (const auto& [signal, action] : m_before)
        sigaction(signal, &action, nullptr);
    for (const int end : m_pipe)
        close(end);
}

// What was ignored from the start, as by nohup, stays so. A terminal or a session that ends may send more than one.
void SessionEnd::listenTo(int signal)
{
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_IGN)
        return;
    m_before.emplace_back(signal, before);
    struct sigaction action = {};
    action.sa_handler = tell;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

// The session's own end comes as a Quit, which would ask the windows and not the forms.
bool SessionEnd::eventFilter(QObject* /*receiver*/, QEvent* event)
{
    if (event->type() != QEvent::Quit)
        return false;
    end();
    return true;
}

// The user may still change their mind in another program.
void SessionEnd::endsPerhaps()
{
    for (std::size_t index = 0; index < m_state.loaded.size(); ++index) {
        Form* form = m_state.loaded[index];
        deliverEvent(*form, [form] { form->EndOfSession.raise(); });
    }
}

void SessionEnd::end()
{
    if (m_state.eventsSuspended) {
        m_state.postponed.emplace_back([self = QPointer<SessionEnd>(this)] {
            if (self)
                self->end();
        });
    } else if (!m_state.loaded.empty()) {
        deliverEvent(*m_state.loaded.back(), [this] {
            for (std::size_t index = m_state.loaded.size(); index-- > 0;) {
                if (index < m_state.loaded.size()) // one that unloads others on its way
                    m_state.loaded[index]->unload();
            }
            m_state.desktop.endProgram();
        });
    }
}

} // namespace trovarium
