#include "platform/files/FileTest.h"

namespace trovarium {

using ReadAheadTest = FileTest;

// Read in their order, with changes of the program's own on the way: what is read is always what stands there.
TEST_F(ReadAheadTest, IsNotSeenButForTheTimeItTakes)
{
    constexpr int Files = 900;
    const auto threads = [] {
        const std::filesystem::directory_iterator tasks("/proc/self/task");
        return std::distance(begin(tasks), end(tasks));
    };
    Names paths;
    for (int i = 0; i < Files; ++i) {
        const std::string name = std::to_string(i);
        const std::string file = (i % 14 == 3 ? "linked " : "") + name;
        folder.write(file, "old " + name + "\r\n");
        if (file != name)
            std::filesystem::create_symlink(file, folder.native(name));
        paths.push_back(at(name));
    }
    for (const int last : {Files, Files / 2}) {
        const auto before = threads();
        const ReadingAhead ahead(files, paths, paths);
        EXPECT_GT(threads(), before) << "somebody reads ahead";
        for (int i = 0; i < last; ++i) {
            const std::string name = std::to_string(i);
            const int turn = i % 7;
            if (turn == 3)
                files.writeWhole(paths[i], "new " + name + "\r\n", Sync::No);
            if (turn == 4)
                attempt([&] { files.remove(paths[i]); });
            if (turn == 5) // passed over
                continue;
            if (turn == 6)
                expect({{"date " + name, ""}, {"modified " + name, "1000000000"}});
            const bool isThere = turn != 4;
            EXPECT_EQ(did("length " + name), isThere ? std::to_string(6 + name.size()) : NoFile);
            ASSERT_EQ(did("read " + name), isThere ? (turn == 3 ? "new " : "old ") + name : NoFile);
        }
    }
}

} // namespace trovarium
