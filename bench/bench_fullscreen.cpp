// Opens a folder of small photos in the full-screen window, as the main
// dialog does, and measures the time from the call that opens the folder to
// the first painted frame, the time until every thumbnail is made, and the
// memory before and after.
// Usage: bench_fullscreen FOLDER [COUNT]   (the folder is filled when short)

#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/settings.h"
#include "photos/photo_list.h"
#include "support/test_jpeg.h"
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

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_fullscreen FOLDER [COUNT]\n");
        return 2;
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
    list.Clear();
    if (!window.HasWindow()) {
        window.Create(QRect(0, 0, 1024, 768)); // the screen of the report, on any platform
    }
    window.SetMainDlg(&owner);
    window.Configure(4, 4, 30);
    list.SetThumbnailSize(window.GetThumbSize());
    list.SetWindow(&window);
    list.Open(folder);
    window.SetPhotoList(&list);
    window.repaint();
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
