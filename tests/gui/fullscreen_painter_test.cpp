// Frames of Full Screen Editing painted on a QImage, without a window: the
// tiles of a page with the hovered one veiled, marker frames, the crossed box
// and the status text; one photo centred with its marker square and the crop
// veil.

#include <QPainter>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "photos/photo.h"
#include "ui/fullscreen_painter.h"

namespace tivox::test {
namespace {

constexpr QRgb kBlack = 0xFF000000u, kRed = 0xFFFF0000u, kGreen = 0xFF00FF00u;
constexpr QRgb kGray = 0xFF808080u, kDark = 0xFF404040u;
// White at alpha 120 over gray, black and the dark gray.
constexpr QRgb kVeiledGray = 0xFFBCBCBCu, kVeiledBlack = 0xFF787878u, kVeiledDark = 0xFF9A9A9Au;

std::unique_ptr<Bitmap> Solid(int width, int height, std::uint32_t argb) {
    auto bitmap = std::make_unique<Bitmap>();
    EXPECT_TRUE(bitmap->Reset(width, height));
    bitmap->Fill(argb);
    return bitmap;
}

struct Pixel {
    QPoint at;
    QRgb colour;
};
Pixel At(int x, int y, QRgb colour) {
    return {QPoint(x, y), colour};
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
    // Each pixel of the frame against its colour, within 3 a channel.
    void Expect(std::initializer_list<Pixel> pixels) const {
        for (const auto& [at, colour] : pixels) {
            const QRgb got = m_image.pixel(at);
            const bool near = std::abs(qRed(got) - qRed(colour)) <= 3 &&
                              std::abs(qGreen(got) - qGreen(colour)) <= 3 &&
                              std::abs(qBlue(got) - qBlue(colour)) <= 3;
            EXPECT_TRUE(near) << at.x() << "," << at.y() << ": " << std::hex << got;
        }
    }

    std::vector<std::unique_ptr<CPhoto>> m_photos;
    FullScreenFrame m_frame;
    CFullScreenPainter m_painter;
    QImage m_image{1024, 768, QImage::Format_ARGB32};
};

TEST_F(FullScreenPainterTest, TilesVeilTheHoveredOneFrameMarkedOnesAndCrossThoseWithoutPicture) {
    for (int marker : {0, 1, 2})
        Add(Solid(240, 170, kGray), marker); // centred at (4, 3) in the box
    Add(nullptr, 3);                         // not made yet: no frame
    Add(std::make_unique<Bitmap>(), 1);      // unreadable: nothing but its frame
    m_frame.mousePos = {100, 100};
    const PaintedFrame painted = Paint();
    EXPECT_EQ(painted.statusText, QStringLiteral("/photos/photo_0.jpg"));
    EXPECT_FALSE(painted.screenImageMissing);
    // The veil lies over the whole box of the hovered tile, its black too;
    // the next tile shows its picture and the black around it.
    Expect({At(128, 93, kVeiledGray), At(7, 7, kVeiledBlack), At(252, 93, kBlack),
            At(384, 93, kGray), At(263, 93, kBlack), At(264, 8, kGray)});
    // Frames run two pixels outside the box, all round; a pen of 2 covers the
    // pixel of its coordinate and the one before.
    Expect({At(2, 90, kBlack), At(257, 90, kRed), At(258, 90, kRed), At(510, 90, kRed),
            At(400, 183, kRed), At(256, 90, kBlack), At(259, 90, kBlack), At(511, 90, kBlack),
            At(400, 184, kBlack), At(514, 2, kGreen), At(2, 187, kRed), At(128, 277, kBlack)});
    // The crossed box: its border and diagonals gray, and no frame.
    Expect({At(772, 93, kGray), At(834, 49, kGray), At(834, 137, kGray), At(832, 93, kBlack),
            At(770, 90, kBlack)});
    // The hovered path stands on the bar, readable on black (at least 4.5:1).
    auto luminance = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    double text = 0;
    for (int y = 738; y < 768; ++y) {
        for (int x = 0; x < 300; ++x) {
            const QRgb p = m_image.pixel(x, y);
            text = std::max(text, 0.2126 * luminance(qRed(p)) + 0.7152 * luminance(qGreen(p)) +
                                      0.0722 * luminance(qBlue(p)));
        }
    }
    EXPECT_GE((text + 0.05) / 0.05, 4.5);

    // A frame of one tile leaves the rest and says nothing of the bar.
    m_image.fill(0xFF123456);
    m_frame.mousePos = {256, 100}; // the first column of the next tile
    EXPECT_EQ(Paint(QRect(256, 0, 256, 184)).statusText, std::nullopt);
    Expect({At(128, 93, 0xFF123456), At(384, 93, kVeiledGray)});
    EXPECT_EQ(Paint().statusText, QStringLiteral("/photos/photo_1.jpg"));
    Expect({At(128, 93, kGray)});
    m_frame.mousePos = {100, 750}; // the bar hovers no tile
    EXPECT_EQ(Paint().statusText, QString());
    m_frame.pageStart = 4;
    Paint();
    Expect({At(2, 90, kRed), At(384, 93, kBlack)});
}

TEST_F(FullScreenPainterTest, SingleViewCentresThePhotoAndVeilsAllButTheCropRectangle) {
    m_frame.singlePhoto = true;
    CPhoto& photo = Add(Solid(128, 64, kGray), 1);
    // Until its picture comes, the thumbnail stands in at screen size.
    PaintedFrame painted = Paint();
    EXPECT_TRUE(painted.screenImageMissing);
    EXPECT_EQ(painted.statusText, std::nullopt);
    Expect({At(512, 127, kBlack), At(512, 128, kGray), At(1023, 639, kGray), At(512, 640, kBlack)});

    // Odd leftovers: the spare pixel stays right and below. The marker
    // square stands at (20, 20) over the black border.
    photo.screenImage = Solid(501, 301, kDark);
    EXPECT_FALSE(Paint().screenImageMissing);
    Expect({At(260, 400, kBlack), At(261, 233, kDark), At(761, 533, kDark), At(762, 400, kBlack),
            At(500, 232, kBlack), At(500, 534, kBlack), At(25, 19, kRed), At(25, 20, kRed),
            At(30, 25, kRed), At(31, 25, kBlack)});

    m_frame.cropVeil = true;
    m_frame.cropRect = {300, 250, 200, 100};
    Paint();
    Expect({At(300, 250, kDark), At(499, 349, kDark), At(299, 300, kVeiledDark),
            At(500, 300, kVeiledDark), At(400, 249, kVeiledDark), At(400, 350, kVeiledDark),
            At(100, 100, kVeiledBlack), At(1000, 700, kVeiledBlack), At(25, 20, kRed)});

    // Past the end of the list the screen stays black and asks for nothing.
    m_frame.currentIndex = 1;
    EXPECT_FALSE(Paint().screenImageMissing);
    Expect({At(25, 20, kBlack), At(400, 300, kBlack)});
}

} // namespace
} // namespace tivox::test
