// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <thread>

namespace trovarium {

class FileService;

// The sound of MediaService. A thread of its own opens the device and files; it starts with the first order that
// could sound. Silence where there is no device or library: each order that could sound looks for it again.
class SoundPlayer {
public:
    explicit SoundPlayer(const FileService& files);
    ~SoundPlayer(); // within 100 ms
    SoundPlayer(const SoundPlayer&) = delete;
    SoundPlayer& operator=(const SoundPlayer&) = delete;

    void sndPlaySound(std::string_view name);
    void mciSendString(std::string_view command);

private:
    struct Orders;

    std::string readable(std::string_view path) const; // native; empty for what isn't there
    bool start();                                      // false where the system has no thread to give

    const FileService& m_files;
    std::shared_ptr<Orders> m_orders; // null until the thread runs
    std::thread m_thread;
};

} // namespace trovarium
