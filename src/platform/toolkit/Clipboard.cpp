// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Clipboard.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/MimeFiles.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace trovarium {

OfferedFiles filesOnClipboard()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr ? filesIn(*data) : OfferedFiles{};
}

std::size_t copyToClipboard(const FileService& files, const std::vector<std::string>& paths, const Picture& picture)
{
    std::vector<std::string> native;
    for (const std::string& path : paths)
        attempt([&] { native.push_back(files.nativeForReading(path)); });
    if (!native.empty())
        QGuiApplication::clipboard()->setMimeData(mimeOf(native, picture).release());
    return native.size();
}

} // namespace trovarium
