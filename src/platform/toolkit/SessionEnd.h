// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <csignal>
#include <utility>
#include <vector>

namespace trovarium {

struct DesktopState;

// While it lives, what ends the program from outside (a logout, `kill`, its terminal's end) does so by unloading the
// forms first. One at a time.
class SessionEnd : public QObject {
public:
    explicit SessionEnd(DesktopState& state);
    ~SessionEnd() override;
    SessionEnd(const SessionEnd&) = delete;
    SessionEnd& operator=(const SessionEnd&) = delete;

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void listenTo(int signal);
    void endsPerhaps();
    void end();

    DesktopState& m_state;
    std::vector<std::pair<int, struct sigaction>> m_before; // signals, and what was done with them
    int m_pipe[2] = {-1, -1};
};

} // namespace trovarium
