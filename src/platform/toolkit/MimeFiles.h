// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/OfferedFiles.h"

#include <memory>
#include <string>
#include <vector>

class QMimeData;

// Files as programs hand them to each other: a list of file: URLs.
namespace trovarium {

OfferedFiles filesIn(const QMimeData& data);

// For the clipboard. The picture, unless it is empty, is encoded when another program asks for it.
std::unique_ptr<QMimeData> mimeOf(const std::vector<std::string>& nativePaths, const Picture& picture);

} // namespace trovarium
