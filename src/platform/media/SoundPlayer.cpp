// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/SoundPlayer.h"

#include "platform/files/FileService.h"
#include "platform/media/SoundDevice.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <new>
#include <optional>
#include <system_error>
#include <thread>
#include <variant>

namespace trovarium {

namespace {

// How long the end of the program waits for the thread. Closing a device takes 30 ms, but a sound server that doesn't
// answer holds up its opening for half a minute, and a disk that stalls a read for as long as it likes. A thread that
// is stuck there touches nothing but its orders and files that it has open, and dies with the program.
constexpr auto LongestEnd = std::chrono::milliseconds(80);

struct ClipOrder {
    std::string path;    // native; if empty, the current clip is only stopped
    unsigned number = 0; // set by `hand`
};

using Order = std::variant<ClipOrder, MusicCommand>;

bool couldSound(const Order& order)
{
    if (const auto* clip = std::get_if<ClipOrder>(&order))
        return !clip->path.empty();
    return std::get<MusicCommand>(order).act == MusicCommand::Act::Open;
}

using Pause = std::optional<std::chrono::milliseconds>;

// Reads the current clip further between two orders. None: nothing to do until the next order.
Pause readOn(std::optional<SoundDevice>& device)
try {
    return device ? device->readOn() : std::nullopt;
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

void carryOut(const Order& order, std::optional<SoundDevice>& device, const std::atomic<unsigned>& latestClip)
try {
    if (!device && couldSound(order))
        device.emplace(latestClip);
    if (!device)
        return;
    if (const auto* clip = std::get_if<ClipOrder>(&order))
        device->playClip(clip->path, clip->number);
    else
        device->carryOut(std::get<MusicCommand>(order));
} catch (const Failure&) { // there is no device
} catch (const std::bad_alloc&) {
}

} // namespace

// Shared with the thread, which may outlive the player.
struct SoundPlayer::Orders {
    // Drops the order of a clip that has not been started when the next one comes.
    void hand(Order order)
    {
        const std::lock_guard lock(access);
        if (auto* clip = std::get_if<ClipOrder>(&order)) {
            clip->number = ++latestClip;
            std::erase_if(waiting, [](const Order& old) { return std::holds_alternative<ClipOrder>(old); });
        }
        waiting.push_back(std::move(order));
        changed.notify_all();
    }

    // No order if the pause was over first. False at the end of the program.
    bool take(std::optional<Order>& order, const Pause& pause)
    {
        std::unique_lock lock(access);
        const auto isDue = [this] { return ending || !waiting.empty(); };
        if (pause)
            changed.wait_for(lock, *pause, isDue);
        else
            changed.wait(lock, isDue);
        order.reset();
        if (!ending && !waiting.empty()) {
            order = std::move(waiting.front());
            waiting.pop_front();
        }
        return !ending;
    }

    void carryOutAll()
    {
        std::optional<SoundDevice> device;
        for (std::optional<Order> order; take(order, readOn(device));) {
            if (order)
                carryOut(*order, device, latestClip);
        }
        device.reset();
        const std::lock_guard lock(access);
        ended = true;
        changed.notify_all();
    }

    // Whether the thread ended in time.
    bool end()
    {
        std::unique_lock lock(access);
        ending = true;
        changed.notify_all();
        return changed.wait_for(lock, LongestEnd, [this] { return ended; });
    }

    std::mutex access;
    std::condition_variable changed;
    std::deque<Order> waiting;
    std::atomic<unsigned> latestClip = 0; // its number
    bool ending = false;
    bool ended = false;
};

SoundPlayer::SoundPlayer(const FileService& files)
    : m_files(files)
{
}

SoundPlayer::~SoundPlayer()
{
    if (!m_orders)
        return;
    if (m_orders->end())
        m_thread.join();
    else
        m_thread.detach(); // see LongestEnd
}

void SoundPlayer::sndPlaySound(std::string_view name)
{
    std::string path = readable(name);
    if (m_orders || (!path.empty() && start()))
        m_orders->hand(ClipOrder{std::move(path)});
}

void SoundPlayer::mciSendString(std::string_view command)
{
    std::optional<MusicCommand> order = parseMusicCommand(command);
    if (!order)
        return;
    const bool opens = order->act == MusicCommand::Act::Open;
    if (opens)
        order->path = readable(order->path);
    if (m_orders || (opens && !order->path.empty() && start()))
        m_orders->hand(std::move(*order));
}

// Called before the order is handed over: only the caller's thread may use the file service.
std::string SoundPlayer::readable(std::string_view path) const
{
    std::string native;
    attempt([&] { native = m_files.nativeForReading(path); });
    return native;
}

bool SoundPlayer::start()
try {
    m_orders = std::make_shared<Orders>();
    m_thread = std::thread([orders = m_orders] { orders->carryOutAll(); });
    return true;
} catch (const std::system_error&) {
    m_orders.reset();
    return false;
}

} // namespace trovarium
