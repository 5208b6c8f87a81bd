// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PictureService.h"

#include "platform/files/FileService.h"
#include "platform/pictures/DecodeAhead.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureFile.h"
#include "platform/pictures/PictureLibraries.h"
#include "platform/pictures/PictureReader.h"
#include "platform/pictures/ThumbnailSharpener.h"
#include "runtime/Failure.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

// A static library's resources are left out by the linker unless somebody asks for them; the macro needs
// the global namespace.
static void includeArtwork()
{
    Q_INIT_RESOURCE(artwork);
}

namespace trovarium {

namespace {

// Pictures in full that are kept ahead: the neighbours of the one on show.
constexpr std::size_t MostInFull = 2;
constexpr std::size_t MostReduced = 8;

const std::atomic<bool> NeverCancelled{false};

// Nothing is sharpened while it lives.
class Pause {
public:
    explicit Pause(ThumbnailSharpener* sharpener) // may be null
        : m_sharpener(sharpener)
    {
        if (m_sharpener)
            m_sharpener->pause();
    }
    ~Pause()
    {
        if (m_sharpener)
            m_sharpener->resume();
    }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

private:
    ThumbnailSharpener* const m_sharpener;
};

// A whole uncompressed 24-bit bitmap file, alpha on white.
std::string bitmapBytes(const QImage& image)
{
    constexpr int PixelsPerMetre = 3780; // 96 to the inch

    QImage opaque(image.size(), QImage::Format_RGB888); // of 24 bits a pixel in the file
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(0, 0, image);
    opaque.setDotsPerMeterX(PixelsPerMetre);
    opaque.setDotsPerMeterY(PixelsPerMetre);
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    if (!opaque.save(&file, "BMP"))
        throw std::bad_alloc(); // no room for the pixels: nothing else stops a write into memory
    return file.data().toStdString();
}

} // namespace

PictureService::PictureService(FileService& files, Patience patience, std::shared_ptr<PictureLibraries> libraries)
    : m_files(files)
    , m_patience(std::move(patience))
    , m_libraries(libraries ? std::move(libraries) : std::make_shared<PictureLibraries>())
    , m_ahead(std::make_unique<DecodeAhead>(m_libraries))
{
    // Photographs go beyond the library's 128 MB; what is too large is refused by its header instead.
    QImageReader::setAllocationLimit(0);
}

PictureService::~PictureService() = default;

Picture PictureService::load(std::string_view path)
{
    // Stops sharper thumbnails meanwhile: two of the largest pictures at once could take gigabytes.
    const Pause pause(m_sharpener.get());
    return loadFor(path, 0);
}

Picture PictureService::loadReduced(std::string_view path, int longerSide)
{
    return loadFor(path, std::max(1, longerSide));
}

Picture PictureService::loadFor(std::string_view path, int longerSide)
{
    const std::string native = nativeOf(path);
    try {
        return m_ahead->take({native, longerSide}, PictureFile(native, NeverCancelled), m_patience);
    } catch (const Failure&) {
        tellMissing();
        throw;
    }
}

void PictureService::sharpen(
    const void* owner, std::string_view path, int width, int height, std::function<void(const Picture&)> receive)
{
    if (!m_sharpener)
        m_sharpener = std::make_unique<ThumbnailSharpener>(m_libraries, later);
    m_sharpener->ask(owner, nativeOf(path), QSize(width, height), std::move(receive));
}

void PictureService::dropSharper(const void* owner)
{
    if (m_sharpener)
        m_sharpener->drop(owner);
}

bool PictureService::isPicture(std::string_view path) const
{
    const bool is = trovarium::isPicture(PictureFile(nativeOf(path), NeverCancelled), *m_libraries);
    tellMissing();
    return is;
}

void PictureService::tellMissing() const
{
    for (const std::string& package : m_libraries->newlyMissing())
        if (PackageMissing)
            PackageMissing(package);
}

std::string PictureService::nativeOf(std::string_view path) const
{
    m_files.checkFault(FileOperation::Picture, path);
    if (path.empty())
        throw Failure(FailureKind::FileNotFound);
    return m_files.nativeForReading(path);
}

void PictureService::expect(std::vector<std::string> paths, int longerSide)
{
    paths.resize(std::min(paths.size(), longerSide > 0 ? MostReduced : MostInFull));
    std::vector<DecodeRequest> requests;
    for (const std::string& path : paths)
        attempt([&] { requests.push_back({m_files.nativeForReading(path), longerSide}); });
    m_ahead->expect(requests);
}

bool PictureService::isDecoded(std::string_view path, int longerSide, int milliseconds)
{
    bool isDone = true;
    attempt([&] { isDone = m_ahead->isDone({m_files.nativeForReading(path), longerSide}, milliseconds); });
    return isDone;
}

void PictureService::saveBitmap(const Picture& picture, std::string_view path)
try {
    if (picture.empty())
        throw Failure(FailureKind::InvalidPicture);
    m_files.writeFileAtomically(path, bitmapBytes(renderedImage(picture)));
} catch (const std::bad_alloc&) {
    throw Failure(FailureKind::OutOfMemory);
}

Picture PictureService::artwork(std::string_view name)
{
    const auto known = m_drawings.find(name);
    return known != m_drawings.end() ? known->second : m_drawings.emplace(name, loadArtwork(name)).first->second;
}

Picture loadArtwork(std::string_view name)
{
    includeArtwork();
    QFile file(QStringLiteral(":/assets/") + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))
        + QStringLiteral(".svg"));
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(FailureKind::FileNotFound);
    auto data = std::make_shared<PictureData>();
    data->drawing = std::make_shared<QSvgRenderer>(file.readAll());
    if (!data->drawing->isValid())
        throw Failure(FailureKind::InvalidPicture);
    data->naturalSize = data->drawing->defaultSize();
    return Picture(std::move(data));
}

} // namespace trovarium
