// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace trovarium {

// Capitals for ASCII and the letters of Windows-1252, one character to one; all else unchanged. No byte
// position changes.
std::string upper(std::string_view text);

// Equality of the texts in capitals.
bool equalInCapitals(std::string_view left, std::string_view right);

// The order of sorted lists: by `upper`, then by bytes; blanks come first.
bool listedBefore(std::string_view left, std::string_view right);

// 0-based byte position of `part` in `text` without regard to case from `from` on, or npos.
std::size_t findNoCase(std::string_view text, std::string_view part, std::size_t from = 0);

std::string_view trimmed(std::string_view text);                  // blanks at both ends
std::string_view right(std::string_view text, std::size_t bytes); // at most `bytes`

// `text` without its last `bytes` bytes; a shorter text is an "Invalid procedure call or argument".
std::string_view withoutLast(std::string_view text, std::size_t bytes);

std::size_t characterCount(std::string_view utf8);
std::string firstCharacters(std::string_view utf8, std::size_t count);

bool isAscii(std::string_view text);
bool isUtf8(std::string_view bytes);
// Valid UTF-8 unchanged; all other bytes are read as Windows-1252.
std::string fromWindows1252(std::string_view bytes);

// One line of a library file as it is stored: Windows-1252, or UTF-8 if Windows-1252 lacks a character or its bytes
// would be valid UTF-8. `fromWindows1252` reads both.
std::string encodeLine(std::string_view utf8);

} // namespace trovarium
