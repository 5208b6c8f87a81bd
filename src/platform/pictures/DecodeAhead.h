// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/PictureFile.h"
#include "platform/pictures/PictureService.h"

#include <QSize>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace trovarium {

class PictureLibraries;

// What is to be decoded: a file under its native path, in full (0) or for a longer side in pixels, and then stretched
// to exactly `size` unless that is empty.
struct DecodeRequest {
    std::string nativePath;
    int longerSide = 0;
    QSize size{};

    bool operator==(const DecodeRequest&) const = default;
};

// The picture is empty if the file couldn't be decoded.
struct DecodedFile {
    DecodeRequest request;
    FileStamp stamp;
    Picture picture;
};

struct DecodeWorkers {
    std::size_t count = 2;
    bool isUrgent = true;         // otherwise all other threads come first
    std::function<void()> done{}; // called on a worker behind each job, never after the end
};

// Decodes files on worker threads, ahead of time or on request, so that the caller stays responsive while it waits, and
// can give up.
class DecodeAhead {
public:
    explicit DecodeAhead(std::shared_ptr<PictureLibraries> libraries, DecodeWorkers workers = {});
    ~DecodeAhead(); // cancels running jobs, within a second
    DecodeAhead(const DecodeAhead&) = delete;
    DecodeAhead& operator=(const DecodeAhead&) = delete;

    // What will be asked for, nearest first. All other jobs and kept pictures are dropped.
    void expect(const std::vector<DecodeRequest>& requests);

    // Whether no job for it is waiting or running; waits for that up to so long.
    bool isDone(const DecodeRequest& request, int milliseconds);

    // The picture in `file`, which is the one that `request` names, decoded now or ahead of time; it is no longer kept
    // here. Calls `patience` every few milliseconds; "Device I/O error" once that returns false.
    Picture take(const DecodeRequest& request, const PictureFile& file, const Patience& patience);

    // What is done already; it is no longer kept here.
    std::vector<DecodedFile> takeDone();

private:
    struct Job;
    struct State;

    void startWorkers();

    std::shared_ptr<State> m_state; // shared with the threads, which may outlive this
    std::vector<std::thread> m_threads;
};

} // namespace trovarium
