#include "check/FileDateTime.h"

#include "platform/files/FileService.h"
#include "runtime/Dates.h"
#include "runtime/Failure.h"

#include <optional>

namespace trovarium {

bool SetFileDateTime(FileService& files, std::string_view FilePath, std::string_view DateText)
{
    const std::optional<Instant> instant = dateFromText(DateText);
    if (!instant || !files.exists(FilePath))
        return false;
    return !attempt([&] { files.setModified(FilePath, *instant); });
}

} // namespace trovarium
