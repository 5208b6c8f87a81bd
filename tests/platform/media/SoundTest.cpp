// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/SoundDevice.h"
#include "platform/media/SoundPlayer.h"
#include "platform/media/TestSounds.h"
#include "platform/toolkit/Desktop.h"
#include "support/Robot.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <complex>
#include <sys/stat.h>

namespace trovarium {

constexpr double Bass = 110; // hertz; of an organ, for 20 seconds

// What is mixed goes into a file.
struct Sound : testing::Test {
    bool isLoud(double hertz) const
    {
        const std::string mixed = std::string(8192, '\0') + folder.read("tap");
        std::complex<double> sum;
        for (std::size_t i = mixed.size() / 4 - 2048; i < mixed.size() / 4; ++i) // the upper byte on the left
            sum += std::polar<double>(static_cast<signed char>(mixed[4 * i + 1]), 2 * M_PI * hertz * double(i) / 44100);
        return std::abs(sum) > 1600;
    }

    TemporaryFolder folder;
    ScopedEnv driver{"SDL_AUDIODRIVER", "disk"};
    ScopedEnv tap{"SDL_DISKAUDIOFILE", (folder.write("tap", {}), folder.native("tap"))};
};

TEST_F(Sound, AClipIsSilentWhileANewerOrderWaits)
{
    std::atomic<unsigned> latest = 1;
    SoundDevice device(latest);
    device.playClip((folder.write("a.wav", clip(1000)), folder.native("a.wav")), 1);
    while (device.readOn() == std::chrono::milliseconds::zero()) { }
    for (const unsigned order : {1U, 2U, 1U}) {
        latest = order;
        EXPECT_TRUE(testDesktop().waitUntil([&] { return isLoud(1000) == (order == 1); }, 5000)) << order;
    }
}

TEST_F(Sound, MixesOneClipWithOnePiece)
{
    folder.write("high.wav", clip(3000));
    folder.write("low.wav", clip(1000));
    // Two seconds of silence come first, and what follows makes it longer than the memory is large.
    std::string wave = clip(2000).insert(44, 22'050, '\x80');
    wave.replace(40, 4, 4, '\xF0');
    folder.write("long.wav", wave);
    std::filesystem::resize_file(folder.native("long.wav"), 4'000'000'000);
    folder.write("a\" b.mid", Piece);
    ASSERT_EQ(mkfifo(folder.native("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(parseMusicCommand(R"(open " type sequencer alias x)"));
    EXPECT_FALSE(parseMusicCommand("close "));
    const FileService files;
    SoundPlayer player(files);
    player.sndPlaySound("0");
    player.mciSendString("close x");
    player.mciSendString("open \"" + folder.inside("A\" b.mid") + "\" type sequencer alias x");
    struct Case {
        std::string order;
        std::vector<double> sounding;
        std::vector<double> silent;
    };
    const Case cases[] = {
        {.order = folder.inside("low.wav"), .sounding = {1000}, .silent = {3000, Bass}},
        {.order = "play x", .sounding = {1000, Bass}, .silent = {}},
        {.order = folder.inside("long.wav"), .sounding = {2000, Bass}, .silent = {1000}},
        {.order = folder.inside("high.wav"), .sounding = {3000, Bass}, .silent = {2000}},
        {.order = folder.inside("pipe"), .sounding = {Bass}, .silent = {3000}},
        {.order = folder.inside("high.wav"), .sounding = {3000, Bass}, .silent = {}},
        {.order = "close x", .sounding = {3000}, .silent = {Bass}},
        {.order = "close x", .sounding = {3000}, .silent = {}},
        {.order = "0", .sounding = {}, .silent = {3000}},
    };
    for (const auto& [order, sounding, silent] : cases) {
        order.ends_with(" x") ? player.mciSendString(order) : player.sndPlaySound(order);
        const auto loud = [this](double hertz) { return isLoud(hertz); };
        const auto holds = [&] { return std::ranges::all_of(sounding, loud) && std::ranges::none_of(silent, loud); };
        EXPECT_TRUE(testDesktop().waitUntil(holds, 5000)) << order;
    }
}

} // namespace trovarium
