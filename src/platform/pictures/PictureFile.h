#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/FileTypes.h"
#include "platform/pictures/PictureBytes.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace trovarium {

// A regular file, open for reading under its native path. "File not found" for anything else; a pipe is
// never waited for. Once `cancelled` is set, which must outlive it, it reads as if it ended here.
class PictureFile : public PictureBytes {
public:
    PictureFile(const std::string& nativePath, const std::atomic<bool>& cancelled);

    int descriptor() const { return m_descriptor.handle(); }
    const FileStamp& stamp() const { return m_stamp; }
    std::int64_t length() const override { return m_stamp.size; }
    const std::atomic<bool>& cancelled() const override { return m_cancelled; }

    std::vector<unsigned char> bytes(std::int64_t offset, std::size_t length) const override;

private:
    Descriptor m_descriptor;
    FileStamp m_stamp;
    const std::atomic<bool>& m_cancelled;
};

} // namespace trovarium
