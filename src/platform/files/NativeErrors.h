#pragma once

#include "runtime/Failure.h"

namespace trovarium {

// What was tried decides what a missing right is called: "Path/File access error" when a file is opened,
// read or dated or a folder is made, "Permission denied" when a file is copied, deleted or renamed.
enum class Attempted { Access, Change };

// The kind of failure that an errno value stands for.
FailureKind failureKind(int error, Attempted attempted);

// Throws the failure of errno.
[[noreturn]] void failNow(Attempted attempted);

// The system's answers for which a name may still be found in another spelling.
bool isAbsent(int error);
// What a look came to; one that failed tells nothing of what stands there, and throws.
bool isThere(int result);

} // namespace trovarium
