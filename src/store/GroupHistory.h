// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/FileTypes.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace trovarium {

struct Album;

// What was changed in groups since the program started, to be taken back and done again step by step. Of each list only
// the lines between the first and the last difference are kept, so that moving a photograph through a long list by a
// held key costs little.
class GroupHistory {
public:
    explicit GroupHistory(Album& album)
        : m_album(album)
    {
    }

    using Positions = std::vector<std::int32_t>;
    // Photographs that get another place in the same list.
    struct Moved {
        Positions from;
        Positions to;
    };

    // Runs an act and keeps what it changed as one step. `files` are the lists and the music that it may change, by
    // their names. `moved` is read after the act. A file that can't be read doesn't stop the act, which then can't be
    // taken back.
    void record(const std::set<std::string>& files, const std::function<void()>& act, const Moved& moved = {});

    // Renames a list, with the group's music, as one step.
    void rename(const std::string& from, const std::string& to);

    // For an act that can't be taken back: the next step back tells why, as a part of a sentence, and no older act is
    // taken back in its place.
    void recordFinal(const std::string& why);

    struct Outcome {
        std::string refusal;       // why nothing was changed, as a part of a sentence; empty if it was
        std::string group;         // the one to show; empty if the step took it away
        std::int32_t position = 1; // where its list changed; may be one beyond its end
        Positions selected;        // of the photographs that came or were moved
    };
    // Both change all files of a step or none, and only if each is as the history knows it. A step whose lists have
    // changed is dropped. One that is only in the way of something now, such as a full disk, stays. Nothing if there is
    // no step.
    std::optional<Outcome> takeBack();
    std::optional<Outcome> doAgain();

private:
    using Content = std::optional<FileContent>; // nothing if the file is absent
    using Version = std::optional<std::size_t>; // the hash of its bytes

    struct Change {
        std::string file;    // as it is on the disk
        std::string newFile; // differs in a renaming
        Version before;
        Version after;
        std::size_t at = 0; // where the contents begin to differ, in bytes
        std::string removed;
        std::string added;
        FileContent whole;        // of a file that comes or goes, without its bytes
        bool isWithMusic = false; // of a renaming

        bool isRename() const { return file != newFile; }
    };
    struct Step {
        std::vector<Change> changes; // what adds lines first: a kill in between leaves a photograph in both lists
        Moved moved;
        std::string refusal = {}; // why it can't be carried out any more
    };

    static Version versionOf(const Content& content);
    static Change difference(const std::string& file, const Content& before, const Content& after);
    static void reverse(Step& step);
    static Content changed(const Change& change, const Content& content);
    static Positions added(const Change& change, std::int32_t first);
    static Outcome outcomeOf(const Step& step, const std::vector<Content>& contents);

    std::string nameOnDisk(const std::string& file) const;
    std::string pathOf(const std::string& file) const;
    Content contentOf(const std::string& file) const;
    std::vector<Change> changesSince(const std::map<std::string, Content>& before) const;
    void keep(Step step);
    std::optional<Outcome> go(std::vector<Step>& from, std::vector<Step>& to);
    Outcome carryOut(Step& step) const;
    std::string obstacle(const Change& change) const;
    std::string contradiction(const Change& change, const Content& content) const;
    bool isGone(const std::string& line) const;
    void leaveOutGone(Change& change) const;
    void write(const Change& change, const Content& content) const;
    void put(const std::string& file, const Content& content) const;

    Album& m_album;
    std::vector<Step> m_back; // as they are to be carried out, the next one last
    std::vector<Step> m_again;
};

} // namespace trovarium
