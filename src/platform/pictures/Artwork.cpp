#include "platform/pictures/Artwork.h"

#include "platform/pictures/PictureData.h"
#include "runtime/Failure.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QSvgRenderer>

#include <utility>

// A static library's resources are left out by the linker unless somebody asks for them; the macro needs
// the global namespace.
static void includeArtwork()
{
    Q_INIT_RESOURCE(artwork);
}

namespace trovarium {

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
