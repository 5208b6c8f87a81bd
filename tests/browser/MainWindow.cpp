#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "browser/Selection.h"
#include "platform/toolkit/Desktop.h"

#include <algorithm>
#include <utility>

namespace trovarium {

MainWindow::MainWindow()
    : desktop(testDesktop())
    , test(desktop.files())
    , prompts(desktop)
    , robot(desktop)
    , video(desktop, test.album())
    , m_main(desktop,
          [this] {
              const auto tell = [this](const std::string& name) { return [this, name] { opened += name + " "; }; };
              return std::make_unique<frmMain>(desktop, test.album(), video,
                  Dialogs{tell("welcome"), [this](int mode) { groups().showFor(mode); }, tell("export"), tell("full"),
                      tell("show"), tell("search"), tell("import"), tell("midi"), tell("wav"), tell("about"),
                      [this] { unloadGroups(); }});
          })
    , m_groups(desktop, [this] { return std::make_unique<frmGroups>(desktop, test.album(), main()); })
{
    test.setSetting("Options", "FirstTime", "False");
}

MainWindow::~MainWindow()
{
    desktop.files().setFaultHook({});
    unloadGroups();
    if (m_main.isLoaded())
        main().unload();
}

Names MainWindow::names(int count, const std::string& stem)
{
    Names lines;
    for (int i = 1; i <= count; ++i)
        lines.push_back(stem + std::to_string(i) + ".jpg");
    return lines;
}

void MainWindow::putPhotos(const Names& lines)
{
    for (const std::string& name : lines) {
        test.put(test.paths().PhotoPath + name, plainBitmap(40, 30));
        test.put(test.paths().ThumbnailPath + name, plainBitmap(20, 15));
        const std::string info = joinedLines({"PhotoPath=\\Photos\\" + name, "TITLE=" + name});
        test.put(test.paths().InfoPath + name + ".info", info);
    }
}

void MainWindow::openGroup(int photos, int more)
{
    putPhotos(names(photos));
    putGroup("  All Photos  ", names(photos));
    putGroup("Alps", names(photos));
    putGroup("Rome", {"old.jpg"});
    for (int i = 1; i <= more; ++i)
        putGroup("h" + std::to_string(i), {});
    open();
    pressRowNamed("Alps");
}

void MainWindow::open()
{
    main().show();
    desktop.DoEvents();
}

void MainWindow::pressRow(int row, int button)
{
    robot.click(main().pctAlbumList(row), button);
}

void MainWindow::pressRowNamed(const std::string& group)
{
    const Names shown = rows();
    const auto found = std::find(shown.begin(), shown.end(), group);
    ASSERT_NE(found, shown.end()) << group;
    pressRow(static_cast<int>(found - shown.begin()));
}

Names MainWindow::rows()
{
    Names captions;
    for (int row = 0; row < 8; ++row) {
        if (main().pctAlbumList(row).Visible())
            captions.push_back(main().lbAlbumList(row).Caption());
    }
    return captions;
}

int MainWindow::brightRow()
{
    int bright = -1;
    for (int row = 0; row < 8; ++row) {
        if (main().pctAlbumList(row).Picture() == main().pctAlbumList(10).Picture()) {
            EXPECT_EQ(bright, -1) << "two bright rows";
            bright = row;
        }
    }
    return bright;
}

Names MainWindow::cells()
{
    Names shown;
    for (int cell = 0; cell < 16; ++cell) {
        EXPECT_EQ(main().imgThumbnail(cell).Visible(), main().lbThumbnailFile(cell).Visible()) << cell;
        if (main().imgThumbnail(cell).Visible())
            shown.push_back(main().lbThumbnailFile(cell).Caption());
    }
    return shown;
}

Positions MainWindow::framedCells()
{
    Positions framed;
    for (int cell = 0; cell < 16; ++cell) {
        if (main().shpThumbnailSelect(cell).Visible())
            framed.push_back(cell);
    }
    return framed;
}

Positions MainWindow::selectedPositions()
{
    Positions positions;
    for (int i = 0; i <= group().GroupSelect.upperBound(); ++i) {
        if (group().GroupSelect(i) == 1)
            positions.push_back(i);
    }
    return positions;
}

Names MainWindow::logLines()
{
    const std::string text = test.log();
    Names lines;
    for (std::size_t at = text.find("An error"); at != std::string::npos; at = text.find("An error", at + 1))
        lines.push_back(text.substr(at, text.find("\r\n", at) - at));
    return lines;
}

void MainWindow::select(const Positions& positions)
{
    main().selection().SetGroupListSelect(-1, NoKeys);
    for (const int position : positions)
        main().selection().SetGroupListSelect(position, CtrlKey);
}

} // namespace trovarium
