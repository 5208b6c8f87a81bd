// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace trovarium {

// In the order of the texts in `describe`.
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
    // The file or a folder of its path is absent, while after other failures it may be there.
    bool isAbsence() const { return m_kind == FailureKind::FileNotFound || m_kind == FailureKind::PathNotFound; }

private:
    FailureKind m_kind;
};

// Runs a statement and returns its failure, if any, so that the caller can go on past it.
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
