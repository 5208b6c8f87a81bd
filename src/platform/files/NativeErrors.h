// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/Failure.h"

namespace trovarium {

// A missing right has two names: "Path/File access error" when a file is opened, read or dated or a folder is made,
// "Permission denied" when a file is copied, deleted or renamed.
enum class Attempted { Access, Change };

// The kind of failure that an errno value stands for.
FailureKind failureKind(int error, Attempted attempted);

// Throws the failure of errno.
[[noreturn]] void failNow(Attempted attempted);

// Whether the error means that nothing has this name, so that another spelling may be tried.
bool isAbsent(int error);
// Of the result of stat or lstat; any other error than an absent file throws.
bool isThere(int result);

} // namespace trovarium
