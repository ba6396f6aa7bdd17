// Frames of Full Screen Editing painted on a QImage, without a window: the
// tiles of a page with the hovered one veiled, marker frames, the crossed box
// and the status text; one photo centred with its marker square and the crop
// veil.

#include <QPainter>
#include <cmath>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "photos/photo.h"
#include "ui/fullscreen_painter.h"

namespace tivox::test {
namespace {

constexpr QRgb kBlack = 0xFF000000u, kRed = 0xFFFF0000u, kGreen = 0xFF00FF00u;

std::unique_ptr<Bitmap> Solid(int width, int height, std::uint32_t argb) {
    auto bitmap = std::make_unique<Bitmap>();
    EXPECT_TRUE(bitmap->Reset(width, height));
    bitmap->Fill(argb);
    return bitmap;
}

// Relative luminance, 0 for black and 1 for white, as contrast is judged.
double Luminance(QRgb pixel) {
    auto linear = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) +
           0.0722 * linear(qBlue(pixel));
}

// A 1024 x 768 screen of 4 x 4 tiles over a status bar of 30: tiles of
// 256 x 184 from y = 1, thumbnail boxes of 248 x 176 four pixels inside.
class FullScreenPainterTest : public ::testing::Test {
protected:
    FullScreenPainterTest() {
        m_frame.layout.SetTileCount({4, 4});
        m_frame.layout.SetStatusHeight(30);
        m_frame.layout.Recalculate();
        m_frame.photoAt = [this](int index) -> const CPhoto* {
            return index >= 0 && index < int(m_photos.size()) ? m_photos[index].get() : nullptr;
        };
    }
    CPhoto& Add(std::unique_ptr<Bitmap> thumbnail, int marker = 0) {
        auto& photo = m_photos.emplace_back(std::make_unique<CPhoto>());
        photo->path = "/photos/photo_" + std::to_string(m_photos.size() - 1) + ".jpg";
        photo->marker = marker;
        photo->thumbnail = std::move(thumbnail);
        photo->thumbnailReady.store(photo->thumbnail ? 1 : 0);
        return *photo;
    }
    PaintedFrame Paint(QRect clip = QRect(0, 0, 1024, 768)) {
        QPainter painter(&m_image);
        return m_painter.Paint(painter, clip, m_frame);
    }

