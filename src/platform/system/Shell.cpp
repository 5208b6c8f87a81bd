// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/Shell.h"

#include "platform/files/PathResolver.h"
#include "platform/files/Paths.h"
#include "platform/system/UserFolders.h"
#include "runtime/Failure.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <filesystem>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace trovarium {

namespace {

constexpr const char* OwnImage = "/proc/self/exe";

// The results of a shell call that the program knows: everything up to 32 is a failure.
constexpr int FileNotFoundResult = 2;
constexpr int NoAssociationResult = 31;
constexpr int OpenedResult = 33;

// Removes "." and "..", but for a ".." behind a symbolic link: that means the folder above the link's target.
std::string tidied(std::string_view path)
{
    std::vector<std::string> prefixes{""};
    std::error_code none;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(end);
        if (part.empty() || part == ".")
            continue;
        if (part == ".." && !std::filesystem::is_symlink(prefixes.back(), none) && !prefixes.back().ends_with("/..")) {
            if (prefixes.size() > 1)
                prefixes.pop_back();
            continue;
        }
        prefixes.push_back(prefixes.back() + "/" + std::string(part));
    }
    return prefixes.back();
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

std::string programPath()
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel gives addresses as numbers
    const auto* startedAs = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
    return programPath(startedAs != nullptr ? startedAs : "");
}

std::string programPath(const std::string& startedAs)
{
    std::error_code none;
    std::filesystem::path program = std::filesystem::absolute(startedAs, none);
    if (!std::filesystem::equivalent(program, OwnImage, none))
        program = std::filesystem::read_symlink(OwnImage, none);
    return fromNativePath(splitNative(tidied(program.native())).folder);
}

void workInRoot()
{
    [[maybe_unused]] const int result = ::chdir("/"); // there is always one
}

std::string defaultInstallationPath()
{
    // Tidied: MakeNestedFolders stops at a doubled separator.
    return fromNativePath(tidied(userFolder("XDG_DATA_HOME", ".local/share") + "/OmbrelaneWorks/Trovarium"));
}

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
    const QFileInfo program(QString::fromStdString(toNativePath(path)));
    if (!program.isAbsolute() || !program.isFile() || !program.isExecutable() || !startApart(program.filePath(), {}))
        throw Failure(FailureKind::FileNotFound);
}

} // namespace trovarium
