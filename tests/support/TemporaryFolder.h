// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/FileService.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <string_view>

namespace trovarium {

// A new folder of its own for a test, removed with all that is in it.
class TemporaryFolder {
public:
    // Or that of another process, for one that doesn't live to remove it.
    explicit TemporaryFolder(const char* others = nullptr)
        : m_path(others ? others : std::filesystem::temp_directory_path() / "trovarium-test-XXXXXX")
    {
        if (others == nullptr && mkdtemp(m_path.data()) == nullptr)
            throw std::runtime_error("no temporary folder: " + m_path);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& path() const { return m_path; }            // "/tmp/x"
    std::string inside() const { return fromNativePath(m_path); } // "/tmp\x"
    std::string native(std::string_view name) const { return m_path + "/" + std::string(name); }
    std::string inside(std::string_view name) const { return inside() + "\\" + std::string(name); }

    // Behind the back of the program: the bytes as they are on the disk. `name` is native.
    void write(std::string_view name, std::string_view bytes) const
    {
        std::ofstream file(native(name), std::ios::binary);
        file << bytes;
        if (!file.flush())
            throw std::runtime_error("can't write " + native(name));
    }
    std::string read(std::string_view name) const
    {
        std::ifstream file(native(name), std::ios::binary);
        if (!file)
            throw std::runtime_error("can't read " + native(name));
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

private:
    std::string m_path;
};

} // namespace trovarium
