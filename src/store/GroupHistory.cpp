// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/GroupHistory.h"

#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "store/PhotographFiles.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace trovarium {

namespace {

// A film with the ending of a list must not fill the memory.
constexpr std::int64_t MostBytes = 1 << 26;

constexpr const char* NotRecorded = "the groups that it changed could not be recorded";

bool isList(std::string_view file)
{
    return !file.ends_with(".mid");
}

bool startsLine(std::string_view bytes, std::size_t at)
{
    if (at == 0 || bytes[at - 1] == '\n')
        return true;
    return bytes[at - 1] == '\r' && (at == bytes.size() || bytes[at] != '\n');
}

constexpr std::size_t Block = 4096; // bytes compared at a time

std::size_t equalBytes(std::string_view left, std::string_view right)
{
    const std::size_t end = std::min(left.size(), right.size());
    std::size_t at = 0;
    while (at + Block <= end && left.substr(at, Block) == right.substr(at, Block))
        at += Block;
    while (at < end && left[at] == right[at])
        ++at;
    return at;
}

std::size_t equalBytesAtEnd(std::string_view left, std::string_view right)
{
    const auto tail = [](std::string_view bytes, std::size_t size) { return bytes.substr(bytes.size() - size); };
    const std::size_t end = std::min(left.size(), right.size());
    std::size_t size = 0;
    while (
        size + Block <= end && tail(left, size + Block).substr(0, Block) == tail(right, size + Block).substr(0, Block))
        size += Block;
    while (size < end && tail(left, size + 1).front() == tail(right, size + 1).front())
        ++size;
    return size;
}

std::vector<std::string> linesOf(std::string_view bytes)
{
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < bytes.size();) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n", from), bytes.size());
        lines.push_back(fromWindows1252(bytes.substr(from, end - from)));
        from = end + (bytes.substr(end, 2) == "\r\n" ? 2 : 1);
    }
    return lines;
}

std::string_view bytesOf(const std::optional<FileContent>& content)
{
    return content ? std::string_view(content->bytes) : std::string_view();
}

std::string quoted(const std::string& file)
{
    return "\"" + std::string(trimmed(groupNameOf(file))) + "\"";
}

} // namespace

void GroupHistory::record(const std::set<std::string>& files, const std::function<void()>& act, const Moved& moved)
{
    std::map<std::string, Content> before;
    const auto unread = attempt([&] {
        for (const std::string& file : files) {
            Content content = contentOf(file);
            const std::string name = content ? file : nameOnDisk(file);
            before[name] = content || name == file ? std::move(content) : contentOf(name);
        }
    });
    const auto failure = attempt(act);
    const auto unkept = unread ? unread : attempt([&] { keep({changesSince(before), moved}); });
    if (unkept && !failure)
        recordFinal(NotRecorded);
    if (failure)
        throw Failure(*failure);
}

void GroupHistory::rename(const std::string& from, const std::string& to)
{
    const std::string file = nameOnDisk(from);
    renameGroupList(m_album, file, to);
    const bool isWithMusic = renameMusic(m_album, file, to);
    const auto unkept = attempt([&] {
        const Version version = versionOf(contentOf(to));
        keep({{Change{file, to, version, version, 0, {}, {}, {}, isWithMusic}}, {}});
    });
    if (unkept)
        recordFinal(NotRecorded);
}

void GroupHistory::recordFinal(const std::string& why)
{
    keep({{}, {}, why});
}

std::optional<GroupHistory::Outcome> GroupHistory::takeBack()
{
    return go(m_back, m_again);
}

std::optional<GroupHistory::Outcome> GroupHistory::doAgain()
{
    return go(m_again, m_back);
}

GroupHistory::Version GroupHistory::versionOf(const Content& content)
{
    return content ? Version(std::hash<std::string>()(content->bytes)) : Version();
}

