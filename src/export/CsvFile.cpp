#include "export/CsvFile.h"

#include "platform/files/FileService.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/PhotographFiles.h"
#include "store/QuietFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace trovarium {

namespace {

// The columns between the file's name and the two sizes.
constexpr std::array<std::string_view, 7> Keys{"EVENT", "KEYWORDS", "PEOPLE", "PHOTOGRAPHER", "PLACE", "TITLE", "YEAR"};
constexpr std::string_view Header =
    "InfoFile,Event,Keywords,People,Photographer,Place,Title,Year,ImageWidth,ImageHeight";

using Values = std::array<std::string, Keys.size()>;

// The last line of a key counts; a key that is no column is passed over.
void takeValue(std::string_view line, Values& values)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return;
    const auto* const key = std::find(Keys.begin(), Keys.end(), upper(line.substr(0, equals)));
    if (key != Keys.end())
        values[static_cast<std::size_t>(key - Keys.begin())] = line.substr(equals + 1);
}

// Nothing is quoted: a comma in a value makes one column more. The two sizes have their columns and are never told.
std::string recordOf(const std::string& infoName, const Values& values)
{
    std::string record = infoName + ",";
    for (const std::string& value : values)
        record.append(value).append(",");
    return record + ",";
}

} // namespace

void WriteCsvRecord(Album& album, const std::string& infoName, const std::string& csvPath)
{
    if (!isPhotographName(infoName))
        return;
    FileService& files = album.files;
    Values values;
    bool isNew = false;
    const bool isRead = withFileQuietly(files, album.paths.InfoPath + infoName, OpenMode::Input, [&](int number) {
        while (!files.endOfFile(number))
            takeValue(files.lineInput(number), values);
        files.removeLink(csvPath); // which the table would replace
        isNew = !files.exists(csvPath);
    });
    if (!isRead)
        return;
    withFileQuietly(files, csvPath, OpenMode::Append, [&](int number) {
        if (isNew) {
            files.print(number, "CSV");
            files.print(number, Header);
        }
        files.print(number, recordOf(infoName, values));
    });
}

} // namespace trovarium
