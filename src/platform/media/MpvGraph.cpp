// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvGraph.h"

#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

using Clock = MpvFrames::Clock;

// A disk may take seconds to spin up. A file that takes longer is taken to be damaged.
constexpr std::chrono::seconds OpenDeadline{8};
constexpr std::chrono::seconds SeekDeadline{2};
// Between the event that ends a seek and its frame.
constexpr std::chrono::milliseconds FrameDeadline{300};
constexpr std::chrono::milliseconds CloseDeadline{300};

constexpr std::pair<const char*, const char*> Options[] = {
    // No settings, scripts or keys but ours.
    {"config", "no"}, {"terminal", "no"}, {"load-scripts", "no"}, {"load-stats-overlay", "no"},
    {"load-osd-console", "no"}, {"load-auto-profiles", "no"}, {"osc", "no"}, {"osd-level", "0"},
    {"input-default-bindings", "no"}, {"input-media-keys", "no"},
    // A clip opens no other file.
    {"ytdl", "no"}, {"access-references", "no"}, {"sub-auto", "no"}, {"sid", "no"}, {"audio-file-auto", "no"},
    {"cover-art-auto", "no"}, {"demuxer", "lavf"},
    {"demuxer-lavf-o", "format_whitelist=[avi,mov,mp4,m4a,3gp,3g2,mj2,mpeg,mpegts,mpegvideo,matroska,webm,asf,flv,dv]"},
    // Frames are handed over when they are due.
    {"vo", "libmpv"}, {"video-timing-offset", "0"}, {"video-rotate", "no"}, // see updateSize
    {"hwdec", "no"}, {"audio-fallback-to-null", "yes"}, {"audio-client-name", "Trovarium"},
    // A film is paused when it opens, and stays open at its end.
    {"pause", "yes"}, {"keep-open", "yes"},
    {"hr-seek-demuxer-offset", "1"}, // MPEG has no index: without this a seek ends too late
};

bool soundServerIsThere()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !qEnvironmentVariableIsEmpty("PULSE_SERVER") || !qEnvironmentVariableIsEmpty("PIPEWIRE_REMOTE")
        || (!folder.isEmpty() && (QFile::exists(folder + "/pulse/native") || QFile::exists(folder + "/pipewire-0")));
}

// A playback device, such as "pcmC0D3p", or one that the user has configured, such as a network speaker.
bool soundDeviceIsThere()
{
    return QFile::exists(QDir::homePath() + "/.asoundrc") || QFile::exists(QStringLiteral("/etc/asound.conf"))
        || !QDir(QStringLiteral("/dev/snd")).entryList({QStringLiteral("pcm*p")}, QDir::System).isEmpty();
}

// Options for the sound of films; none leaves the choice to the library. Without a device or server the null output is
// chosen, since a search for a device would delay the first frame. A file of SDL_DISKAUDIOFILE has no header, so films
// write the same sample format into it as other sounds.
std::vector<std::pair<const char*, const char*>> soundOptions()
{
    const QByteArray wanted = qgetenv("SDL_AUDIODRIVER");
    if (wanted == "disk")
        return {{"ao", "sdl"}, {"audio-format", "s16"}, {"audio-channels", "stereo"}, {"audio-samplerate", "44100"}};
    if (wanted == "dummy" || (!soundServerIsThere() && !soundDeviceIsThere()))
        return {{"ao", "null"}};
    return {};
}

} // namespace

MpvGraph::MpvGraph(const MpvLibrary& library, const FileService& files, Wait wait)
    : m_library(library)
    , m_files(files)
    , m_wait(std::move(wait))
    , m_core(library.create(), library.terminateDestroy)
{
    if (!m_core)
        throw Failure(FailureKind::DeviceUnavailable);
    for (const auto& [name, value] : Options)
        setOption(name, value);
    for (const auto& [name, value] : soundOptions())
        setOption(name, value);
    if (m_library.initialize(m_core.get()) < 0)
        throw Failure(FailureKind::DeviceUnavailable);
    m_frames.emplace(m_library, m_core.get());
}

MpvGraph::~MpvGraph()
{
    m_frames->setOwner(nullptr);
    dropEvents();
    attempt([this] { command({"stop"}); });
    // Otherwise the render thread and the library could wait for each other for ever.
    const Clock::time_point end = Clock::now() + CloseDeadline;
    while (!m_idle && nextEvent(end) != MPV_EVENT_NONE) { }
}

void MpvGraph::RenderFile(std::string_view path)
{
    m_open = false;
    m_sentToEnd = false;
    m_files.checkFault(FileOperation::Picture, path);
    m_files.length(path); // fails for pipes and devices, which could block the program
    const std::string native = m_files.nativeForReading(path);
    command({"loadfile", native.c_str()});
    if (!waitForFrame(m_frames->count(), Clock::now() + OpenDeadline)) {
        attempt([this] { command({"stop"}); });
        throw Failure(FailureKind::InvalidPicture);
    }
    // Rounded to a tenth, as callers round it, so that the position at the end equals their duration.
    m_duration = roundToPlaces(get<double>("duration", MPV_FORMAT_DOUBLE).value_or(0), 1);
    m_open = true;
}

void MpvGraph::Run()
{
    int pause = 0;
    set("pause", MPV_FORMAT_FLAG, &pause);
}

