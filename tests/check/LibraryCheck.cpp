#include "LibraryCheck.h"

#include "check/GroupRepair.h"
#include "store/InfoFile.h"
#include "support/PlainBitmap.h"
#include "support/Robot.h"

namespace trovarium {

std::pair<int, int> sizeOfBitmap(const std::string& bytes)
{
    const auto side = [&](std::size_t at) {
        return static_cast<unsigned char>(bytes.at(at)) + 256 * static_cast<unsigned char>(bytes.at(at + 1));
    };
    return bytes.starts_with("BM") ? std::pair(side(18), side(22)) : std::pair(0, 0);
}

LibraryCheck::LibraryCheck()
    : desktop(testDesktop())
    , test(desktop.files())
    , prompts(desktop)
    , builder(desktop, [this] { return std::make_unique<frmThumbnail>(desktop, test.album(), player); })
    , splash(desktop, [this] { return std::make_unique<frmSplash>(desktop, test.album()); })
{
}

LibraryCheck::~LibraryCheck()
{
    desktop.files().setFaultHook({});
}

void LibraryCheck::addPhoto(const std::string& name, int width, int height)
{
    test.put(photo(name), plainBitmap(width, height));
    // Far from now, so that a date that was not set shows.
    desktop.files().setModified(photo(name), Instant(std::chrono::seconds(1'000'000'000 + 4001 * ++m_photos)));
}

void LibraryCheck::addInfoFile(const std::string& name)
{
    ASSERT_TRUE(CreateInfoFile(desktop.files(), infoFile(name), "\\Photos\\" + name));
}

void LibraryCheck::addPhotosWithInfo(const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        addPhoto(name);
        addInfoFile(name);
    }
}

void LibraryCheck::addUpToDateThumbnail(const std::string& name)
{
    test.put(thumbnail(name), plainBitmap(100, 75));
    desktop.files().setModified(thumbnail(name), dateOf(photo(name)));
}

int LibraryCheck::logged(const std::string& procedure, const std::string& description)
{
    const std::string line = "An error has occurred in '" + procedure + "'. Error = " + description + "\r\n";
    const std::string text = test.log();
    int count = 0;
    for (std::size_t at = text.find(line); at != std::string::npos; at = text.find(line, at + 1))
        ++count;
    return count;
}

void LibraryCheck::start()
{
    test.album().AutoCheckBypass = false;
    splash().load();
    splash().show();
    RepairPasses(test.album(), splash(), builder).CheckFolderContents();
    if (!test.album().AutoCheckBypass)
        RemoveMissingPhotosFromGroup(test.album(), desktop);
    splash().unload();
}

void LibraryCheck::build(const std::vector<std::string>& names)
{
    CheckedArray<std::string> list;
    for (const std::string& name : names)
        list.append(name);
    builder().load();
    builder().SetMissingList(list);
    builder().showModal();
}

} // namespace trovarium
