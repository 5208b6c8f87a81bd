#include "platform/qt/toolkit/FilmPainting.h"

#include "platform/media/FilmSurface.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PicturePainter.h"

#include <QRectF>

namespace trovarium {

void paintFilm(QPainter& painter, PicturePainter& picturePainter, const FilmSurface& film)
{
    const FilmSurface::Shown shown = film.shown();
    if (shown.frame == nullptr)
        return;
    const FilmFrame& frame = *shown.frame; // which outlives the picture below
    const QImage image(
        reinterpret_cast<const uchar*>(frame.pixels.data()), frame.width, frame.height, QImage::Format_RGB32);
    const FilmPlace& place = shown.place;
    picturePainter.paint(painter, pictureFromImage(image), QRectF(place.left, place.top, place.width, place.height));
}

} // namespace trovarium
