#include "runtime/Failure.h"

namespace trovarium {

std::string_view describe(FailureKind kind)
{
    switch (kind) {
    case FailureKind::FileNotFound:
        return "File not found";
    case FailureKind::PathNotFound:
        return "Path not found";
    case FailureKind::PathFileAccess:
        return "Path/File access error";
    case FailureKind::PermissionDenied:
        return "Permission denied";
    case FailureKind::FileAlreadyExists:
        return "File already exists";
    case FailureKind::FileAlreadyOpen:
        return "File already open";
    case FailureKind::BadFileNameOrNumber:
        return "Bad file name or number";
    case FailureKind::InputPastEndOfFile:
        return "Input past end of file";
    case FailureKind::DiskFull:
        return "Disk full";
    case FailureKind::DeviceIo:
        return "Device I/O error";
    case FailureKind::DeviceUnavailable:
        return "Device unavailable";
    case FailureKind::TooManyFiles:
        return "Too many files";
    case FailureKind::Overflow:
        return "Overflow";
    case FailureKind::DivisionByZero:
        return "Division by zero";
    case FailureKind::TypeMismatch:
        return "Type mismatch";
    case FailureKind::SubscriptOutOfRange:
        return "Subscript out of range";
    case FailureKind::InvalidProcedureCall:
        return "Invalid procedure call or argument";
    case FailureKind::OutOfMemory:
        return "Out of memory";
    case FailureKind::InvalidPicture:
        return "Invalid picture";
    case FailureKind::ObjectNotSet:
        return "Object not set";
    case FailureKind::NoControlArrayElement:
        return "Control array element does not exist";
    case FailureKind::InvalidPropertyValue:
        return "Invalid property value";
    case FailureKind::InvalidPropertyArrayIndex:
        return "Invalid property array index";
    }
    return {};
}

} // namespace trovarium
