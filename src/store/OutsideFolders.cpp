#include "store/OutsideFolders.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Text.h"
#include "store/Album.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

namespace {

constexpr std::string_view Section = "OutsideFolders"; // the target of each link that was agreed to

// The folders that the program writes into. Of that for the help pages it only makes sure that it is there.
std::vector<FolderLink> outsideFolders(const Album& album)
{
    const std::string& library = album.paths.AppPath;
    std::vector<FolderLink> links = album.files.linksOut(library,
        {"Photos", "Photo_Thumbnails", "Photo_Info", "Photo_SlideGroups", "Photo_Audio", "Photo_Midi"}, library);
    for (const std::string_view folder : {"\\Photos", "\\Photo_Info", "\\Photo_Audio", "\\Photo_Midi"}) {
        const auto inside = album.files.linksOut(library + std::string(folder), {"Removed", "Removed_Photos"}, library);
        links.insert(links.end(), inside.begin(), inside.end());
    }
    return links;
}

// Where a link leads nowhere its target is whatever the album says: one line, and none that fills the screen.
std::string shown(const std::string& path)
{
    constexpr std::size_t MostCharacters = 200;
    std::string text = firstCharacters(toNativePath(path), MostCharacters);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, '?');
    return text;
}

} // namespace

bool mayWorkOutside(Album& album, Desktop& desktop)
{
    std::vector<FolderLink> links = outsideFolders(album);
    attempt([&] {
        std::erase_if(links, [&](const FolderLink& link) {
            return album.Settings().GetOWSetting("Trovarium", Section, link.path, "") == link.target;
        });
    });
    if (links.empty())
        return true;
    std::string list;
    for (const FolderLink& link : links)
        list += shown(link.path) + " -> " + shown(link.target) + "\r";
    const Answer answer = desktop.prompts().messageBox("Folders of this album lie outside of it:\r\r" + list
            + "\rTrovarium reads, changes and removes files there. Press 'YES' to open the album. Press 'NO' if you "
              "don't know these folders.",
        Message::Warning, "Folders Outside the Album");
    if (answer != Answer::Yes)
        return false;
    for (const FolderLink& link : links)
        attempt([&] { album.Settings().SetOWSetting("Trovarium", Section, link.path, link.target); });
    return true;
}

} // namespace trovarium
