// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Application.h"

#include <QApplication>
#include <QScreen>

#include <gtest/gtest.h>

#include <utility>

namespace trovarium {

TEST(Application, GrowsOnLargeScreensToHalfOfTheirHeight)
{
    struct Case {
        int columns;
        int lines;
        double scale;
    };
    for (const auto& [columns, lines, scale] :
        {Case{1366, 768, 1}, {1920, 1080, 1}, {2240, 1399, 1}, {2240, 1400, 1.25}, {2560, 1440, 1.25},
            {2560, 1600, 1.25}, {3840, 2160, 1.75}, {7680, 4320, 3.75}, {1440, 2560, 1.75}, {640, 1400, 1}})
        EXPECT_EQ(screenScale(columns, lines), scale) << columns << " x " << lines;

    // The tests themselves run on two small screens and a large one.
    for (const QScreen* screen : QGuiApplication::screens())
        EXPECT_EQ(screen->devicePixelRatio(), screen->name() == "third" ? 2 : 1) << screen->name().toStdString();
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_SCREEN_SCALE_FACTORS")) << "programs that we start would inherit it";
}

TEST(Application, IgnoresASettingThatIsNoFactor)
{
    for (const auto& [text, scale] : {std::pair{"1.5", 1.5}, {" 1 ", 1.0}, {"8", 8.0}, {"8.1", 0.0}, {"0.9", 0.0},
             {"", 0.0}, {"-2", 0.0}, {"1,5", 0.0}, {"large", 0.0}, {"1e999", 0.0}})
        EXPECT_EQ(scaleOf(text), scale) << text;
}

} // namespace trovarium
