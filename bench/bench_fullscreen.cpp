// Opens a folder of small photos in the full-screen window, as the main
// dialog does, and measures the time from the call that opens the folder to
// the first painted frame, the time until every thumbnail is made, and the
// memory before and after.
// Usage: bench_fullscreen FOLDER [COUNT]   (the folder is filled when short)
//
// With --4k: a 3840 x 2160 screen with 2 x 2 tiles over COUNT hard links to
// one 12 MP photo (with a 160 x 120 EXIF thumbnail), the thumbnail memory at
// its default; reports the time from a jump to a far page to its first real
// thumbnail, what the jump shows at once, and the memory after paging to the
// end and back, and the peak.
// Usage: bench_fullscreen --4k FOLDER [COUNT]

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QPainter>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <random>
#include <string>
#include <thread>

#include "app/main_dialog/settings.h"
#include "photo_writer/test_jpeg.h"
#include "photos/photo_list.h"
#include "ui/fullscreen_wnd.h"

namespace {

using namespace tivox;

long StatusKiB(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string line;
    const std::string prefix = std::string(key) + ":";
    while (std::getline(status, line)) {
        if (line.rfind(prefix, 0) == 0) {
            return std::stol(line.substr(prefix.size()));
        }
    }
    return 0;
}

int CountPhotos(const std::string& folder) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        count += entry.path().extension() == ".jpg" ? 1 : 0;
    }
    return count;
}

void FillFolder(const std::string& folder, int count) {
    std::filesystem::create_directories(folder);
    for (int i = CountPhotos(folder); i < count; ++i) {
        test::TestJpegOptions options;
        options.width = 640;
        options.height = 480;
        options.pattern = test::Pattern::Noise;
        options.seed = std::uint32_t(i + 1);
        char name[32];
        std::snprintf(name, sizeof name, "/photo_%05d.jpg", i);
        test::WriteFile(folder + name, test::MakeJpeg(options));
    }
}

class BenchOwner final : public IFullScreenOwner {
public:
    int GetJpegQuality() const override { return 80; }
    std::string GetGalleryFolder() const override { return {}; }
    std::string GetPhotoFolderPath() const override { return {}; }
    CSettings& GetSettings() override { return m_settings; }

private:
    CSettings m_settings;
};

void MakeLinkedFolder(const std::string& folder, int count) {
    namespace fs = std::filesystem;
    fs::create_directories(folder);
    const std::string first = folder + "/photo_00000.jpg";
    if (!fs::exists(first)) {
        test::TestJpegOptions options = test::Picture(4000, 3000, test::Pattern::Noise);
        test::CameraExif exif;
        exif.thumbnail = test::SmallJpeg(160, 120);
        options.exif = test::CameraExifPayload(exif);
        test::WriteFile(first, test::MakeJpeg(options));
    }
    for (int i = 1; i < count; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "/photo_%05d.jpg", i);
        std::error_code ec;
        fs::create_hard_link(first, folder + name, ec);
    }
}

double Ms(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e6;
}

// Runs the event loop until the window has painted a frame: a freshly shown
// window paints once the platform says it is exposed, so repaint() alone
// would return before anything is drawn.
class PaintWatch final : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
    bool painted = false;
};

void WaitForFirstFrame(QWidget& window) {
    PaintWatch watch;
    window.installEventFilter(&watch);
    window.update();
    while (!watch.painted) {
        QApplication::processEvents(QEventLoop::AllEvents);
    }
    window.removeEventFilter(&watch);
}

// The floor of any first frame: a fresh window of the same size that paints
// black and nothing else, from its creation to its first painted frame.
class BlackWindow final : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Qt::black); }
};

double BlackFrameMs(const QRect& area) {
    QElapsedTimer timer;
    timer.start();
    BlackWindow window;
    window.setGeometry(area);
    window.show();
    WaitForFirstFrame(window);
    return Ms(timer);
}

// Shows the page from `first` as the window does on a page turn, and paints.
void ShowPage(CPhotoList& list, CFullScreenWnd& window, int first) {
    list.SetVisibleRange(first, 4);
    window.repaint();
}

