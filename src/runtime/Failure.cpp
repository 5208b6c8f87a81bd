// SPDX-License-Identifier: GPL-3.0-or-later

#include "runtime/Failure.h"

#include <cstddef>
#include <iterator>

namespace trovarium {

std::string_view describe(FailureKind kind)
{
    static constexpr std::string_view Descriptions[] = {
        "File not found",
        "Path not found",
        "Path/File access error",
        "Permission denied",
        "File already exists",
        "File already open",
        "Bad file name or number",
        "Input past end of file",
        "Disk full",
        "Device I/O error",
        "Device unavailable",
        "Too many files",
        "Overflow",
        "Division by zero",
        "Type mismatch",
        "Subscript out of range",
        "Invalid procedure call or argument",
        "Out of memory",
        "Invalid picture",
        "Object not set",
        "Control array element does not exist",
        "Invalid property value",
        "Invalid property array index",
    };
    static_assert(std::size(Descriptions) == static_cast<std::size_t>(FailureKind::InvalidPropertyArrayIndex) + 1);
    return Descriptions[static_cast<std::size_t>(kind)];
}

} // namespace trovarium
