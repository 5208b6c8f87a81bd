// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/MimeFiles.h"

#include "platform/files/Paths.h"
#include "platform/pictures/PictureData.h"
#include "platform/toolkit/QtValues.h"

#include <QBuffer>
#include <QMimeData>
#include <QSysInfo>
#include <QUrl>

namespace trovarium {

namespace {

constexpr const char* UrlList = "text/uri-list";
constexpr const char* FileManagerList = "x-special/gnome-copied-files"; // many file managers paste nothing else
constexpr const char* PngFormat = "image/png";

// The fastest compression: the other program waits for it.
constexpr int PngQuality = 80;

// Some programs write their own computer's name into the URL.
bool isOnThisComputer(const QUrl& url)
{
    const QString host = url.host();
    return url.isLocalFile()
        && (host.isEmpty() || host == u"localhost"
            || host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0);
}

// Short even for a URL that holds a whole picture.
QString nameOf(const QUrl& url)
{
    if (url.host().isEmpty() && !url.isLocalFile())
        return url.scheme();
    return url.fileName().isEmpty() ? url.host() : url.fileName();
}

// Byte by byte: a name on disk need not be UTF-8.
std::string nativeOf(const QUrl& url)
{
    return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

QByteArray urlOf(const std::string& native)
{
    return "file://" + QByteArray::fromStdString(native).toPercentEncoding("/");
}

class CopiedFiles : public QMimeData {
public:
    explicit CopiedFiles(Picture picture)
        : m_picture(std::move(picture))
    {
    }

    QStringList formats() const override
    {
        QStringList all = QMimeData::formats();
        if (!m_picture.empty())
            all.append(PngFormat);
        return all;
    }

protected:
    QVariant retrieveData(const QString& format, QMetaType type) const override
    {
        return format == PngFormat && !m_picture.empty() ? QVariant(png()) : QMimeData::retrieveData(format, type);
    }

private:
    QByteArray png() const
    {
        const QImage& pixels = m_picture.data()->pixels;
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        (pixels.isNull() ? renderedImage(m_picture) : pixels).save(&file, "PNG", PngQuality);
        return file.data();
    }

    Picture m_picture;
};

} // namespace

OfferedFiles filesIn(const QMimeData& data)
{
    OfferedFiles files;
    for (const QUrl& url : data.urls()) {
        const std::string native = nativeOf(url);
        const std::string_view path = withoutEndSlashes(native);
        if (!isOnThisComputer(url) || !canBeNamed(path))
            files.others.push_back(toText(nameOf(url)));
        else
            files.paths.push_back(path.empty() ? "/" : fromNativePath(path));
    }
    return files;
}

std::unique_ptr<QMimeData> mimeOf(const std::vector<std::string>& nativePaths, const Picture& picture)
{
    QByteArray list;
    QByteArray forFileManagers = "copy";
    for (const std::string& native : nativePaths) {
        const QByteArray url = urlOf(native);
        list += url + "\r\n";
        forFileManagers += "\n" + url;
    }
    auto data = std::make_unique<CopiedFiles>(picture);
    data->setData(UrlList, list);
    data->setData(FileManagerList, forFileManagers);
    return data;
}

} // namespace trovarium
