#include "platform/qt/pictures/PicturePainter.h"
#include "platform/pictures/TestPictures.h"
#include "platform/qt/pictures/PictureData.h"

#include <gtest/gtest.h>

#include <QPainter>

namespace trovarium {

namespace {

constexpr QRgb Backdrop = 0xff102030;

// A surface of `size` device-independent pixels.
QImage surface(QSize size, double ratio = 1)
{
    QImage image(size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Backdrop);
    return image;
}

QImage painted(const Picture& picture, QSize size, const QRectF& target, double ratio = 1)
{
    QImage image = surface(size, ratio);
    QPainter painter(&image);
    PicturePainter().paint(painter, picture, target);
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace

TEST(PicturePainter, AReducedPictureIsTheAverageOfItsAreas)
{
    const QImage scene = testScene(120, 80);
    const QImage small = painted(pictureFromImage(scene), QSize(40, 30), QRectF(4, 3, 30, 20));
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x) {
            int red = 0;
            for (int i = 0; i < 16; ++i)
                red += qRed(scene.pixel(x * 4 + i % 4, y * 4 + i / 4));
            ASSERT_NEAR(qRed(small.pixel(4 + x, 3 + y)), red / 16.0, 1.0) << x << "," << y;
        }
    EXPECT_EQ(small.pixel(3, 3), Backdrop);
    EXPECT_EQ(small.pixel(34, 22), Backdrop);
    EXPECT_EQ(small.pixel(4, 23), Backdrop);
}

TEST(PicturePainter, APictureInItsOwnSizeIsPaintedPixelByPixel)
{
    const QImage scene = testScene(60, 40);
    EXPECT_EQ(painted(pictureFromImage(scene), QSize(60, 40), QRectF(0, 0, 60, 40)), scene);
    EXPECT_EQ(painted(pictureFromImage(scene), QSize(30, 20), QRectF(0, 0, 30, 20), 2), scene) << "a dense screen";
    EXPECT_EQ(
        painted(pictureFromImage(scene), QSize(40, 30), QRectF(0, 0, 40, 80.0 / 3), 1.5).copy(0, 0, 60, 40), scene);
}

TEST(PicturePainter, AnEnlargedPictureLooksTheSameWhicheverPartIsVisible)
{
    const Picture picture = pictureFromImage(testScene(50, 40));
    const QRectF target(-31, -17, 150, 120);
    const QImage whole = painted(picture, QSize(100, 80), target);
    for (const QRect& part : {QRect(0, 0, 10, 10), QRect(37, 21, 23, 31), QRect(99, 79, 1, 1)}) {
        QImage image = surface(QSize(100, 80));
        QPainter painter(&image);
        painter.setClipRect(part);
        PicturePainter().paint(painter, picture, target);
        painter.end();
        EXPECT_LT(meanDifference(image.copy(part), whole.copy(part)), 0.5);
        EXPECT_EQ(image.pixel(50, 70), Backdrop);
    }
    // A pixel of the photograph becomes a square of three about its own middle.
    for (const QPoint at : {QPoint(20, 12), QPoint(33, 20)}) {
        const QRect middle(QPoint(at.x() * 3 + 1 - 31, at.y() * 3 + 1 - 17), QSize(1, 1));
        EXPECT_LT(meanDifference(whole.copy(middle), picture.data()->pixels.copy(QRect(at, QSize(1, 1)))), 2);
    }
}

TEST(PicturePainter, PaintsWhereTheTransformSays)
{
    QImage image = surface(QSize(40, 40), 2);
    QPainter painter(&image);
    painter.translate(10, 5);
    painter.scale(2, 2);
    PicturePainter().paint(painter, pictureFromImage(quarters(40, 40)), QRectF(0, 0, 10, 10));
    painter.fillRect(QRectF(0, 0, 1, 1), Qt::black); // the painter is as it was
    painter.end();
    EXPECT_EQ(image.pixel(20, 10), 0xff000000);
    EXPECT_EQ(image.pixel(59, 49), 0xffffffff);
    EXPECT_EQ(image.pixel(60, 49), Backdrop);
    EXPECT_EQ(image.pixel(19, 20), Backdrop);
}

TEST(PicturePainter, KeptPixelsAreNeverTakenForAnotherPicture)
{
    PicturePainter pictures;
    for (int i = 0; i < 50; ++i) {
        QImage image = surface(QSize(10, 10));
        QImage plain(30, 30, QImage::Format_RGB32);
        plain.fill(qRgb(i * 5, 0, 255 - i * 5));
        QPainter painter(&image);
        pictures.paint(painter, pictureFromImage(plain), QRectF(0, 0, 10, 10));
        painter.end();
        ASSERT_EQ(image.pixel(5, 5), plain.pixel(0, 0)) << i;
    }
    const QImage untouched = surface(QSize(20, 20));
    EXPECT_EQ(painted(Picture(), QSize(20, 20), QRectF(0, 0, 20, 20)), untouched);
    EXPECT_EQ(painted(pictureFromImage(quarters(9, 9)), QSize(20, 20), QRectF(3, 3, 0, 5)), untouched);
}

TEST(PicturePainter, ADrawingIsSharpOnADenseScreen)
{
    PictureFolder folder;
    const Picture icon = folder.pictures.artwork("icon");
    const QImage dense = painted(icon, QSize(64, 64), QRectF(0, 0, 64, 64), 2);
    const QImage large = painted(icon, QSize(128, 128), QRectF(0, 0, 128, 128));
    EXPECT_EQ(dense, large) << "drawn at the resolution of the screen";
    const QImage blurred = painted(icon, QSize(64, 64), QRectF(0, 0, 64, 64)).scaled(128, 128);
    EXPECT_GT(meanDifference(dense, blurred), 1);
    const QImage bar = painted(folder.pictures.artwork("bar-dark"), QSize(160, 40), QRectF(5, 4, 139, 31));
    EXPECT_EQ(bar.pixel(5, 4), Backdrop) << "round corners";
    EXPECT_EQ(bar.pixel(5 + 69, 4 + 15), qRgb(0, 74, 140));
}

} // namespace trovarium
