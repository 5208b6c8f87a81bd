// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/Shell.h"

#include "platform/files/FileService.h"
#include "platform/files/PathResolver.h"
#include "platform/files/Paths.h"
#include "runtime/Failure.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <sys/stat.h>

namespace trovarium {

namespace {

// The results of a shell call that the program knows: everything up to 32 is a failure.
constexpr int FileNotFoundResult = 2;
constexpr int NoAssociationResult = 31;
constexpr int OpenedResult = 33;

QString nativeName(std::string_view path)
{
    return QString::fromStdString(toNativePath(path));
}

// Apart from us: it outlives the program, and what it says doesn't end up in our own output.
bool startApart(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

} // namespace

// Handed over as an address, which holds names that are no text too.
int ShellOpenDocument(std::string_view Path, int /*ShowCommand*/)
{
    std::string native;
    struct stat status { };
    const auto failure = attempt([&] {
        native = nativeAsWritten(Path);
        if (::stat(native.c_str(), &status) != 0)
            native = PathResolver().readable(native);
    });
    if (failure)
        return FileNotFoundResult;
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    const QByteArray address = "file://" + QByteArray::fromStdString(native).toPercentEncoding("/");
    if (opener.isEmpty() || !startApart(opener, {QString::fromLatin1(address)}))
        return NoAssociationResult;
    return OpenedResult;
}

void startProgram(std::string_view path)
{
    const QFileInfo program(nativeName(path));
    if (!program.isAbsolute() || !program.isFile() || !program.isExecutable() || !startApart(program.filePath(), {}))
        throw Failure(FailureKind::FileNotFound);
}

} // namespace trovarium
