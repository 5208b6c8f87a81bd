// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/Numbers.h"
#include "support/FailureOf.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <map>
#include <set>
#include <sys/stat.h>

namespace trovarium {

using Names = std::vector<std::string>;

inline constexpr const char* NoFile = "File not found";
inline constexpr const char* NoFolder = "Path not found";
inline constexpr const char* NoAccess = "Path/File access error";
inline constexpr const char* Denied = "Permission denied";
inline constexpr const char* BadName = "Bad file name or number";
inline constexpr const char* Taken = "File already exists";
inline constexpr const char* InUse = "File already open";

// A folder, and steps in it: "copy a > b" is a verb, a name and, for some, another name or a text. Behind "!" stands a
// whole path in place of a name.
class FileTest : public testing::Test {
protected:
    using Steps = std::vector<std::pair<std::string, std::string>>;

    // Does one after the other and sees what each tells, or fails with.
    void expect(const Steps& steps)
    {
        for (const auto& [step, told] : steps)
            EXPECT_EQ(did(step), told) << step;
    }
    std::string did(const std::string& step)
    {
        const std::size_t blank = step.find(' ');
        const std::size_t arrow = step.find(" > ");
        const std::string path = at(step.substr(blank + 1, arrow - blank - 1));
        const std::string other = arrow == step.npos ? "" : step.substr(arrow + 3);
        told.clear();
        const std::string failure = failureOf([&] { verbs.at(step.substr(0, blank))(path, other); });
        attempt([&] { files.close(Number); });
        return failure + told;
    }
    std::string at(const std::string& name) const { return name[0] == '!' ? name.substr(1) : folder.inside(name); }
    void makeFolder(const std::string& native) const { std::filesystem::create_directory(folder.native(native)); }
    void stamp(std::string_view native, timespec time) const
    {
        const timespec times[2] = {time, time};
        ASSERT_EQ(utimensat(AT_FDCWD, folder.native(native).c_str(), times, 0), 0);
    }
    struct stat status(const std::string& native) const
    {
        struct stat found = {};
        EXPECT_EQ(lstat(folder.native(native).c_str(), &found), 0) << native;
        return found;
    }
    std::set<std::string> onDisk() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.insert(entry.path().filename().string());
        return names;
    }

    TemporaryFolder folder;
    FileService files;

private:
    using Verb = std::function<void(const std::string& path, const std::string& other)>;
    static constexpr int Number = 255;

    int opened(const std::string& path, OpenMode mode)
    {
        files.open(path, mode, Number);
        return Number;
    }
    void tell(const Names& names)
    {
        for (const std::string& name : names)
            told += (told.empty() ? "" : "|") + name;
    }

    std::string told;
    const std::map<std::string, Verb> verbs{
        // Behind the back of the program.
        {"put", [&](auto& path, auto& bytes) { std::ofstream(toNativePath(path)) << bytes; }},
        {"bytes", [&](auto& path, auto&) { told = folder.read(toNativePath(path).substr(folder.path().size() + 1)); }},
        {"link", [&](auto& path, auto& to) { std::filesystem::create_symlink(to, toNativePath(path)); }},
        {"hardLink",
            [&](auto& path, auto& to) { std::filesystem::create_hard_link(folder.native(to), toNativePath(path)); }},
        {"pipe", [&](auto& path, auto&) { told = numberText(mkfifo(toNativePath(path).c_str(), 0600)); }},
        // By it.
        {"length", [&](auto& path, auto&) { told = numberText(files.length(path)); }},
        {"exists", [&](auto& path, auto&) { told = booleanText(files.exists(path)); }},
        {"folderExists", [&](auto& path, auto&) { told = booleanText(files.folderExists(path)); }},
        {"same", [&](auto& path, auto& other) { told = booleanText(files.isSameFile(path, at(other))); }},
        {"resolveExistingName", [&](auto& path, auto&) { told = files.resolveExistingName(path); }},
        {"attributes", [&](auto& path, auto&) { told = numberText(files.attributes(path)); }},
        {"modified", [&](auto& path, auto&) { told = numberText(files.modified(path).time_since_epoch().count()); }},
        {"list", [&](auto& path, auto&) { tell(files.list(path)); }},
        {"listFolders", [&](auto& path, auto&) { tell(files.listFolders(path)); }},
        {"read", [&](auto& path, auto&) { told = files.lineInput(opened(path, OpenMode::Input)); }},
        {"append", [&](auto& path, auto& line) { files.print(opened(path, OpenMode::Append), line); }},
        {"empty", [&](auto& path, auto&) { opened(path, OpenMode::Output); }},
        {"write", [&](auto& path, auto& bytes) { files.writeFileAtomically(path, bytes); }},
        {"replace", [&](auto& path, auto& other) { files.replaceContent(path, at(other)); }},
        {"copy", [&](auto& path, auto& other) { files.copy(path, at(other)); }},
        {"rename", [&](auto& path, auto& other) { files.rename(path, at(other)); }},
        {"remove", [&](auto& path, auto&) { files.remove(path); }},
        {"removeLink", [&](auto& path, auto&) { files.removeLink(path); }},
        {"makeFolder", [&](auto& path, auto&) { files.makeFolder(path); }},
        {"date", [&](auto& path, auto&) { files.setModified(path, Instant(std::chrono::seconds(1000000000))); }},
    };
};

} // namespace trovarium
