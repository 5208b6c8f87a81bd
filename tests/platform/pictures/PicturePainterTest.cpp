// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PicturePainter.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/TestPictures.h"

#include <QPainter>

namespace trovarium {

constexpr QRgb Backdrop = 0xff102030;

struct PicturePainterTest : PictureFolder {
    // On a surface of `size` device-independent pixels, of which `clip` is painted, or all where it is empty.
    QImage painted(const Picture& picture, QSize size, const QRectF& target, double ratio = 1, const QRect& clip = {},
        const QTransform& transform = {})
    {
        QImage image(size * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Backdrop);
        QPainter surface(&image);
        surface.setClipRect(clip, clip.isEmpty() ? Qt::NoClip : Qt::ReplaceClip);
        surface.setWorldTransform(transform);
        painter.paint(surface, picture, target);
        EXPECT_EQ(surface.worldTransform(), transform);
        surface.end();
        image.setDevicePixelRatio(1);
        return image;
    }

    PicturePainter painter;
};

TEST_F(PicturePainterTest, APictureIsPaintedPixelByPixelAveragedOrEnlargedTheSameInEveryPart)
{
    const QImage scene = testScene(60, 40);
    const Picture picture = pictureFromImage(scene);
    EXPECT_EQ(painted(picture, QSize(60, 40), QRectF(0, 0, 60, 40)), scene);
    EXPECT_EQ(painted(picture, QSize(30, 20), QRectF(0, 0, 30, 20), 2), scene) << "a dense screen";
    EXPECT_EQ(painted(picture, QSize(40, 30), QRectF(0, 0, 40, 80.0 / 3), 1.5).copy(0, 0, 60, 40), scene);
    const QImage small = painted(picture, QSize(40, 30), QRectF(4, 3, 30, 20));
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x) {
            const auto red = [&](int right, int down) { return qRed(scene.pixel(2 * x + right, 2 * y + down)); };
            ASSERT_NEAR(qRed(small.pixel(4 + x, 3 + y)), (red(0, 0) + red(1, 0) + red(0, 1) + red(1, 1)) / 4.0, 1.0);
        }
    for (const QPoint outside : {QPoint(3, 3), QPoint(34, 22), QPoint(4, 23)})
        EXPECT_EQ(small.pixel(outside), Backdrop);

    const QRectF target(-31, -17, 180, 120);
    const QImage whole = painted(picture, QSize(100, 80), target);
    for (const QRect& part : {QRect(0, 0, 10, 10), QRect(37, 21, 23, 31), QRect(99, 79, 1, 1)}) {
        const QImage image = painted(picture, QSize(100, 80), target, 1, part);
        EXPECT_LT(meanDifference(image.copy(part), whole.copy(part)), 0.5);
        EXPECT_EQ(image.pixel(50, 70), Backdrop);
    }
    QImage middles(30, 25, QImage::Format_RGB32); // of the squares that the photograph's pixels become
    for (int y = 0; y < 25; ++y)
        for (int x = 0; x < 30; ++x)
            middles.setPixel(x, y, whole.pixel((x + 11) * 3 + 1 - 31, (y + 6) * 3 + 1 - 17));
    EXPECT_LT(meanDifference(middles, scene.copy(11, 6, 30, 25)), 2);
}

TEST_F(PicturePainterTest, PaintsWhereTheTransformSaysAndNeverKeptPixelsOfAnotherPicture)
{
    Picture last, shown;
    QImage plain(60, 60, QImage::Format_RGB32);
    for (int i = 0; i < 50; ++i) {
        plain.fill(qRgb(i * 5, 0, 255 - i * 5));
        last = shown;
        shown = pictureFromImage(plain);
        const QTransform twice(2, 0, 0, 2, 10, 5);
        QImage expected(80, 80, QImage::Format_RGB32);
        expected.fill(Backdrop);
        QPainter(&expected).drawImage(20, 10, plain.copy(0, 0, 40, 40));
        ASSERT_EQ(painted(shown, QSize(40, 40), QRectF(0, 0, 10, 10), 2, {}, twice), expected) << i;
    }
    const QImage untouched = painted(Picture(), QSize(20, 20), QRectF(0, 0, 20, 20));
    EXPECT_EQ(painted(pictureFromImage(quarters(9, 9)), QSize(20, 20), QRectF(3, 3, 0, 5)), untouched);
    const Picture icon = pictures.artwork("icon");
    const QImage dense = painted(icon, QSize(64, 64), QRectF(0, 0, 64, 64), 2);
    EXPECT_EQ(dense, painted(icon, QSize(128, 128), QRectF(0, 0, 128, 128))) << "a drawing is sharp on a dense screen";
}

} // namespace trovarium
