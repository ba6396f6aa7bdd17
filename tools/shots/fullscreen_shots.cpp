// tivox-fullscreen-shots OUTDIR [LANGUAGE_FILE]: paints a folder of sample
// photos, opens it in the full-screen window and grabs tile mode, a single
// photo with the crop overlay and the Image Operations window with each of
// its tabs into OUTDIR. scripts/fullscreen-screenshots runs it under Xvfb for
// the pictures of the README.

#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTranslator>
#include <cmath>
#include <cstdio>

#include "app/main_dialog/settings.h"
#include "app/fullscreen/tool_state.h"
#include "photos/photo.h"
#include "photos/photo_list.h"
#include "platform/bitmap.h"
#include "platform/jpeg_codec.h"
#include "shots/shot_support.h"
#include "ui/fullscreen_wnd.h"
#include "ui/image_ops_dlg.h"

namespace {

using namespace tivox;

// A small landscape: sky, sun and two rows of hills, in a hue of its own.
void PaintScene(Bitmap& image, int seed) {
    const int w = image.Width(), h = image.Height();
    const double hue = seed * 0.61;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const double fx = double(x) / w, fy = double(y) / h;
            double r = 90 + 120 * fy, g = 140 + 80 * fy, b = 235 - 40 * fy; // sky
            const double sun = std::hypot(fx - 0.25 - 0.05 * (seed % 5), fy - 0.25);
            if (sun < 0.08) {
                r = 255, g = 230, b = 120;
            }
            const double hill1 = 0.62 + 0.08 * std::sin(fx * 7 + hue);
            const double hill2 = 0.75 + 0.06 * std::sin(fx * 11 + 2 * hue);
            if (fy > hill1) {
                r = 60 + 40 * std::sin(hue), g = 120 + 30 * std::cos(hue), b = 60;
            }
            if (fy > hill2) {
                r = 40 + 30 * std::cos(hue), g = 90 + 20 * std::sin(hue), b = 40;
            }
            image.SetPixel(x, y,
                           0xFF000000u | (std::uint32_t(r) << 16) | (std::uint32_t(g) << 8) |
                               std::uint32_t(b));
        }
    }
}

bool WriteSamples(const QString& folder, int count) {
    for (int i = 0; i < count; ++i) {
        const bool upright = i % 5 == 3;
        Bitmap image;
        if (!image.Reset(upright ? 600 : 800, upright ? 800 : 600)) {
            return false;
        }
        PaintScene(image, i);
        std::string error;
        char name[32];
        std::snprintf(name, sizeof name, "/IMG_%04d.jpg", 1001 + i);
        if (!EncodeJpegFile(image, 88, folder.toStdString() + name, error)) {
            std::fprintf(stderr, "%s\n", error.c_str());
            return false;
        }
    }
    return true;
}

class ShotOwner final : public IFullScreenOwner {
public:
    explicit ShotOwner(std::string folder) : m_folder(std::move(folder)) {}
    int GetJpegQuality() const override { return 80; }
    std::string GetGalleryFolder() const override { return m_folder + "_gallery"; }
    std::string GetPhotoFolderPath() const override { return m_folder; }
    CSettings& GetSettings() override { return m_settings; }

private:
    std::string m_folder;
    CSettings m_settings;
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: tivox-fullscreen-shots OUTDIR [LANGUAGE_FILE]\n");
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(out);
    QTranslator language;
    if (argc > 2 && language.load(QString::fromLocal8Bit(argv[2]))) {
        QApplication::installTranslator(&language);
    }
    QTemporaryDir temp;
    const QString folder = temp.path() + QStringLiteral("/2004_04_23");
    QDir().mkpath(folder);
    if (!temp.isValid() || !WriteSamples(folder, 14)) {
        std::fprintf(stderr, "could not write the sample photos\n");
        return 1;
    }

    ShotOwner owner(folder.toStdString());
    CPhotoList list;
    CFullScreenWnd window;
    window.Create(QRect(0, 0, 1024, 768));
    window.SetMainDlg(&owner);
    window.Configure(4, 4, 30);
    window.OpenFolder(list, folder.toStdString());
    list.WaitWorker(30000);
    shots::Settle();

    // Tile mode: three marked photos and the mouse over the sixth.
    list.PhotoAt(1)->marker = 1;
    list.PhotoAt(4)->marker = 2;
    list.PhotoAt(6)->marker = 3;
    QMouseEvent move(QEvent::MouseMove, QPointF(400, 300), QPointF(400, 300), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &move);
    bool ok = shots::SaveGrab(window, out + QStringLiteral("/fullscreen_tiles.png"));

    // The Image Operations window over tile mode, then each tab in the
    // single view of the sixth photo.
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(400, 300), QPoint(400, 300));
    QApplication::sendEvent(&window, &menu);
    CImageOpsDlg* dlg = window.ImageOpsDlg();
    QMouseEvent press(QEvent::MouseButtonDblClick, QPointF(400, 300), QPointF(400, 300),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &press);
    const char* tabs[4] = {"basic", "color", "photo", "web"};
    for (int i = 0; i < 4 && dlg; ++i) {
        dlg->Tab()->setCurrentIndex(i);
        dlg->show();
        ok = shots::SaveGrab(
                 *dlg, out + QStringLiteral("/image_ops_%1.png").arg(QLatin1String(tabs[i]))) &&
             ok;
    }

    // The single photo with a crop rectangle at 10x15 standing on it.
    if (dlg) {
        dlg->SelectTool(ModeCrop10x15);
        dlg->hide();
    }
    auto mouse = [&](QEvent::Type type, int x, int y, Qt::MouseButtons held) {
        QMouseEvent event(type, QPointF(x, y), QPointF(x, y),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held,
                          Qt::NoModifier);
        QApplication::sendEvent(&window, &event);
    };
    mouse(QEvent::MouseButtonPress, 260, 170, Qt::LeftButton);
    mouse(QEvent::MouseMove, 700, 400, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, 760, 400, Qt::NoButton);
    ok = shots::SaveGrab(window, out + QStringLiteral("/fullscreen_crop.png")) && ok;
    window.DestroyWindow();
    return ok ? 0 : 1;
}
