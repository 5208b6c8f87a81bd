// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/MainWindow.h"

#include "platform/pictures/PictureService.h"

namespace trovarium {

MainWindow::MainWindow(Desktop& desktop, const std::string& nativeFolder)
    : m_library(desktop, nativeFolder)
    , m_robot(desktop)
    , m_program(desktop, m_library.album(), m_library.album().paths.ProgramFolder)
{
    form().show();
    desktop.DoEvents();
    paint();
    untilIdle(desktop);
}

MainWindow::~MainWindow()
{
    desktop().pictures().expect({});
    form().unload();
    desktop().DoEvents();
}

void MainWindow::openPhotograph(int cell)
{
    m_robot.doubleClick(form().imgThumbnail(cell));
    paint();
    desktop().pictures().expect({});
    untilIdle(desktop());
}

void MainWindow::goBackToThumbnails()
{
    m_robot.click(form().pctAlbumList(0));
    paint();
    untilIdle(desktop());
}

void MainWindow::zoomTo(int level)
{
    while (album().view.ZoomLevel < level) {
        m_robot.click(form().cmdZoomIn);
        paint();
    }
}

} // namespace trovarium
