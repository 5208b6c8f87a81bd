// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/FilmSurface.h"
#include "platform/media/MediaService.h"
#include "platform/media/MpvLibrary.h"
#include "platform/toolkit/Desktop.h"
#include "support/FailureOf.h"
#include "support/Robot.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace trovarium {

namespace {

struct Film {
    explicit Film(const std::string& path)
    {
        graph->RenderFile(path);
        graph->put_Owner(surface);
    }

    std::shared_ptr<FilmSurface> surface = std::make_shared<FilmSurface>();
    std::unique_ptr<FilgraphManager> graph = testDesktop().media().newFilgraphManager();
};

int frameOn(const FilmSurface& surface) // -1 for none
{
    const QImage frame = surface.shown().frame;
    return frame.isNull() ? -1 : static_cast<int>(qBlue(frame.pixel(32, 24)) * 219 / 255.0 / 8 + 0.5);
}

const std::string Clips = fromNativePath(FILMS "/");

} // namespace

TEST(Films, PlayPauseSeekAndEnd)
{
    for (const char* name : {"silent.avi", "silent.mov", "silent.mpg", "sound.avi", "sound.mov", "sound.mpg"}) {
        SCOPED_TRACE(name);
        const Film film(Clips + name);
        FilgraphManager& graph = *film.graph;
        EXPECT_NEAR(1.0, graph.get_Duration(), 0.1);
        EXPECT_NEAR(0.0, graph.get_CurrentPosition(), 0.02);
        EXPECT_EQ(0, frameOn(*film.surface)) << "the first frame is there at once";
        graph.put_CurrentPosition(0.48);
        EXPECT_TRUE(testDesktop().waitUntil([&] { return frameOn(*film.surface) == 12; }, 2000));
        EXPECT_NEAR(0.48, graph.get_CurrentPosition(), 0.021);

        graph.Run();
        EXPECT_TRUE(testDesktop().waitUntil([&] { return frameOn(*film.surface) > 14; }, 2000));
        graph.Stop();
        EXPECT_EQ(0, graph.WaitForCompletion(60)); // a frame may still have been on its way
        const std::pair held(frameOn(*film.surface), graph.get_CurrentPosition());
        EXPECT_EQ(0, graph.WaitForCompletion(100));
        EXPECT_EQ(held, std::pair(frameOn(*film.surface), graph.get_CurrentPosition()));

        const auto next = std::make_shared<FilmSurface>();
        graph.put_Width(30);
        graph.put_Owner(next);
        EXPECT_EQ(std::pair(-1, held.first), std::pair(frameOn(*film.surface), frameOn(*next)));
        EXPECT_EQ(30, next->shown().place.width);

        graph.Run();
        EXPECT_EQ(1, graph.WaitForCompletion(3000));
        EXPECT_EQ(graph.get_Duration(), graph.get_CurrentPosition());
        EXPECT_TRUE(testDesktop().waitUntil([&] { return frameOn(*next) == 24; }, 2000));
        graph.put_CurrentPosition(0);
        EXPECT_EQ(0, graph.WaitForCompletion(0));
        EXPECT_TRUE(testDesktop().waitUntil([&] { return frameOn(*next) == 0; }, 2000));
        graph.put_CurrentPosition(9);
        EXPECT_EQ(graph.get_Duration(), graph.get_CurrentPosition()) << "beyond the end is the end";
    }
    const TemporaryFolder folder;
    testDesktop().files().copy(Clips + "lying.mov", folder.inside("upright.mov"));
    std::string bytes = folder.read("upright.mov");
    const std::string_view turn("\0\0\0\0\xff\xff\0\0\0\0\0\0\0\1\0\0\0\0\0\0", 20);
    folder.write("upright.mov", bytes.replace(bytes.find("tkhd") + 44, turn.size(), turn));
    const Film film(folder.inside("upright.mov")); // as it was taken, brighter above than below
    const QImage frame = film.surface->shown().frame;
    EXPECT_EQ(QSize(48, 64), frame.size());
    EXPECT_GT(qBlue(frame.pixel(24, 16)), 180);
    EXPECT_LT(qBlue(frame.pixel(24, 48)), 60);
}

TEST(Films, OpenNothingButAFilm)
{
    const TemporaryFolder folder;
    folder.write("list.avi", "#EXTM3U\n" FILMS "/silent.avi\n");
    folder.write("parts.avi", "ffconcat version 1.0\nfile silent.avi\n");
    testDesktop().files().copy(Clips + "silent.avi", folder.inside("silent.avi"));
    mkfifo(folder.native("pipe.avi").c_str(), 0600);
    for (const auto& [name, told] : {std::pair{"list.avi", "Invalid picture"}, {"parts.avi", "Invalid picture"},
             {"pipe.avi", "File not found"}, {"absent.avi", "File not found"}}) {
        const auto graph = testDesktop().media().newFilgraphManager();
        EXPECT_EQ(told, failureOf([&] { graph->RenderFile(folder.inside(name)); })) << name;
        EXPECT_EQ("Invalid procedure call or argument", failureOf([&] { graph->Run(); })) << name;
    }
    EXPECT_EQ("Device unavailable", failureOf([] { MpvLibrary("libabsent.so"); }));
}

} // namespace trovarium