    std::vector<std::unique_ptr<CPhoto>> m_photos;
    FullScreenFrame m_frame;
    CFullScreenPainter m_painter;
    QImage m_image{1024, 768, QImage::Format_ARGB32};
};

TEST_F(FullScreenPainterTest, TilesVeilTheHoveredOneFrameMarkedOnesAndCrossThoseWithoutPicture) {
    for (int marker : {0, 1, 2})
        Add(Solid(240, 170, 0xFF808080), marker); // centred at (4, 3) in the box
    Add(nullptr, 3);                              // not made yet: no frame
    Add(std::make_unique<Bitmap>(), 1);           // unreadable: nothing but its frame
    m_frame.mousePos = {100, 100};
    const PaintedFrame painted = Paint();
    EXPECT_EQ(painted.statusText, QStringLiteral("/photos/photo_0.jpg"));
    EXPECT_FALSE(painted.screenImageMissing);
    // The veil lies over the whole box of the hovered tile, its black too.
    EXPECT_NEAR(qRed(m_image.pixel(4 + 124, 5 + 88)), 188, 3);
    EXPECT_NEAR(qRed(m_image.pixel(4 + 3, 5 + 2)), 120, 3);
    EXPECT_EQ(m_image.pixel(4 + 248, 5 + 88), kBlack); // the box ends there
    EXPECT_EQ(m_image.pixel(260 + 124, 5 + 88), 0xFF808080u);
    EXPECT_EQ(m_image.pixel(260 + 3, 5 + 88), kBlack);
    EXPECT_EQ(m_image.pixel(260 + 4, 5 + 3), 0xFF808080u);
    // Frames run two pixels outside the box, all round: a pen of 2 covers
    // the pixel of its coordinate and the one before.
    EXPECT_EQ(m_image.pixel(2, 90), kBlack);
    for (QPoint red : {QPoint(257, 90), QPoint(258, 90), QPoint(510, 90), QPoint(400, 183)})
        EXPECT_EQ(m_image.pixel(red), kRed) << red.x() << "," << red.y();
    for (QPoint black : {QPoint(256, 90), QPoint(259, 90), QPoint(511, 90), QPoint(400, 184)})
        EXPECT_EQ(m_image.pixel(black), kBlack) << black.x() << "," << black.y();
    EXPECT_EQ(m_image.pixel(514, 2), kGreen);
    EXPECT_EQ(m_image.pixel(770, 90), kBlack); // no frame without a picture
    EXPECT_EQ(m_image.pixel(2, 187), kRed);
    EXPECT_EQ(m_image.pixel(4 + 124, 189 + 88), kBlack);
    // The crossed box: its border and diagonals gray, the rest black.
    for (QPoint gray : {QPoint(772, 93), QPoint(834, 49), QPoint(834, 137)})
        EXPECT_EQ(m_image.pixel(gray), 0xFF808080u) << gray.x() << "," << gray.y();
    EXPECT_EQ(m_image.pixel(772 + 60, 5 + 88), kBlack);
    // The hovered path stands on the bar, readable on black (at least 4.5:1).
    double text = 0;
    for (int y = 738; y < 768; ++y)
        for (int x = 0; x < 300; ++x)
            text = std::max(text, Luminance(m_image.pixel(x, y)));
    EXPECT_GE((text + 0.05) / 0.05, 4.5);

    // A frame of one tile leaves the rest and says nothing of the bar.
    m_image.fill(0xFF123456);
    m_frame.mousePos = {256, 100}; // the first column of the next tile
    EXPECT_EQ(Paint(QRect(256, 0, 256, 184)).statusText, std::nullopt);
    EXPECT_EQ(m_image.pixel(4 + 124, 5 + 88), 0xFF123456u);
    EXPECT_NEAR(qRed(m_image.pixel(260 + 124, 5 + 88)), 188, 3);
    EXPECT_EQ(Paint().statusText, QStringLiteral("/photos/photo_1.jpg"));
    EXPECT_EQ(m_image.pixel(4 + 124, 5 + 88), 0xFF808080u);
    m_frame.mousePos = {100, 750}; // the bar hovers no tile
    EXPECT_EQ(Paint().statusText, QString());
    // The next page starts at pageStart.
    m_frame.pageStart = 4;
    Paint();
    EXPECT_EQ(m_image.pixel(2, 90), kRed);
    EXPECT_EQ(m_image.pixel(260 + 124, 5 + 88), kBlack);
}

TEST_F(FullScreenPainterTest, SingleViewCentresThePhotoAndVeilsAllButTheCropRectangle) {
    m_frame.singlePhoto = true;
    CPhoto& photo = Add(Solid(128, 64, 0xFF808080), 1);
    // Until its picture comes, the thumbnail stands in at screen size.
    PaintedFrame painted = Paint();
    EXPECT_TRUE(painted.screenImageMissing);
    EXPECT_EQ(painted.statusText, std::nullopt);
    EXPECT_EQ(m_image.pixel(512, 127), kBlack);
    EXPECT_EQ(m_image.pixel(512, 128), 0xFF808080u);
    EXPECT_EQ(m_image.pixel(1023, 639), 0xFF808080u);
    EXPECT_EQ(m_image.pixel(512, 640), kBlack);

    // Odd leftovers: the spare pixel stays right and below.
    photo.screenImage = Solid(501, 301, 0xFF404040);
    EXPECT_FALSE(Paint().screenImageMissing);
    EXPECT_EQ(m_image.pixel(260, 400), kBlack);
    EXPECT_EQ(m_image.pixel(261, 233), 0xFF404040u);
    EXPECT_EQ(m_image.pixel(761, 533), 0xFF404040u);
    EXPECT_EQ(m_image.pixel(762, 400), kBlack);
    EXPECT_EQ(m_image.pixel(500, 232), kBlack);
    EXPECT_EQ(m_image.pixel(500, 534), kBlack);
    // The marker square stands at (20, 20) over the black border.
    for (QPoint red : {QPoint(25, 19), QPoint(25, 20), QPoint(30, 25)})
        EXPECT_EQ(m_image.pixel(red), kRed) << red.x() << "," << red.y();
    EXPECT_EQ(m_image.pixel(31, 25), kBlack);

    m_frame.cropVeil = true;
    m_frame.cropRect = {300, 250, 200, 100};
    Paint();
    for (QPoint inside : {QPoint(300, 250), QPoint(499, 349)})
        EXPECT_EQ(m_image.pixel(inside), 0xFF404040u) << inside.x() << "," << inside.y();
    for (QPoint band : {QPoint(299, 300), QPoint(500, 300), QPoint(400, 249), QPoint(400, 350)})
        EXPECT_NEAR(qRed(m_image.pixel(band)), 0x40 + 90, 3) << band.x() << "," << band.y();
    EXPECT_NEAR(qRed(m_image.pixel(100, 100)), 120, 3); // the border veiled too
    EXPECT_NEAR(qRed(m_image.pixel(1000, 700)), 120, 3);

    // Past the end of the list the screen stays black and asks for nothing.
    m_frame.currentIndex = 1;
    painted = Paint();
    EXPECT_FALSE(painted.screenImageMissing);
    EXPECT_EQ(m_image.pixel(25, 20), kBlack);
    EXPECT_EQ(m_image.pixel(400, 300), kBlack);
}

} // namespace
} // namespace tivox::test
