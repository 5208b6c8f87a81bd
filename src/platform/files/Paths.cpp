// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/Paths.h"

#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <algorithm>
#include <climits>

namespace trovarium {

std::string joinNative(std::string_view folder, std::string_view leaf)
{
    std::string whole;
    whole.reserve(folder.size() + 1 + leaf.size());
    whole += folder;
    if (whole.empty() || whole.back() != '/')
        whole += '/';
    whole += leaf;
    return whole;
}

std::string NativePath::whole() const
{
    return joinNative(folder, leaf);
}

std::string nativeAsWritten(std::string_view path)
{
    if (path.empty() || path.front() != '/' || path.size() >= PATH_MAX || path.find('\0') != std::string_view::npos)
        throw Failure(FailureKind::PathNotFound);
    std::string native = toNativePath(path);
    if (native.find("//") != std::string::npos) {
        const auto isDouble = [](char one, char next) { return one == '/' && next == '/'; };
        native.erase(std::unique(native.begin(), native.end(), isDouble), native.end());
    }
    return native;
}

NativePath splitNative(std::string_view native)
{
    const std::size_t slash = native.rfind('/');
    const std::string_view folder = withoutEndSlashes(native.substr(0, slash));
    return {folder.empty() ? "/" : std::string(folder), std::string(native.substr(slash + 1))};
}

std::string_view withoutEndSlashes(std::string_view native)
{
    return native.substr(0, native.find_last_not_of('/') + 1);
}

std::string nameInside(std::string_view nativeName)
{
    return fromWindows1252(nativeName);
}

bool canBeNamed(std::string_view nativeName)
{
    return std::none_of(nativeName.begin(), nativeName.end(),
        [](char character) { return character == '\\' || character == '\r' || character == '\n'; });
}

std::string fromNativePath(std::string_view native)
{
    std::string path;
    path.reserve(native.size());
    for (std::size_t start = 0; start < native.size();) {
        const std::size_t slash = std::min(native.find('/', start), native.size());
        path += nameInside(native.substr(start, slash - start));
        if (slash < native.size())
            path += slash == 0 ? '/' : '\\';
        start = slash + 1;
    }
    return path;
}

std::string toNativePath(std::string_view path)
{
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::string readablePath(std::string_view text)
{
    if (text.starts_with("/\\")) // in the root
        text.remove_prefix(1);
    else if (!text.starts_with('/'))
        return std::string(text);
    return toNativePath(text);
}

} // namespace trovarium
