// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/DecodeAhead.h"

#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/PictureReader.h"
#include "platform/pictures/PictureSizes.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>

#include <sys/resource.h>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

// Between two calls of the caller's `Patience`.
constexpr int WaitStep = 10; // milliseconds
// A decoder that is at work on pixels can't be cancelled.
constexpr auto LongestEnd = 1s;
// How much may be kept in full before another one is decoded ahead: a photograph of 64 megapixels.
constexpr std::int64_t KeptBytes = HarmlessPixels * 4;
// Niceness of the threads that aren't urgent: beside an urgent one on the same core, such a thread gets about a tenth.
constexpr int Niceness = 10;

Picture stretched(const Picture& picture, QSize size)
{
    QImage pixels = drawnImage(*picture.data(), size);
    if (pixels.isNull())
        throw Failure(FailureKind::OutOfMemory);
    return Picture(std::make_shared<PictureData>(PictureData{std::move(pixels), picture.data()->naturalSize}));
}

} // namespace

struct DecodeAhead::Job {
    enum class Stage { Waiting, UnderWay, Done };

    explicit Job(DecodeRequest wanted)
        : request(std::move(wanted))
    {
    }

    void decode(PictureLibraries& libraries)
    {
        failure = attempt([&] {
            const PictureFile file(request.nativePath, cancelled);
            stamp = file.stamp();
            picture = readPicture(file, request.longerSide, libraries);
            if (!request.size.isEmpty())
                picture = stretched(std::exchange(picture, {}), request.size);
        });
    }

    // Skipped as soon as somebody waits for the picture, since the sizes are only a guess.
    void scale(const std::shared_ptr<PictureSizes>& sizes)
    {
        if (picture.empty() || request.longerSide > 0)
            return;
        auto data = std::make_shared<PictureData>(*picture.data());
        data->pictureSizes = sizes;
        for (const QSize size : sizes->of(data->naturalSize))
            if (!isAwaited && !cancelled)
                data->scaled.push_back(drawnImage(*data, size));
        picture = Picture(std::move(data));
    }

    const DecodeRequest request;
    std::atomic<bool> isAwaited{false}; // by the one who asks; the others are done ahead
    std::atomic<bool> cancelled{false};
    Stage stage = Stage::Waiting;
    FileStamp stamp; // these three belong to the worker until the stage is Done
    Picture picture;
    std::optional<Failure> failure;
};

struct DecodeAhead::State {
    State(std::shared_ptr<PictureLibraries> shared, DecodeWorkers plan)
        : libraries(std::move(shared))
        , workers(std::move(plan))
    {
    }

    std::vector<std::shared_ptr<Job>>::iterator find(const DecodeRequest& request);
    std::shared_ptr<Job> askFor(const DecodeRequest& request, bool& isNew);
    void work();
    std::shared_ptr<Job> nextJob() const;

    const std::shared_ptr<PictureLibraries> libraries;
    const std::shared_ptr<PictureSizes> pictureSizes = std::make_shared<PictureSizes>();
    const DecodeWorkers workers;
    std::mutex mutex; // guards what follows
    std::condition_variable jobsChanged;
    std::condition_variable jobDone; // or a worker has ended
    std::vector<std::shared_ptr<Job>> jobs;
    bool stopping = false;
    std::size_t working = 0; // threads
};

DecodeAhead::DecodeAhead(std::shared_ptr<PictureLibraries> libraries, DecodeWorkers workers)
    : m_state(std::make_shared<State>(std::move(libraries), std::move(workers)))
{
}

DecodeAhead::~DecodeAhead()
{
    std::unique_lock lock(m_state->mutex);
    m_state->stopping = true;
    for (const auto& job : m_state->jobs)
        job->cancelled = true;
    m_state->jobsChanged.notify_all();
    const bool ended = m_state->jobDone.wait_for(lock, LongestEnd, [this] { return m_state->working == 0; });
    lock.unlock();
    for (std::thread& worker : m_threads) {
        if (ended)
            worker.join();
        else
            worker.detach(); // it works on its own copies alone, and dies with the program
    }
}

void DecodeAhead::expect(const std::vector<DecodeRequest>& requests)
{
    if (!requests.empty())
        startWorkers();
    std::vector<std::shared_ptr<Job>> dropped; // their pictures are freed outside the lock
    {
        const std::lock_guard lock(m_state->mutex);
        dropped.swap(m_state->jobs);
        for (const DecodeRequest& request : requests) {
            const auto known =
                std::find_if(dropped.begin(), dropped.end(), [&](const auto& job) { return job->request == request; });
            if (known == dropped.end()) {
                m_state->jobs.push_back(std::make_shared<Job>(request));
            } else {
                m_state->jobs.push_back(*known);
                dropped.erase(known);
            }
        }
        for (const auto& job : dropped)
            job->cancelled = true;
    }
    m_state->jobsChanged.notify_all();
}

