#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace trovarium {

enum class FailureKind {
    FileNotFound,
    PathNotFound,
    PathFileAccess,
    PermissionDenied,
    FileAlreadyExists,
    FileAlreadyOpen,
    BadFileNameOrNumber,
    InputPastEndOfFile,
    DiskFull,
    DeviceIo,
    DeviceUnavailable,
    TooManyFiles,
    Overflow,
    DivisionByZero,
    TypeMismatch,
    SubscriptOutOfRange,
    InvalidProcedureCall,
    OutOfMemory,
    InvalidPicture,
    ObjectNotSet,
    NoControlArrayElement,
    InvalidPropertyValue,
    InvalidPropertyArrayIndex,
};

// The English text of a kind, as it stands in the log.
std::string_view describe(FailureKind kind);

// A run-time failure: the only exception that the program's own code throws and catches.
class Failure {
public:
    explicit Failure(FailureKind kind)
        : m_kind(kind)
    {
    }

    FailureKind kind() const { return m_kind; }
    std::string_view description() const { return describe(m_kind); }

private:
    FailureKind m_kind;
};

// Runs one statement of a procedure that goes on past failures; gives the failure that it
// stepped over, if any.
template <class Statement>
std::optional<Failure> attempt(Statement&& statement)
{
    try {
        std::forward<Statement>(statement)();
        return std::nullopt;
    } catch (const Failure& failure) {
        return failure;
    }
}

} // namespace trovarium
