#pragma once

#include "platform/pictures/Picture.h"
#include "platform/qt/pictures/PictureFile.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace trovarium {

// What is to be decoded: a file under its native path, in full (0) or for a longer side in pixels.
struct DecodeRequest {
    std::string nativePath;
    int longerSide = 0;

    bool operator==(const DecodeRequest&) const = default;
};

// Decodes files on other cores before they are asked for. Nothing here ever fails: what can't be decoded
// ahead is left to the one who asks.
class DecodeAhead {
public:
    DecodeAhead() = default;
    ~DecodeAhead(); // breaks off what is under way
    DecodeAhead(const DecodeAhead&) = delete;
    DecodeAhead& operator=(const DecodeAhead&) = delete;

    // What will be asked for, nearest first; everything else that is kept or under way is dropped.
    void expect(const std::vector<DecodeRequest>& requests);

    // The picture, if it was decoded from the file that `stamp` tells of; waits when it is under way. Empty
    // when it is up to the caller. What was taken is no longer kept here.
    Picture take(const DecodeRequest& request, const FileStamp& stamp);

private:
    struct Job;

    void startWorkers();
    void work();
    std::shared_ptr<Job> nextJob() const;

    std::mutex m_mutex; // guards what follows
    std::condition_variable m_jobsChanged;
    std::condition_variable m_jobDone;
    std::vector<std::shared_ptr<Job>> m_jobs;
    bool m_stopping = false;
    std::vector<std::thread> m_workers;
};

} // namespace trovarium
