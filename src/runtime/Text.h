#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

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
std::string_view left(std::string_view text, std::size_t bytes);  // at most `bytes`
std::string_view right(std::string_view text, std::size_t bytes); // at most `bytes`

// `text` without its last `bytes` bytes; a shorter text is an "Invalid procedure call or argument".
std::string_view withoutLast(std::string_view text, std::size_t bytes);

std::size_t characterCount(std::string_view utf8);
std::string firstCharacters(std::string_view utf8, std::size_t count);

bool isAscii(std::string_view text);
bool isUtf8(std::string_view bytes);
// Valid UTF-8 as it stands, any other text by the Windows-1252 reading of all its bytes.
std::string fromWindows1252(std::string_view bytes);

// One line of a library file as it is kept on disk, and back. A line that Windows-1252 can't hold is
// written as UTF-8, and so is one whose Windows-1252 bytes would read as UTF-8 beyond ASCII.
std::string encodeLine(std::string_view utf8);
std::string decodeLine(std::string_view bytes);

} // namespace trovarium