// Whole lines, so that what is kept tells which photographs came and went.
GroupHistory::Change GroupHistory::difference(const std::string& file, const Content& old, const Content& now)
{
    const FileContent& either = old ? *old : *now;
    Change change{file, file, versionOf(old), versionOf(now), 0, {}, {}, {{}, either.link, either.rights}, false};
    // A link comes back as one, and leads to what is there then.
    if (!either.link.empty() && !(old && now))
        return change;
    const std::string_view before = bytesOf(old);
    const std::string_view after = bytesOf(now);
    std::size_t& at = change.at;
    at = equalBytes(before, after);
    while (!startsLine(before, at) || !startsLine(after, at))
        --at;
    std::size_t tail = equalBytesAtEnd(before.substr(at), after.substr(at));
    while (tail > 0 && !(startsLine(before, before.size() - tail) && startsLine(after, after.size() - tail)))
        --tail;
    change.removed = before.substr(at, before.size() - tail - at);
    change.added = after.substr(at, after.size() - tail - at);
    return change;
}

void GroupHistory::reverse(Step& step)
{
    for (Change& change : step.changes) {
        std::swap(change.file, change.newFile);
        std::swap(change.before, change.after);
        std::swap(change.removed, change.added);
    }
    std::reverse(step.changes.begin(), step.changes.end());
    std::swap(step.moved.from, step.moved.to);
}

GroupHistory::Content GroupHistory::changed(const Change& change, const Content& content)
{
    if (!change.after)
        return {};
    FileContent whole = content.value_or(change.whole);
    whole.bytes.replace(change.at, change.removed.size(), change.added);
    return whole;
}

// None for a whole group.
GroupHistory::Positions GroupHistory::added(const Change& change, std::int32_t first)
{
    const std::vector<std::string> old = linesOf(change.removed);
    const std::vector<std::string> lines = linesOf(change.added);
    Positions positions;
    if (!change.before || lines.size() <= old.size())
        return positions;
    auto next = old.begin();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (next != old.end() && *next == lines[i])
            ++next;
        else
            positions.push_back(first + static_cast<std::int32_t>(i));
    }
    return positions;
}

GroupHistory::Outcome GroupHistory::outcomeOf(const Step& step, const std::vector<Content>& contents)
{
    Outcome outcome;
    for (std::size_t i = 0; i < step.changes.size(); ++i) {
        const Change& change = step.changes[i];
        if (!isList(change.newFile) || !change.after)
            continue;
        outcome.group = groupNameOf(change.newFile);
        const std::string_view kept = bytesOf(contents[i]).substr(0, change.at);
        outcome.position = static_cast<std::int32_t>(linesOf(kept).size()) + 1;
        outcome.selected = step.moved.to.empty() ? added(change, outcome.position) : step.moved.to;
        if (!outcome.selected.empty())
            outcome.position = outcome.selected.front();
        break;
    }
    return outcome;
}

// A list may have another case there than in its group's name. From then on it is known by exactly this name, as there
// may be another one that differs in case.
std::string GroupHistory::nameOnDisk(const std::string& file) const
{
    return isList(file) ? groupListPath(m_album, file).substr(m_album.paths.SlideGroupPath.size()) : file;
}

std::string GroupHistory::pathOf(const std::string& file) const
{
    return (isList(file) ? m_album.paths.SlideGroupPath : m_album.paths.MidiPath) + file;
}

GroupHistory::Content GroupHistory::contentOf(const std::string& file) const
try {
    return m_album.files.contentToReplace(pathOf(file), MostBytes);
} catch (const Failure& failure) {
    if (!failure.isAbsence())
        throw;
    return {};
}

std::vector<GroupHistory::Change> GroupHistory::changesSince(const std::map<std::string, Content>& before) const
{
    std::vector<Change> changes;
    for (const auto& [file, content] : before) {
        const Content now = contentOf(file);
        if (now != content)
            changes.push_back(difference(file, content, now));
    }
    std::stable_sort(changes.begin(), changes.end(), [](const Change& left, const Change& right) {
        return left.added.size() + right.removed.size() > right.added.size() + left.removed.size();
    });
    return changes;
}

