#include "platform/media/MciCommand.h"
#include "platform/sdl/SoundPlayer.h"
#include "support/Robot.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <numbers>
#include <random>
#include <sys/stat.h>

namespace trovarium {

namespace {

constexpr int Rate = 44100;

// As the mixer gives it to the device: 16 bits, the lowest byte first.
void append(std::string& bytes, int value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i);
}

// A tone of that many hertz and seconds, mono.
std::string wave(int frequency, int seconds)
{
    std::string samples;
    for (int i = 0; i < Rate * seconds; ++i)
        append(samples, static_cast<int>(8000 * std::sin(2 * std::numbers::pi * frequency * i / Rate)), 2);
    std::string bytes = "RIFF";
    append(bytes, static_cast<int>(samples.size()) + 36, 4);
    bytes += "WAVEfmt ";
    for (const auto& [value, size] : {std::pair(16, 4), {1, 2}, {1, 2}, {Rate, 4}, {2 * Rate, 4}, {2, 2}, {16, 2}})
        append(bytes, value, size);
    bytes += "data";
    append(bytes, static_cast<int>(samples.size()), 4);
    return bytes + samples;
}

// One long note on an organ, of 440 hertz.
std::string song()
{
    using namespace std::string_literals;
    return "MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\0\x10\0\xC0\x13\0\x90\x45\x7F\x8F\0\x80\x45\0\0\xFF\x2F\0"s;
}

// A player whose sound goes into a file.
class SoundTest : public testing::Test {
protected:
    SoundTest()
    {
        for (const int frequency : {500, 1250})
            folder.write(std::to_string(frequency) + ".wav", wave(frequency, 60));
        folder.write("song.mid", song());
    }

    // How strongly the frequency sounds in the last 50 ms: about 1 for a tone of the tests (Goertzel).
    double level(int frequency)
    {
        const std::string all = folder.read("tap");
        constexpr std::size_t Frames = Rate / 20;
        if (all.size() < 4 * Frames)
            return 0;
        const double step = 2 * std::cos(2 * std::numbers::pi * frequency / Rate);
        double last = 0, before = 0;
        for (std::size_t i = all.size() / 4 - Frames; i < all.size() / 4; ++i) {
            const auto sample = static_cast<std::int16_t>(
                static_cast<unsigned char>(all[4 * i]) | static_cast<unsigned char>(all[4 * i + 1]) << 8);
            const double next = sample + step * last - before;
            before = std::exchange(last, next);
        }
        return std::sqrt(last * last + before * before - step * last * before) / (4000.0 * Frames);
    }
    bool sounds(int frequency) { return level(frequency) > 0.2; }
    bool waitFor(const std::function<bool()>& condition)
    {
        return robot.until([&] { return std::filesystem::exists(folder.native("tap")) && condition(); });
    }

    TemporaryFolder folder;
    VariableForNow driver{"SDL_AUDIODRIVER", "disk"};
    VariableForNow tap{"SDL_DISKAUDIOFILE", folder.native("tap")};
    Robot robot{testDesktop()};
    std::unique_ptr<SoundPlayer> player = std::make_unique<SoundPlayer>();
};

} // namespace

TEST_F(SoundTest, AClipCutsOffTheOneBeforeAndMusicSoundsBesides)
{
    player->sndPlaySound("0");
    player->mciSendString("close ");
    EXPECT_FALSE(std::filesystem::exists(folder.native("tap"))) << "nothing is to be heard yet";
    player->sndPlaySound(folder.inside("500.WAV"));
    ASSERT_TRUE(waitFor([&] { return sounds(500); }));
    player->sndPlaySound(folder.inside("1250.wav"));
    ASSERT_TRUE(waitFor([&] { return sounds(1250) && !sounds(500); }));
    player->mciSendString("open \"" + folder.inside("song.mid") + "\" type sequencer alias 1Midi");
    player->mciSendString("play 1Midi");
    ASSERT_TRUE(waitFor([&] { return level(440) > 0.02 && sounds(1250); }));
    player->sndPlaySound("0");
    ASSERT_TRUE(waitFor([&] { return !sounds(1250) && level(440) > 0.02; }));
    player->mciSendString("close 1Midi");
    player->mciSendString("close 1Midi");
    ASSERT_TRUE(waitFor([&] { return level(440) == 0; }));
}

TEST_F(SoundTest, DamagedFilesAreSilent)
{
    const char* wanted = std::getenv("TROVARIUM_DAMAGED");
    const int count = wanted != nullptr ? std::atoi(wanted) : 30;
    std::mt19937 random(1);
    const std::string clip = wave(500, 1), piece = song();
    ASSERT_EQ(mkfifo(folder.native("pipe.wav").c_str(), 0600), 0);
    player->sndPlaySound(folder.inside("pipe.wav"));
    for (int i = 0; i < count; ++i) {
        for (const std::string& whole : {clip, piece}) {
            std::string bytes = whole.substr(0, random() % 4 == 0 ? random() % whole.size() : whole.size());
            for (int byte = 0; byte < 4 && !bytes.empty(); ++byte)
                bytes[random() % std::min<std::size_t>(bytes.size(), 60)] = static_cast<char>(random());
            folder.write("damaged" + std::to_string(i) + (whole == clip ? ".wav" : ".mid"), bytes);
        }
        const std::string name = folder.inside("damaged" + std::to_string(i));
        player->sndPlaySound(name + ".wav");
        player->mciSendString("open \"" + name + ".mid\" type sequencer alias it");
        player->mciSendString("play it");
        player->mciSendString("close it");
    }
    player->sndPlaySound(folder.inside("1250.wav"));
    EXPECT_TRUE(waitFor([&] { return sounds(1250); }));
}

TEST(MciCommand, IsReadWithAnyPath)
{
    const auto read = [](std::string_view text) {
        const MciCommand command = readMciCommand(text);
        return std::to_string(static_cast<int>(command.verb)) + command.path + ":" + command.alias;
    };
    const std::pair<std::string, std::string> cases[] = {
        {"open \"/a b\\c.mid\" type sequencer alias 120000Midi", "1/a b\\c.mid:120000Midi"},
        {"open \"/\" type sequencer alias x\" type sequencer alias y", "1/\" type sequencer alias x:y"},
        {"play x", "2:x"}, {"close x", "3:x"}, {"close ", "0:"}, {"open \"/a", "0:"}, {"stop x", "0:"}, {"", "0:"}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(read(text), expected) << text;
}

} // namespace trovarium
