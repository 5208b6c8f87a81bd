// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/NativeErrors.h"

#include <cerrno>

namespace trovarium {

FailureKind failureKind(int error, Attempted attempted)
{
    switch (error) {
    case ENOENT:
    case ELOOP:
        return FailureKind::FileNotFound;
    case ENOTDIR:
        return FailureKind::PathNotFound;
    case EEXIST:
        return attempted == Attempted::Change ? FailureKind::FileAlreadyExists : FailureKind::PathFileAccess;
    case ENAMETOOLONG:
    case EINVAL:
    case EILSEQ:
        return FailureKind::BadFileNameOrNumber;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return FailureKind::DiskFull;
    case EMFILE:
    case ENFILE:
        return FailureKind::TooManyFiles;
    case ENOMEM:
        return FailureKind::OutOfMemory;
    case ENODEV:
    case ENXIO:
    case ENOMEDIUM:
    case ENOTCONN:
    case ESTALE:
        return FailureKind::DeviceUnavailable;
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
    case EISDIR:
        return attempted == Attempted::Change ? FailureKind::PermissionDenied : FailureKind::PathFileAccess;
    default:
        return FailureKind::DeviceIo;
    }
}

void failNow(Attempted attempted)
{
    throw Failure(failureKind(errno, attempted));
}

bool isAbsent(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
}

bool isThere(int result)
{
    if (result != 0 && !isAbsent(errno))
        failNow(Attempted::Access);
    return result == 0;
}

} // namespace trovarium
