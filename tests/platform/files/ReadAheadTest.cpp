#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace trovarium {

// Read in their order, with changes of the program's own on the way: what is read is always what stands there.
TEST(ReadAhead, IsNotSeenButForTheTimeItTakes)
{
    constexpr int Files = 900;
    const TemporaryFolder folder;
    FileService files;
    std::vector<std::string> paths;
    for (int i = 0; i < Files; ++i) {
        const bool isLinked = i % 14 == 3;
        const std::string file = (isLinked ? "linked " : "") + std::to_string(i);
        folder.write(file, "old " + std::to_string(i) + "\r\n");
        if (isLinked)
            std::filesystem::create_symlink(file, folder.native(std::to_string(i)));
        paths.push_back(folder.inside(std::to_string(i)));
    }
    paths.push_back(folder.inside("gone"));
    for (const int last : {Files + 1, Files / 2}) {
        const ReadingAhead ahead(files, paths, paths);
        for (int i = 0; i < last; ++i) {
            const std::string& path = paths[i];
            if (i % 7 == 3)
                files.writeWhole(path, "new " + std::to_string(i) + "\r\n", Sync::No);
            if (i % 7 == 4)
                attempt([&] { files.remove(path); });
            if (i % 7 == 5)
                continue;
            std::string line = "none";
            attempt([&] {
                EXPECT_EQ(files.length(path), 6 + static_cast<int>(std::to_string(i).size()));
                files.open(path, OpenMode::Input, 1);
                line = files.lineInput(1);
                EXPECT_TRUE(files.endOfFile(1));
            });
            files.close(1);
            const std::string expected =
                i % 7 == 4 || i == Files ? "none" : (i % 7 == 3 ? "new " : "old ") + std::to_string(i);
            ASSERT_EQ(line, expected);
        }
    }
}

} // namespace trovarium
