// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/MainWindow.h"

namespace trovarium {

namespace {

constexpr Color Red{255, 0, 0};
constexpr Color Blue{0, 0, 255};
constexpr Color Green{0, 255, 0};
constexpr int Pixels = 20 * 15; // of a thumbnail, in those of the plan

std::string filled(int width, int height, Color color)
{
    std::string bytes = plainBitmap(width, height);
    const std::size_t start = bytes.size() - (width * 3U + 3) / 4 * 4 * height;
    for (std::size_t at = start; at < bytes.size(); ++at) {
        const std::size_t channel = (at - start) % ((width * 3U + 3) / 4 * 4) % 3;
        bytes[at] = static_cast<char>(channel == 0 ? color.blue : channel == 1 ? color.green : color.red);
    }
    return bytes;
}

} // namespace

TEST_F(MainWindow, ADenseScreenShowsThePhotographsOfAPageInPlaceOfTheirThumbnails)
{
    Names photographs = names(17);
    photographs[4] = "p5.avi";
    putPhotos(photographs);
    for (const std::string& name : photographs) {
        test.put(test.paths().ThumbnailPath + name, filled(20, 15, Blue));
        test.put(test.paths().PhotoPath + name, filled(200, 150, Red));
    }
    test.put(test.paths().PhotoPath + "p2.jpg", filled(150, 200, Red));
    test.put(test.paths().PhotoPath + "p3.jpg", "BM and no more");
    test.put(test.folder().inside("elsewhere.jpg"), filled(200, 150, Red));
    test.put(test.paths().InfoPath + "p4.jpg.info", "PhotoPath=" + test.folder().inside("elsewhere.jpg") + "\r\n");
    test.put(test.paths().ThumbnailPath + "p6.jpg", "");
    test.put(test.paths().ThumbnailPath + "p7.jpg", filled(200, 150, Green));
    putGroup("  All Photos  ", photographs);
    std::string asked;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Picture && !path.starts_with(test.paths().ThumbnailPath))
            asked += std::string(path) + ' ';
    });
    open();
    const auto before = test.allFiles();
    const auto shows = [&](Color color) { return robot.shot(main()).count(color); };
    EXPECT_EQ(shows(Blue), 14 * Pixels);
    desktop.DoEvents();
    EXPECT_EQ(asked, "") << "this screen isn't dense";

    main().Left = 2100 * 15;
    desktop.DoEvents();
    EXPECT_TRUE(robot.until([&] { return shows(Red) == 11 * Pixels; })) << shows(Red);
    EXPECT_EQ(shows(Blue), 3 * Pixels) << "of another shape, damaged, a clip, too large";
    asked.clear();
    main().pages().ShowThumbnailBoxes(false);
    main().pages().ShowThumbnailBoxes(true);
    EXPECT_TRUE(robot.until([&] { return asked.find("p3.jpg") != asked.npos; })) << "hiding it has dropped the request";
    main().VScroll1.Value = 2;
    EXPECT_TRUE(robot.until([&] { return shows(Red) == Pixels; })) << shows(Red);
    main().VScroll1.Value = 1;
    EXPECT_TRUE(robot.until([&] { return shows(Red) == 11 * Pixels; })) << shows(Red);
    EXPECT_EQ(test.allFiles(), before);
    EXPECT_EQ(logLines(), Names{});
    main().Left = 0;
}

} // namespace trovarium
