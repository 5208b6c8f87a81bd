#include "platform/qt/pictures/DecodeAhead.h"

#include "platform/qt/pictures/PictureReader.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <atomic>
#include <system_error>

namespace trovarium {

struct DecodeAhead::Job {
    enum class Stage { Waiting, UnderWay, Done };

    explicit Job(DecodeRequest wanted)
        : request(std::move(wanted))
    {
    }

    void decode()
    {
        attempt([this] {
            const PictureFile file(request.nativePath);
            stamp = file.stamp();
            picture = readPicture(file, request.longerSide, cancelled);
        });
    }

    const DecodeRequest request;
    std::atomic<bool> cancelled{false};
    Stage stage = Stage::Waiting;
    FileStamp stamp; // these two belong to the worker until the stage is Done
    Picture picture;
};

DecodeAhead::~DecodeAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        for (const auto& job : m_jobs)
            job->cancelled = true;
    }
    m_jobsChanged.notify_all();
    for (std::thread& worker : m_workers)
        worker.join();
}

void DecodeAhead::expect(const std::vector<DecodeRequest>& requests)
{
    if (!requests.empty())
        startWorkers();
    std::vector<std::shared_ptr<Job>> dropped; // their pictures are freed outside the lock
    {
        const std::lock_guard lock(m_mutex);
        dropped.swap(m_jobs);
        for (const DecodeRequest& request : requests) {
            const auto known =
                std::find_if(dropped.begin(), dropped.end(), [&](const auto& job) { return job->request == request; });
            if (known == dropped.end()) {
                m_jobs.push_back(std::make_shared<Job>(request));
            } else {
                m_jobs.push_back(*known);
                dropped.erase(known);
            }
        }
        for (const auto& job : dropped)
            job->cancelled = true;
    }
    m_jobsChanged.notify_all();
}

Picture DecodeAhead::take(const DecodeRequest& request, const FileStamp& stamp)
{
    std::unique_lock lock(m_mutex);
    const auto found =
        std::find_if(m_jobs.begin(), m_jobs.end(), [&](const auto& job) { return job->request == request; });
    if (found == m_jobs.end())
        return {};
    const std::shared_ptr<Job> job = *found;
    m_jobs.erase(found);
    if (job->stage == Job::Stage::Waiting)
        return {};
    m_jobDone.wait(lock, [&] { return job->stage == Job::Stage::Done; });
    return job->stamp == stamp ? job->picture : Picture();
}

void DecodeAhead::startWorkers()
{
    constexpr unsigned MostWorkers = 2;
    const unsigned wanted = std::clamp(std::thread::hardware_concurrency(), 1U, MostWorkers);
    try {
        while (m_workers.size() < wanted)
            m_workers.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
        // No thread to be had: the caller decodes as it asks, only later.
    }
}

void DecodeAhead::work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        std::shared_ptr<Job> job;
        m_jobsChanged.wait(lock, [&] {
            job = nextJob();
            return m_stopping || job;
        });
        if (m_stopping)
            return;
        job->stage = Job::Stage::UnderWay;
        lock.unlock();
        job->decode();
        lock.lock();
        job->stage = Job::Stage::Done;
        m_jobDone.notify_all();
        m_jobsChanged.notify_all();
    }
}

// Pictures in full go one at a time: each takes a hundred megabytes, and a core stays free for painting.
std::shared_ptr<DecodeAhead::Job> DecodeAhead::nextJob() const
{
    const auto next =
        std::find_if(m_jobs.begin(), m_jobs.end(), [](const auto& job) { return job->stage == Job::Stage::Waiting; });
    if (next == m_jobs.end())
        return nullptr;
    const bool fullUnderWay = std::any_of(m_jobs.begin(), m_jobs.end(),
        [](const auto& job) { return job->request.longerSide == 0 && job->stage == Job::Stage::UnderWay; });
    return (*next)->request.longerSide == 0 && fullUnderWay ? nullptr : *next;
}

} // namespace trovarium
