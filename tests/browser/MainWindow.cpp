#include "MainWindow.h"

#include <algorithm>
#include <regex>

namespace trovarium {

namespace {

// The numbers from 0 below `end` for which it holds.
template <class Holds>
Positions where(int end, const Holds& holds)
{
    Positions found;
    for (int i = 0; i < end; ++i)
        if (holds(i))
            found.push_back(i);
    return found;
}

} // namespace

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
                      tell("show"), tell("search"), tell("import"), tell("midi"), tell("wav"), tell("about"), [] {}});
          })
    , m_groups(desktop, [this] { return std::make_unique<frmGroups>(desktop, test.album(), main()); })
{
    test.setSetting("Options", "FirstTime", "False");
}

MainWindow::~MainWindow()
{
    desktop.files().setFaultHook({});
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
        test.put(test.paths().PhotoPath + name, plainBitmap(40, 30) + name); // each with bytes of its own
        test.put(test.paths().ThumbnailPath + name, plainBitmap(20, 15));
        test.put(test.paths().InfoPath + name + ".info", joinedLines({"PhotoPath=\\Photos\\" + name, "TITLE=" + name}));
    }
}

std::string MainWindow::numbersOf(const std::string& group)
{
    std::string text;
    for (const std::string& line : linesOf(group))
        text += line.at(1);
    return text;
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
    for (const int row : where(8, [this](int i) { return main().pctAlbumList(i).Visible(); }))
        captions.push_back(main().lbAlbumList(row).Caption());
    return captions;
}

Positions MainWindow::brightRows()
{
    const Picture& bright = main().pctAlbumList(10).Picture();
    const auto rows = where(8, [&](int row) { return main().pctAlbumList(row).Picture() == bright; });
    EXPECT_EQ(where(8, [&](int row) { return main().pctAlbumList(row).AccessibleSelected() == true; }), rows);
    return rows;
}

Names MainWindow::cells()
{
    Names shown;
    for (const int cell : where(16, [this](int i) { return main().lbThumbnailFile(i).Visible(); }))
        shown.push_back(main().lbThumbnailFile(cell).Caption());
    for (int cell = 0; cell < 16; ++cell)
        EXPECT_EQ(main().imgThumbnail(cell).AccessibleName(), main().lbThumbnailFile(cell).Caption());
    EXPECT_EQ(shown.size(), where(16, [this](int i) { return main().imgThumbnail(i).Visible(); }).size());
    return shown;
}

Positions MainWindow::selectedPositions()
{
    return where(group().GroupSelect.upperBound() + 1, [this](int i) { return group().GroupSelect(i) == 1; });
}

Names MainWindow::logLines()
{
    const std::regex entry("An error has occurred in '(.*)'\\. Error = (.*)\r\n");
    const std::string text = test.log();
    Names lines;
    for (std::sregex_iterator found(text.begin(), text.end(), entry); found != std::sregex_iterator(); ++found)
        lines.push_back(found->format("$1: $2"));
    return lines;
}

void MainWindow::select(const Positions& positions)
{
    main().selection().SetGroupListSelect(-1, NoKeys);
    for (const int position : positions)
        main().selection().SetGroupListSelect(position, CtrlKey);
}

} // namespace trovarium