void MpvGraph::Pause()
{
    int pause = 1;
    set("pause", MPV_FORMAT_FLAG, &pause);
}

double MpvGraph::get_Duration() const
{
    requireFilm();
    return m_duration;
}

double MpvGraph::get_CurrentPosition() const
{
    requireFilm();
    if (atEnd())
        return m_duration;
    const double position = std::max(0.0, get<double>("time-pos", MPV_FORMAT_DOUBLE).value_or(0));
    return m_duration > 0 ? std::min(position, m_duration) : position;
}

void MpvGraph::put_CurrentPosition(double seconds)
{
    requireFilm();
    dropEvents();
    const long before = m_frames->count();
    command({"seek", std::to_string(std::max(0.0, seconds)).c_str(), "absolute+exact"});
    waitForFrame(before, Clock::now() + SeekDeadline); // a frame that is late is still shown when it comes
    m_sentToEnd = m_duration > 0 && seconds >= m_duration;
}

double MpvGraph::get_Rate() const
{
    requireFilm();
    return get<double>("speed", MPV_FORMAT_DOUBLE).value_or(1);
}

void MpvGraph::put_Rate(double rate)
{
    set("speed", MPV_FORMAT_DOUBLE, &rate);
}

int MpvGraph::WaitForCompletion(int milliseconds)
{
    requireFilm();
    return m_wait([this] { return atEnd(); }, milliseconds) ? 1 : 0;
}

void MpvGraph::place(int FilmPlace::*side, int pixels)
{
    FilmPlace place = m_frames->place();
    place.*side = pixels;
    m_frames->setPlace(place);
}

// Some versions of the library lack an option.
void MpvGraph::setOption(const char* name, const char* value)
{
    const int result = m_library.setOptionString(m_core.get(), name, value);
    if (result < 0 && result != MPV_ERROR_OPTION_NOT_FOUND)
        throw Failure(FailureKind::DeviceUnavailable);
}

void MpvGraph::requireFilm() const
{
    if (!m_open)
        throw Failure(FailureKind::InvalidProcedureCall);
}

void MpvGraph::command(std::initializer_list<const char*> words)
{
    std::vector<const char*> arguments(words);
    arguments.push_back(nullptr);
    if (m_library.command(m_core.get(), arguments.data()) < 0)
        throw Failure(FailureKind::InvalidProcedureCall);
}

// The next event, MPV_EVENT_NONE when there is none in time.
mpv_event_id MpvGraph::nextEvent(Clock::time_point end)
{
    const std::chrono::duration<double> left = end - Clock::now();
    const mpv_event_id event = m_library.waitEvent(m_core.get(), std::max(0.0, left.count()))->event_id;
    if (event == MPV_EVENT_VIDEO_RECONFIG)
        updateSize();
    else if (event == MPV_EVENT_START_FILE || event == MPV_EVENT_IDLE)
        m_idle = event == MPV_EVENT_IDLE;
    return event;
}

// Drops old events, so that all that follow belong to the next command.
void MpvGraph::dropEvents()
{
    while (nextEvent(Clock::now()) != MPV_EVENT_NONE) { }
}

// Waits until the film is opened or sought and its frame is rendered; false if the film ended or `end` has passed.
bool MpvGraph::waitForFrame(long framesBefore, Clock::time_point end)
{
    mpv_event_id event = nextEvent(end);
    while (event != MPV_EVENT_PLAYBACK_RESTART) {
        if (event == MPV_EVENT_END_FILE || (event == MPV_EVENT_NONE && Clock::now() >= end))
            return false;
        event = nextEvent(end);
    }
    if (m_frames->hasSize())
        m_frames->waitForMoreThan(framesBefore, Clock::now() + FrameDeadline);
    return true;
}

// A film that was taken with an upright camera is stored sideways. Its frames are rotated here: the library itself
// rotates only with another renderer.
void MpvGraph::updateSize()
{
    const auto width = get<std::int64_t>("dwidth", MPV_FORMAT_INT64).value_or(0);
    const auto height = get<std::int64_t>("dheight", MPV_FORMAT_INT64).value_or(0);
    const auto degrees = get<std::int64_t>("current-tracks/video/demux-rotation", MPV_FORMAT_INT64).value_or(0);
    if (width > 0 && height > 0)
        m_frames->setNaturalSize(
            static_cast<int>(width), static_cast<int>(height), static_cast<int>((degrees + 45) / 90 % 4));
}

// After a playback error the property is missing, which counts as the end. After a seek to the end of a paused film the
// property stays false, so m_sentToEnd counts too.
bool MpvGraph::atEnd() const
{
    return m_sentToEnd || get<int>("eof-reached", MPV_FORMAT_FLAG).value_or(1) != 0;
}

void MpvGraph::set(const char* property, mpv_format format, void* value)
{
    requireFilm();
    if (m_library.setProperty(m_core.get(), property, format, value) < 0)
        throw Failure(FailureKind::InvalidProcedureCall);
}

template <class Value>
std::optional<Value> MpvGraph::get(const char* property, mpv_format format) const
{
    Value value{};
    if (m_library.getProperty(m_core.get(), property, format, &value) < 0)
        return std::nullopt;
    return value;
}

} // namespace trovarium
