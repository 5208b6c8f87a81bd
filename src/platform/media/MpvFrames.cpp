// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvFrames.h"

#include "runtime/Failure.h"

#include <QTransform>

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>
#include <utility>

namespace trovarium {

namespace {

constexpr std::chrono::seconds RedrawDeadline{1};

// Larger films are scaled down to this: no screen shows more pixels.
constexpr int LongestSide = 4096; // pixels
// The library renders faster when the buffer and its rows are aligned to this.
constexpr std::size_t Alignment = 64; // bytes
constexpr std::size_t AlignedPixels = Alignment / sizeof(std::uint32_t);

} // namespace

MpvFrames::MpvFrames(const MpvLibrary& library, mpv_handle* core)
    : m_library(library)
    , m_context(nullptr, library.renderContextFree)
{
    std::array<mpv_render_param, 2> params{{
        {MPV_RENDER_PARAM_API_TYPE, const_cast<char*>(MPV_RENDER_API_TYPE_SW)},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    }};
    mpv_render_context* context = nullptr;
    if (m_library.renderContextCreate(&context, core, params.data()) < 0)
        throw Failure(FailureKind::DeviceUnavailable);
    m_context.reset(context);
    m_thread = std::thread([this] { run(); });
    const auto notifyThread = [](void* frames) {
        auto& self = *static_cast<MpvFrames*>(frames);
        const std::lock_guard lock(self.m_mutex);
        self.m_mayHaveFrame = true;
        self.m_changed.notify_all();
    };
    m_library.renderContextSetUpdateCallback(context, notifyThread, this);
}

MpvFrames::~MpvFrames()
{
    setOwner(nullptr);
    m_library.renderContextSetUpdateCallback(m_context.get(), nullptr, nullptr);
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
        m_changed.notify_all();
    }
    m_thread.join();
}

void MpvFrames::setNaturalSize(int width, int height, int quarterTurns)
{
    if (const int longer = std::max(width, height); longer > LongestSide) {
        width = std::max(1, static_cast<int>(std::int64_t{width} * LongestSide / longer));
        height = std::max(1, static_cast<int>(std::int64_t{height} * LongestSide / longer));
    }
    const std::lock_guard lock(m_mutex);
    m_size = {width, height, quarterTurns};
    m_redraw = m_redraw || std::exchange(m_missed, false);
    m_changed.notify_all();
}

bool MpvFrames::hasSize() const
{
    const std::lock_guard lock(m_mutex);
    return m_size.width > 0;
}

void MpvFrames::setOwner(std::shared_ptr<FilmSurface> owner)
{
    std::unique_lock lock(m_mutex);
    if (owner == m_owner)
        return;
    if (m_owner)
        m_owner->shut();
    m_owner = std::move(owner);
    if (!m_owner)
        return;
    m_owner->shut();
    m_owner->open();
    m_owner->moveTo(m_place);
    if (m_count == 0)
        return;
    m_redraw = true;
    m_changed.notify_all();
    m_changed.wait_for(lock, RedrawDeadline, [&, before = m_count] { return m_count > before; });
}

void MpvFrames::setPlace(const FilmPlace& place)
{
    m_place = place;
    const std::lock_guard lock(m_mutex);
    if (m_owner)
        m_owner->moveTo(place);
}

long MpvFrames::count() const
{
    const std::lock_guard lock(m_mutex);
    return m_count;
}

bool MpvFrames::waitForMoreThan(long count, Clock::time_point end) const
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_until(lock, end, [&] { return m_count > count; });
}

// Playback waits until a frame is rendered. So a frame is taken even before the film's size is known, and rendered
// again once it is.
void MpvFrames::run()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_ending || m_mayHaveFrame || (m_redraw && m_size.width > 0); });
        if (m_ending)
            return;
        const bool mayHaveFrame = std::exchange(m_mayHaveFrame, false);
        const bool redraw = std::exchange(m_redraw, false);
        const Size size = m_size;
        lock.unlock();
        const bool due =
            mayHaveFrame && (m_library.renderContextUpdate(m_context.get()) & MPV_RENDER_UPDATE_FRAME) != 0;
        QImage frame = due || redraw ? render(size) : QImage();
        lock.lock();
        if (due && size.width == 0) {
            m_redraw = m_size.width > 0;
            m_missed = !m_redraw;
        }
        if (!frame.isNull()) {
            if (m_owner)
                m_owner->put(std::move(frame));
            ++m_count;
        }
        m_changed.notify_all();
    }
}

// Null if the size isn't known yet, or if there is no memory for the frame.
QImage MpvFrames::render(const Size& size)
try {
    const std::size_t row = (size.width + AlignedPixels - 1) / AlignedPixels * AlignedPixels;
    m_canvas.resize(row * size.height + AlignedPixels);
    void* start = m_canvas.data();
    std::size_t space = m_canvas.size() * sizeof(std::uint32_t);
    std::align(Alignment, 1, start, space);

    std::array<int, 2> extent{size.width, size.height};
    std::size_t stride = row * sizeof(std::uint32_t);
    int wait = 0;
    int skip = size.width == 0 ? 1 : 0;
    std::array<mpv_render_param, 7> params{{
        {MPV_RENDER_PARAM_SW_SIZE, extent.data()},
        {MPV_RENDER_PARAM_SW_FORMAT, const_cast<char*>("bgr0")},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},
        {MPV_RENDER_PARAM_SW_POINTER, start},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
        {MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    }};
    if (m_library.renderContextRender(m_context.get(), params.data()) < 0 || skip != 0)
        return {};

    const QImage stored(static_cast<const uchar*>(start), size.width, size.height, static_cast<qsizetype>(stride),
        QImage::Format_RGB32);
    QImage frame = stored.convertToFormat(QImage::Format_ARGB32); // sets the fourth bytes, which may be anything
    frame.reinterpretAsFormat(QImage::Format_RGB32);
    return frame.transformed(QTransform().rotate(90 * size.quarterTurns));
} catch (const std::bad_alloc&) {
    return {};
}

} // namespace trovarium
