#pragma once

class QPainter;

namespace trovarium {

class FilmSurface;
class PicturePainter;

// Paints the latest frame, the corner of the film's box at the painter's origin. Costs what is seen of it, however
// large its place is.
void paintFilm(QPainter& painter, PicturePainter& picturePainter, const FilmSurface& film);

} // namespace trovarium