int Bench4k(const std::string& folder, int count) {
    MakeLinkedFolder(folder, count);
    const double blackMs = BlackFrameMs(QRect(0, 0, 3840, 2160));
    BenchOwner owner;
    CPhotoList list;
    CFullScreenWnd window;
    QElapsedTimer timer;
    timer.start();
    window.Create(QRect(0, 0, 3840, 2160));
    window.SetMainDlg(&owner);
    window.Configure(2, 2, 0);
    window.OpenFolder(list, folder, std::size_t(CSettings().m_thumbnailMemory) << 20);
    WaitForFirstFrame(window);
    const double firstFrameMs = Ms(timer);
    const Size thumb = window.GetThumbSize();
    std::printf("photos                     %d hard links to one 4000 x 3000 photo\n",
                list.Count());
    std::printf("screen, tiles              3840 x 2160, 2 x 2, thumbnails within %d x %d\n",
                thumb.width, thumb.height);
    std::printf("open to first frame        %.2f ms (a black first frame alone: %.2f ms)\n",
                firstFrameMs, blackMs);
    list.WaitWorker(600000); // the neighbours fill the budget
    std::printf("budget filled after        %.2f s, %.1f MiB of thumbnails, resident %.1f MiB\n",
                Ms(timer) / 1000.0, list.ThumbnailBytes() / 1048576.0, StatusKiB("VmRSS") / 1024.0);

    // Jumps to far pages: what shows at once, and when the real thumbnails come.
    std::mt19937 random(7);
    double worstFirst = 0, sumFirst = 0, worstEach = 0;
    int previewsAtOnce = 0;
    const int jumps = 10;
    for (int j = 0; j < jumps; ++j) {
        const int page = int(random() % std::uint32_t(count / 4));
        timer.restart();
        ShowPage(list, window, page * 4);
        const double shownMs = Ms(timer);
        for (int i = 0; i < 4; ++i) {
            previewsAtOnce += list.PhotoAt(page * 4 + i)->ViewThumbnail().image ? 1 : 0;
        }
        int ready = 0;
        double firstMs = 0;
        while (ready < 4) {
            std::this_thread::sleep_for(std::chrono::microseconds(200));
            ready = 0;
            for (int i = 0; i < 4; ++i) {
                ready += list.PhotoAt(page * 4 + i)->thumbnailReady.load() ? 1 : 0;
            }
            if (ready > 0 && firstMs == 0) {
                firstMs = Ms(timer);
            }
        }
        const double allMs = Ms(timer);
        worstFirst = std::max(worstFirst, firstMs);
        sumFirst += firstMs;
        worstEach = std::max(worstEach, allMs / 4);
        if (j == 0) {
            std::printf("jump shown (previews read)  %.2f ms\n", shownMs);
        }
    }
    std::printf("far jumps                  %d: tiles drawn at once %d of %d\n", jumps,
                previewsAtOnce, jumps * 4);
    std::printf("jump to first thumbnail    mean %.1f ms, worst %.1f ms (a page: worst %.1f ms "
                "a thumbnail)\n",
                sumFirst / jumps, worstFirst, worstEach);

    // Holding Page Down to the end and Page Up back, 5 ms a page.
    timer.restart();
    for (int first = 0; first < count; first += 4) {
        ShowPage(list, window, first);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    for (int first = (count - 1) / 4 * 4; first >= 0; first -= 4) {
        ShowPage(list, window, first);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    list.WaitWorker(600000);
    std::printf("paged to the end and back  %.1f s; then %.1f MiB of thumbnails, resident "
                "%.1f MiB\n",
                Ms(timer) / 1000.0, list.ThumbnailBytes() / 1048576.0, StatusKiB("VmRSS") / 1024.0);
    std::printf("peak resident              %.1f MiB\n", StatusKiB("VmHWM") / 1024.0);
    window.DestroyWindow();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    mallopt(M_MMAP_THRESHOLD, 128 * 1024); // as the program sets it at its start
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_fullscreen FOLDER [COUNT]\n");
        return 2;
    }
    if (std::string(argv[1]) == "--4k" && argc > 2) {
        return Bench4k(argv[2], argc > 3 ? std::atoi(argv[3]) : 10000);
    }
    const std::string folder = argv[1];
    const int count = argc > 2 ? std::atoi(argv[2]) : 2000;
    FillFolder(folder, count);

    BenchOwner owner;
    CPhotoList list;
    CFullScreenWnd window;
    const long rssBefore = StatusKiB("VmRSS");

    QElapsedTimer timer;
    timer.start();
    // The opening order of the main dialog.
    if (!window.HasWindow()) {
        window.Create(QRect(0, 0, 1024, 768)); // the screen of the report, on any platform
    }
    window.SetMainDlg(&owner);
    window.Configure(4, 4, 30);
    window.OpenFolder(list, folder);
    WaitForFirstFrame(window);
    const double firstFrameMs = double(timer.nsecsElapsed()) / 1e6;
    int readyAtFirstFrame = 0;
    for (int i = 0; i < list.Count(); ++i) {
        readyAtFirstFrame += list.PhotoAt(i)->thumbnailReady.load() ? 1 : 0;
    }

    while (!list.WaitWorker(2)) {
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QApplication::processEvents();
    const double allThumbsS = double(timer.nsecsElapsed()) / 1e9;
    const long rssAfter = StatusKiB("VmRSS");
    const Size thumb = window.GetThumbSize();
    const double thumbBytes = double(thumb.width) * thumb.height * 4 * list.Count();

    std::printf("photos                     %d (640 x 480)\n", list.Count());
    std::printf("screen, tiles              %d x %d, 4 x 4, thumbnails %d x %d\n",
                window.GetScreenSize().width, window.GetScreenSize().height, thumb.width,
                thumb.height);
    std::printf("open to first frame        %.2f ms (%d thumbnails ready then)\n", firstFrameMs,
                readyAtFirstFrame);
    std::printf("all thumbnails             %.3f s (%.0f per second)\n", allThumbsS,
                list.Count() / allThumbsS);
    std::printf("memory before opening      %.1f MiB\n", rssBefore / 1024.0);
    std::printf("memory after thumbnails    %.1f MiB (+%.1f MiB; thumbnail pixels %.1f MiB)\n",
                rssAfter / 1024.0, (rssAfter - rssBefore) / 1024.0, thumbBytes / 1048576.0);
    window.DestroyWindow();
    std::printf("thumbnails_seconds %.6f\n", allThumbsS);
    return 0;
}
