#include "platform/pictures/BitmapBytes.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <new>

namespace trovarium {

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

} // namespace trovarium
