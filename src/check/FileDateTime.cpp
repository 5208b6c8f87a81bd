#include "check/FileDateTime.h"

#include "platform/files/FileService.h"
#include "runtime/Dates.h"
#include "runtime/Failure.h"

#include <optional>

namespace trovarium {

bool SetFileDateTime(FileService& files, std::string_view FilePath, std::string_view DateText)
{
    const std::optional<Instant> instant = dateFromText(DateText);
    bool done = false;
    attempt([&] {
        if (instant && files.exists(FilePath)) {
            files.setModified(FilePath, *instant);
            done = true;
        }
    });
    return done;
}

} // namespace trovarium
