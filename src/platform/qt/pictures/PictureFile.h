#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/FileStamp.h"
#include "platform/qt/pictures/PictureBytes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace trovarium {

// A regular file, open for reading under its native path. "File not found" for anything else; a pipe is
// never waited for.
class PictureFile : public PictureBytes {
public:
    explicit PictureFile(const std::string& nativePath);

    int descriptor() const { return m_descriptor.handle(); }
    const FileStamp& stamp() const { return m_stamp; }
    std::int64_t length() const override { return m_stamp.size; }

    std::vector<unsigned char> bytes(std::int64_t offset, std::size_t length) const override;

private:
    Descriptor m_descriptor;
    FileStamp m_stamp;
};

} // namespace trovarium
