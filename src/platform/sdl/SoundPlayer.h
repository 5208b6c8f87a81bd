#pragma once

#include "platform/media/MciCommand.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace trovarium {

// Carries out the orders of MediaService on a thread of its own, which owns the sound device: a call hands an order
// over and returns. The thread and the libraries behind it come with the first order that could sound.
class SoundPlayer {
public:
    SoundPlayer() = default;
    ~SoundPlayer(); // what sounds ends
    SoundPlayer(const SoundPlayer&) = delete;
    SoundPlayer& operator=(const SoundPlayer&) = delete;

    void sndPlaySound(std::string_view name);
    void mciSendString(std::string_view command);

private:
    struct Order {
        bool isClip = false;
        std::string clip; // empty: only cut off
        MciCommand music;
    };

    void give(Order order, bool couldSound);
    void work();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Order> m_orders;
    bool m_ends = false;
    std::thread m_thread;
};

} // namespace trovarium
