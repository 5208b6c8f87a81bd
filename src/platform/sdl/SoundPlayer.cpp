#include "platform/sdl/SoundPlayer.h"

#include "platform/files/PathResolver.h"
#include "platform/files/Paths.h"
#include "platform/sdl/Mixer.h"
#include "runtime/Failure.h"

#include <optional>
#include <sys/stat.h>
#include <utility>

namespace trovarium {

namespace {

// The regular file that is read for a path of the program; empty for none. Nothing else is ever opened: a pipe would
// wait for its other end.
std::string soundFile(const std::string& path)
{
    std::string native;
    struct stat status { };
    attempt([&] {
        native = nativeAsWritten(path);
        if (stat(native.c_str(), &status) != 0)
            native = PathResolver().readable(native);
    });
    return stat(native.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? native : "";
}

// The device is opened for the first file that is there.
class Player {
public:
    void play(const std::string& clip)
    {
        const std::string file = soundFile(clip);
        if (!file.empty() && open())
            m_mixer->playClip(file);
        else if (m_mixer)
            m_mixer->stopClip();
    }

    void carryOut(const MciCommand& music)
    {
        if (music.verb == MciCommand::Verb::Open) {
            const std::string file = soundFile(music.path);
            if (!file.empty() && open())
                m_mixer->openPiece(music.alias, file);
        } else if (m_mixer && music.verb == MciCommand::Verb::Play) {
            m_mixer->playPiece(music.alias);
        } else if (m_mixer && music.verb == MciCommand::Verb::Close) {
            m_mixer->closePiece(music.alias);
        }
    }

private:
    bool open()
    {
        if (!std::exchange(m_isTried, true))
            attempt([&] { m_mixer.emplace(); });
        return m_mixer.has_value();
    }

    std::optional<Mixer> m_mixer;
    bool m_isTried = false;
};

} // namespace

SoundPlayer::~SoundPlayer()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

// A name that is no path, such as "0", is no file.
void SoundPlayer::sndPlaySound(std::string_view name)
{
    Order order;
    order.isClip = true;
    if (name.starts_with('/'))
        order.clip = name;
    const bool couldSound = !order.clip.empty();
    give(std::move(order), couldSound);
}

void SoundPlayer::mciSendString(std::string_view command)
{
    Order order;
    order.music = readMciCommand(command);
    const bool couldSound = order.music.verb == MciCommand::Verb::Open;
    give(std::move(order), couldSound);
}

void SoundPlayer::give(Order order, bool couldSound)
{
    if (!m_thread.joinable()) {
        if (!couldSound)
            return;
        m_thread = std::thread([this] { work(); });
    }
    {
        const std::lock_guard lock(m_mutex);
        m_orders.push_back(std::move(order));
    }
    m_changed.notify_one();
}

void SoundPlayer::work()
{
    Player player;
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ends || !m_orders.empty(); });
        if (m_ends)
            return;
        const Order order = std::move(m_orders.front());
        m_orders.pop_front();
        lock.unlock();
        if (order.isClip)
            player.play(order.clip);
        else
            player.carryOut(order.music);
        lock.lock();
    }
}

} // namespace trovarium
