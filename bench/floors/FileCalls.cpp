// SPDX-License-Identifier: GPL-3.0-or-later

// Makes the calls to the file system that a job of the program makes, and nothing else, and tells how many
// milliseconds they took.
//
//   floor_files check FOLDER      the check of a start where nothing is to be repaired
//   floor_files missing FOLDER    the check up to the list of absent thumbnails
//   floor_files ahead FOLDER      what the check reads, by eight threads
//   floor_files first FOLDER      the first start with new photographs
//   floor_files rewrite FILE      a list file read and written again
//   floor_files read FOLDER       each file of the folder read whole, one behind the other
//   floor_files list FOLDER       the names of its files, sorted without regard to case
//   floor_files write FOLDER      10,000 new information files

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t BlockBytes = 65536;

std::vector<std::string> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    DIR* stream = opendir(folder.c_str());
    if (stream == nullptr)
        return names;
    while (const dirent* entry = readdir(stream)) {
        if (entry->d_type == DT_REG)
            names.emplace_back(entry->d_name);
    }
    closedir(stream);
    return names;
}

bool isThere(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
}

std::string readWhole(const std::string& path)
{
    std::string bytes;
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (file < 0 || fstat(file, &status) != 0)
        return bytes;
    bytes.resize(static_cast<std::size_t>(status.st_size));
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = read(file, bytes.data() + done, bytes.size() - done);
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    close(file);
    return bytes;
}

void writeWhole(const std::string& path, std::string_view bytes)
{
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), std::min(bytes.size(), BlockBytes));
        if (count <= 0)
            break;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    if (file < 0 || close(file) != 0)
        std::cerr << "can't write " << path << '\n';
}

std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find("\r\n");
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
    }
    return lines;
}

std::string freshInfo(const std::string& link, const std::string& title)
{
    return "PhotoPath=" + link + "\r\nTITLE=" + title
        + "\r\nPHOTOGRAPHER=\r\nYEAR=\r\nPEOPLE=\r\nPLACE=\r\nEVENT=\r\nKEYWORDS=\r\nImageWidth=\r\nImageHeight=\r\n";
}

class Calls {
public:
    explicit Calls(std::string library)
        : m_library(std::move(library))
        , m_infoFolder(m_library + "/Photo_Info/")
    {
    }

    void checkPhotographs()
    {
        for (const std::string& name : namesIn(m_infoFolder))
            isThere(linkIn(m_infoFolder + name));
    }

    void readByThreads()
    {
        constexpr std::size_t Threads = 8;
        const std::vector<std::string> names = namesIn(m_infoFolder);
        namesIn(m_library + "/Photos");
        std::vector<std::thread> threads;
        for (std::size_t first = 0; first < Threads; ++first)
            threads.emplace_back([&, first] {
                for (std::size_t i = first; i < names.size(); i += Threads) {
                    const std::string photograph = linkIn(m_infoFolder + names[i]);
                    isThere(photograph);
                    isThere(m_library + "/Photo_Thumbnails" + photograph.substr(photograph.rfind('/')));
                }
            });
        for (std::thread& thread : threads)
            thread.join();
        for (const std::string& list : namesIn(m_library + "/Photo_SlideGroups"))
            readWhole(m_library + "/Photo_SlideGroups/" + list);
    }

    void checkThumbnails()
    {
        for (const std::string& name : namesIn(m_infoFolder)) {
            const std::string photograph = linkIn(m_infoFolder + name);
            const std::string thumbnail = m_library + "/Photo_Thumbnails" + photograph.substr(photograph.rfind('/'));
            if (!isThere(thumbnail)) // its length
                continue;
            isThere(thumbnail); // its date
            isThere(photograph);
        }
    }

    void checkInfoFiles()
    {
        for (const std::string& name : namesIn(m_library + "/Photos")) {
            const std::string infoFile = m_infoFolder + name + ".info";
            if (!isThere(infoFile))
                writeWhole(infoFile, freshInfo("\\Photos\\" + name, infoFile));
        }
    }

    void writeAllPhotographs()
    {
        std::string lines;
        for (const std::string& name : namesIn(m_infoFolder))
            lines.append(name, 0, name.size() - 5).append("\r\n");
        writeWhole(m_library + "/Photo_SlideGroups/  All Photos  .lst", lines);
    }

    void repairGroups()
    {
        const std::string folder = m_library + "/Photo_SlideGroups/";
        namesIn(m_infoFolder);
        for (const std::string& list : namesIn(folder)) {
            const std::string text = readWhole(folder + list);
            std::string living;
            for (const std::string_view line : linesOf(text)) {
                if (isThere(m_infoFolder + std::string(line) + ".info"))
                    living.append(line).append("\r\n");
            }
            writeWhole(folder + "scratch", living);
            writeWhole(folder + "copy", readWhole(folder + "scratch"));
            rename((folder + "copy").c_str(), (folder + list).c_str());
            unlink((folder + "scratch").c_str());
        }
    }

private:
    // The photograph that an information file names.
    std::string linkIn(const std::string& infoFile) const
    {
        if (!isThere(infoFile))
            return {};
        const std::string text = readWhole(infoFile);
        std::string link = m_library + text.substr(text.find('=') + 1, text.find('\r') - text.find('=') - 1);
        for (char& character : link)
            character = character == '\\' ? '/' : character;
        return link;
    }

    std::string m_library;
    std::string m_infoFolder;
};

void rewrite(const std::string& path)
{
    std::string lines;
    const std::string text = readWhole(path);
    for (const std::string_view line : linesOf(text))
        lines.append(line).append("\r\n");
    writeWhole(path, lines);
}

void readAll(const std::string& folder)
{
    std::size_t size = 0;
    for (const std::string& name : namesIn(folder))
        size += readWhole(folder + "/" + name).size();
    if (size == 0)
        std::cerr << "nothing to read in " << folder << '\n';
}

void listSorted(const std::string& folder)
{
    std::vector<std::string> names = namesIn(folder);
    std::sort(names.begin(), names.end(),
        [](const std::string& one, const std::string& other) { return strcasecmp(one.c_str(), other.c_str()) < 0; });
    if (names.empty())
        std::cerr << "nothing in " << folder << '\n';
}

void writeInfoFiles(const std::string& folder)
{
    constexpr int Count = 10'000;
    for (int number = 1; number <= Count; ++number) {
        const std::string name = "Photograph " + std::to_string(number) + ".jpg";
        const std::string infoFile = folder + "/" + name + ".info";
        writeWhole(infoFile, freshInfo("/home\\ann\\Pictures\\" + name, infoFile));
    }
}

void run(const std::string& job, const std::string& path)
{
    const std::pair<std::string_view, void (*)(const std::string&)> jobs[] = {
        {"rewrite", rewrite}, {"read", readAll}, {"list", listSorted}, {"write", writeInfoFiles}};
    for (const auto& [name, work] : jobs) {
        if (job == name)
            return work(path);
    }
    Calls calls(path);
    if (job == "ahead")
        return calls.readByThreads();
    calls.checkPhotographs();
    calls.checkThumbnails();
    if (job == "missing")
        return;
    calls.checkInfoFiles();
    calls.writeAllPhotographs();
    calls.repairGroups();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: floor_files check|ahead|missing|first|read|list|write FOLDER, floor_files rewrite FILE\n";
        return 2;
    }
    const auto start = std::chrono::steady_clock::now();
    run(argv[1], argv[2]);
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    std::cout << taken.count() << '\n';
    return 0;
}