void GroupHistory::keep(Step step)
{
    if (step.changes.empty() && step.refusal.empty())
        return;
    reverse(step);
    m_back.push_back(std::move(step));
    m_again.clear();
}

std::optional<GroupHistory::Outcome> GroupHistory::go(std::vector<Step>& from, std::vector<Step>& to)
{
    if (from.empty())
        return {};
    Outcome outcome = carryOut(from.back());
    if (outcome.refusal.empty()) {
        to.push_back(std::move(from.back()));
        reverse(to.back());
    } else if (from.back().refusal.empty()) {
        return outcome; // may be carried out later
    }
    from.pop_back();
    return outcome;
}

GroupHistory::Outcome GroupHistory::carryOut(Step& step) const
{
    Outcome refused;
    refused.refusal = step.refusal;
    std::vector<Content> contents;
    std::size_t done = 0;
    const auto failure = attempt([&] {
        m_album.files.requireFolder(m_album.paths.InfoPath); // else all photographs would count as gone
        for (Change& change : step.changes) {
            contents.push_back(contentOf(change.file));
            refused.refusal = obstacle(change);
            if (refused.refusal.empty())
                refused.refusal = step.refusal = contradiction(change, contents.back());
            if (!refused.refusal.empty())
                return;
            leaveOutGone(change);
        }
        for (; done < step.changes.size(); ++done)
            write(step.changes[done], contents[done]);
    });
    if (failure) {
        while (done-- > 0)
            attempt([&] { put(step.changes[done].file, contents[done]); });
        refused.refusal = failure->description();
    }
    return refused.refusal.empty() ? outcomeOf(step, contents) : refused;
}

// What keeps the step from being carried out now; it may go away.
std::string GroupHistory::obstacle(const Change& change) const
{
    const bool comes = isList(change.newFile) && (change.isRename() || !change.before);
    const bool isTaken = comes && hasGroupList(m_album, change.newFile);
    return isTaken ? "there is a group " + quoted(change.newFile) + " by now" : "";
}

// What can't go away any more.
std::string GroupHistory::contradiction(const Change& change, const Content& content) const
{
    if (versionOf(content) != change.before)
        return "the group " + quoted(change.file) + " was changed since";
    if (!isList(change.file) || !change.before)
        return {};
    const std::vector<std::string> old = linesOf(change.removed);
    const std::unordered_set<std::string> stay(old.begin(), old.end());
    for (const std::string& name : linesOf(change.added)) {
        if (stay.count(name) == 0 && isGone(name))
            return "\"" + name + "\" is no longer in the album";
    }
    return {};
}

bool GroupHistory::isGone(const std::string& line) const
{
    return isPhotographName(line) && !hasInfoFile(m_album, line);
}

// A deleted list comes back without the photographs that have left the album since.
void GroupHistory::leaveOutGone(Change& change) const
{
    if (!isList(change.file) || change.before)
        return;
    std::vector<std::string> lines = linesOf(change.added);
    if (std::erase_if(lines, [this](const std::string& line) { return isGone(line); }) == 0)
        return;
    change.added.clear();
    for (const std::string& line : lines)
        change.added.append(encodeLine(line)).append("\r\n");
    change.after = versionOf(FileContent{change.added, {}});
}

void GroupHistory::write(const Change& change, const Content& content) const
{
    if (!change.isRename())
        return put(change.file, changed(change, content));
    renameGroupList(m_album, change.file, change.newFile);
    if (change.isWithMusic)
        renameMusic(m_album, change.file, change.newFile);
}

void GroupHistory::put(const std::string& file, const Content& content) const
{
    FileService& files = m_album.files;
    if (content && !content->link.empty() && !contentOf(file))
        return files.makeLink(pathOf(file), content->link);
    const std::string path = isList(file) ? writableGroupList(m_album, file) : pathOf(file);
    if (content)
        files.writeFileAtomically(path, content->bytes, Sync::Yes, content->rights);
    else
        files.remove(path);
}

} // namespace trovarium
