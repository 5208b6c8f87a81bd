#include "platform/sdl/SoundDevice.h"
#include "platform/sdl/SoundPlayer.h"
#include "platform/toolkit/Desktop.h"
#include "support/Robot.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <complex>
#include <random>
#include <sys/stat.h>

namespace trovarium {

namespace {

using namespace std::string_literals;

constexpr double Bass = 110; // hertz; of an organ, for 20 seconds
const std::string Piece =
    "MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\0\x10\0\xC0\x10\0\x90\x2D\x64\x9E\0\x80\x2D\0\0\xFF\x2F\0"s;

std::string clip(double hertz)
{
    std::string wave = "RIFF\x80\x38\1\0WAVEfmt \x10\0\0\0\1\0\1\0\x11\x2B\0\0\x11\x2B\0\0\1\0\x08\0data\x80\x38\1\0"s;
    for (int i = 0; i < 80'000; ++i) // 7 seconds at 11,025 a second
        wave += static_cast<char>(128 + 60 * std::sin(2 * M_PI * hertz * i / 11025));
    return wave;
}

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
    VariableForNow driver{"SDL_AUDIODRIVER", "disk"};
    VariableForNow tap{"SDL_DISKAUDIOFILE", (folder.write("tap", {}), folder.native("tap"))};
};

} // namespace

TEST_F(Sound, MixesOneClipWithOnePiece)
{
    folder.write("high.wav", clip(3000));
    folder.write("low.wav", clip(1000));
    folder.write("a\" b.mid", Piece);
    ASSERT_EQ(mkfifo(folder.native("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(parseMusicCommand(R"(open " type sequencer alias x)"));
    EXPECT_FALSE(parseMusicCommand("close "));
    const FileService files;
    SoundPlayer player(files);
    player.sndPlaySound("0");
    player.mciSendString("close x");
    player.mciSendString("open \"" + folder.inside("A\" b.mid") + "\" type sequencer alias x");
    using Tones = std::vector<double>; // that then sound, and that don't
    const std::tuple<std::string, Tones, Tones> rows[] = {
        {folder.inside("low.wav"), {1000}, {3000, Bass}},
        {"play x", {1000, Bass}, {}},
        {folder.inside("high.wav"), {3000, Bass}, {1000}},
        {folder.inside("pipe"), {Bass}, {3000}},
        {folder.inside("high.wav"), {3000, Bass}, {}},
        {"close x", {3000}, {Bass}},
        {"close x", {3000}, {}},
        {"0", {}, {3000}},
    };
    for (const auto& [order, on, off] : rows) {
        order.ends_with(" x") ? player.mciSendString(order) : player.sndPlaySound(order);
        const auto loud = [this](double hertz) { return isLoud(hertz); };
        const auto holds = [&] { return std::ranges::all_of(on, loud) && std::ranges::none_of(off, loud); };
        EXPECT_TRUE(testDesktop().waitUntil(holds, 5000)) << order;
    }
}

TEST_F(Sound, GoesOnBehindDamagedFiles)
{
    const VariableForNow pace("SDL_DISKAUDIODELAY", "1"); // milliseconds for 12 of sound
    std::minstd_rand random;
    SoundDevice device;
    const auto mixed = [&] { return std::filesystem::file_size(folder.native("tap")); };
    for (int round = 20; round > 0; --round) {
        std::string bytes = round % 2 == 0 ? clip(1000) : Piece;
        for (int change = 0; change < 4; ++change)
            bytes[random() % std::min<std::size_t>(bytes.size(), 64)] = static_cast<char>(random());
        folder.write("damaged", bytes.substr(0, random() % (2 * bytes.size()))); // half of them are cut off
        device.playClip(folder.native("damaged"));
        device.carryOut({MusicCommand::Act::Open, "x", folder.native("damaged")});
        device.carryOut({MusicCommand::Act::Play, "x", {}});
        ASSERT_TRUE(testDesktop().waitUntil([&, start = mixed()] { return mixed() > start + 16'384; }, 5000)) << round;
        device.carryOut({MusicCommand::Act::Close, "x", {}});
    }
}

} // namespace trovarium
