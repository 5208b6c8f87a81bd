// SPDX-License-Identifier: GPL-3.0-or-later

// How long it takes from the call until a clip sounds, in milliseconds, with the device open.
//
//   bench_sound CLIP TAP   the clip sounds from its first sample on; all that sounds is written into TAP

#include "platform/files/FileService.h"
#include "platform/media/SoundPlayer.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>

namespace trovarium {

namespace {

// Reads on in the tap until sound, or silence, is at its end.
double until(bool sounds, std::ifstream& tap)
{
    const auto start = std::chrono::steady_clock::now();
    for (std::string news;; std::this_thread::sleep_for(std::chrono::microseconds(200))) {
        tap.clear();
        news.assign(std::istreambuf_iterator<char>(tap), {});
        if (!news.empty() && sounds == std::ranges::any_of(news, [](char byte) { return byte != 0; }))
            break;
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

} // namespace trovarium

int main(int argc, char** argv)
{
    using namespace trovarium;

    if (argc != 3) {
        std::cerr << "usage: bench_sound CLIP TAP\n";
        return 2;
    }
    setenv("SDL_AUDIODRIVER", "disk", 1); // which keeps a device's pace
    setenv("SDL_DISKAUDIOFILE", argv[2], 1);
    std::ofstream(argv[2]).close();
    std::ifstream tap(argv[2], std::ios::binary);
    const std::string clip = fromNativePath(argv[1]);
    const FileService files;
    SoundPlayer player(files);
    player.sndPlaySound(clip);
    until(true, tap);
    player.sndPlaySound("0");
    until(false, tap);
    player.sndPlaySound(clip);
    std::cout << until(true, tap) << '\n';
    return 0;
}
