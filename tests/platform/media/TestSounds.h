// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <string>

namespace trovarium {

using namespace std::string_literals;

// A low note of an organ.
inline const std::string Piece =
    "MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\0\x10\0\xC0\x10\0\x90\x2D\x64\x9E\0\x80\x2D\0\0\xFF\x2F\0"s;

// A wave of this pitch.
inline std::string clip(double hertz)
{
    std::string wave = "RIFF\x80\x38\1\0WAVEfmt \x10\0\0\0\1\0\1\0\x11\x2B\0\0\x11\x2B\0\0\1\0\x08\0data\x80\x38\1\0"s;
    for (int i = 0; i < 80'000; ++i) // 7 seconds at 11,025 a second
        wave += static_cast<char>(128 + 60 * std::sin(2 * M_PI * hertz * i / 11025));
    return wave;
}

} // namespace trovarium
