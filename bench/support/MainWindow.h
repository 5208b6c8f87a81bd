// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/frmMain.h"
#include "startup/Program.h"
#include "support/Library.h"
#include "support/Robot.h"

#include <chrono>
#include <string>

namespace trovarium {

// The main window on a library, painted and with its first group on show, worked by a user's hand.
class MainWindow {
public:
    MainWindow(Desktop& desktop, const std::string& nativeFolder);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    frmMain& form() { return m_program.mainWindow()(); }
    Album& album() { return m_library.album(); }
    Desktop& desktop() { return m_library.desktop(); }
    Robot& robot() { return m_robot; }

    void paint() { desktop().repaintOnly(); }

    // How long `act` takes until what it changed is painted, in seconds.
    template <class Act>
    double toPainted(Act act)
    {
        const auto start = std::chrono::steady_clock::now();
        act();
        paint();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    // A photograph from the page of thumbnails, with what was decoded ahead for it dropped again.
    void openPhotograph(int cell);
    void goBackToThumbnails();
    void zoomTo(int level);

private:
    Library m_library;
    Robot m_robot;
    Program m_program;
};

} // namespace trovarium