bool DecodeAhead::isDone(const DecodeRequest& request, int milliseconds)
{
    std::unique_lock lock(m_state->mutex);
    const auto found = m_state->find(request);
    if (found == m_state->jobs.end() || m_threads.empty())
        return true;
    const std::shared_ptr<Job> job = *found;
    return m_state->jobDone.wait_for(
        lock, std::chrono::milliseconds(milliseconds), [&] { return job->stage == Job::Stage::Done; });
}

Picture DecodeAhead::take(const DecodeRequest& request, const PictureFile& file, const Patience& patience)
{
    if (Picture thumbnail = readThumbnail(file, request.longerSide); !thumbnail.empty())
        return thumbnail;
    startWorkers();
    if (m_threads.empty())
        return readPicture(file, request.longerSide, *m_state->libraries);

    const auto start = std::chrono::steady_clock::now();
    for (;;) {
        bool isNew = false;
        const std::shared_ptr<Job> job = m_state->askFor(request, isNew);
        while (!isDone(request, WaitStep)) {
            if (patience(
                    std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start)))
                continue;
            expect({});
            throw Failure(FailureKind::DeviceIo);
        }
        const std::lock_guard lock(m_state->mutex);
        std::erase(m_state->jobs, job);
        const bool isBroken = job->failure && job->failure->kind() != FailureKind::InvalidPicture;
        if (!isNew && (isBroken || job->stamp != file.stamp()))
            continue; // decoded ahead at a bad moment, or from a file that has changed since
        if (job->failure)
            throw Failure(*job->failure);
        return job->picture;
    }
}

std::vector<DecodedFile> DecodeAhead::takeDone()
{
    const std::lock_guard lock(m_state->mutex);
    std::vector<DecodedFile> files;
    std::erase_if(m_state->jobs, [&](const auto& job) {
        if (job->stage == Job::Stage::Done)
            files.push_back({job->request, job->stamp, job->picture});
        return job->stage == Job::Stage::Done;
    });
    return files;
}

void DecodeAhead::startWorkers()
{
    try {
        while (m_threads.size() < m_state->workers.count)
            m_threads.emplace_back([state = m_state] { state->work(); });
    } catch (const std::system_error&) {
        // One thread is enough. Without any, the caller decodes by itself.
    }
}

std::vector<std::shared_ptr<DecodeAhead::Job>>::iterator DecodeAhead::State::find(const DecodeRequest& request)
{
    return std::find_if(jobs.begin(), jobs.end(), [&](const auto& job) { return job->request == request; });
}

// Puts the job before all others.
std::shared_ptr<DecodeAhead::Job> DecodeAhead::State::askFor(const DecodeRequest& request, bool& isNew)
{
    const std::lock_guard lock(mutex);
    const auto found = find(request);
    isNew = found == jobs.end();
    if (isNew)
        jobs.insert(jobs.begin(), std::make_shared<Job>(request));
    else
        std::rotate(jobs.begin(), found, std::next(found));
    jobs.front()->isAwaited = true;
    jobsChanged.notify_all();
    return jobs.front();
}

void DecodeAhead::State::work()
{
    if (!workers.isUrgent)
        ::setpriority(PRIO_PROCESS, 0, Niceness); // of this thread alone
    std::unique_lock lock(mutex);
    ++working;
    for (;;) {
        std::shared_ptr<Job> job;
        jobsChanged.wait(lock, [&] {
            job = nextJob();
            return stopping || job;
        });
        if (stopping)
            break;
        job->stage = Job::Stage::UnderWay;
        lock.unlock();
        job->decode(*libraries);
        job->scale(pictureSizes);
        lock.lock();
        job->stage = Job::Stage::Done;
        jobDone.notify_all();
        jobsChanged.notify_all();
        if (workers.done && !stopping)
            workers.done();
    }
    --working;
    jobDone.notify_all();
}

// Pictures in full are decoded ahead one at a time, so that a core stays free for painting. Two of the largest are
// never kept, since each takes hundreds of megabytes.
std::shared_ptr<DecodeAhead::Job> DecodeAhead::State::nextJob() const
{
    const auto next =
        std::find_if(jobs.begin(), jobs.end(), [](const auto& job) { return job->stage == Job::Stage::Waiting; });
    if (next == jobs.end())
        return nullptr;
    if ((*next)->isAwaited || (*next)->request.longerSide > 0)
        return *next;
    std::int64_t kept = 0;
    for (const auto& job : jobs) {
        if (job->request.longerSide == 0 && job->stage == Job::Stage::UnderWay)
            return nullptr;
        if (job->stage != Job::Stage::Done || job->picture.empty())
            continue;
        kept += job->picture.data()->pixels.sizeInBytes();
        for (const QImage& scaled : job->picture.data()->scaled)
            kept += scaled.sizeInBytes();
    }
    return kept <= KeptBytes ? *next : nullptr;
}

} // namespace trovarium
