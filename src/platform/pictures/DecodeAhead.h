#pragma once

#include "platform/pictures/PictureFile.h"
#include "platform/pictures/PictureService.h"

#include <memory>
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

// Decodes files on threads of its own, before they are asked for and when they are, so that whoever waits for one can
// look after other things and give up.
class DecodeAhead {
public:
    DecodeAhead();
    ~DecodeAhead(); // breaks off what is under way, within a second
    DecodeAhead(const DecodeAhead&) = delete;
    DecodeAhead& operator=(const DecodeAhead&) = delete;

    // What will be asked for, nearest first; everything else that is kept or under way is dropped.
    void expect(const std::vector<DecodeRequest>& requests);

    // Whether nobody works on it any more; waits for that up to so long.
    bool isDone(const DecodeRequest& request, int milliseconds);

    // The picture that stands in the file, of which `request` says the name; it is no longer kept here. While it is
    // decoded, `patience` is asked every few milliseconds: "Device I/O error" when it has come to its end.
    Picture take(const DecodeRequest& request, const PictureFile& file, const Patience& patience);

private:
    struct Job;
    struct State;

    void startWorkers();

    std::shared_ptr<State> m_state; // shared with the threads, which may outlive this
    std::vector<std::thread> m_workers;
};

} // namespace trovarium
