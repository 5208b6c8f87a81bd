#include "platform/files/FileTest.h"

namespace trovarium {

using ReadAhead = FileTest;

// Read in their order, with changes of the program's own on the way: what is read is always what stands there.
TEST_F(ReadAhead, IsNotSeenButForTheTimeItTakes)
{
    constexpr int Files = 900;
    std::vector<std::string> paths;
    for (int i = 0; i < Files; ++i) {
        folder.write(std::to_string(i), "old " + std::to_string(i));
        paths.push_back(at(std::to_string(i)));
    }
    paths.push_back(at("900"));
    for (const int last : {Files + 1, Files / 2}) {
        const ReadingAhead ahead(files, paths, paths);
        for (int i = 0; i < last; ++i) {
            const std::string name = std::to_string(i);
            if (i % 7 == 3)
                did("write " + name + " > new " + name);
            if (i % 7 == 4)
                did("remove " + name);
            if (i % 7 == 5)
                continue;
            const bool isGone = i % 7 == 4 || i == Files;
            EXPECT_EQ(did("length " + name), isGone ? NoFile : numberText(4 + name.size()));
            EXPECT_EQ(did("read " + name), isGone ? NoFile : (i % 7 == 3 ? "new " : "old ") + name);
        }
    }
}

} // namespace trovarium
