// tivox: the photo transfer and editing window.

#include <QApplication>
#include <malloc.h>

#include "ui/tivox_app.h"

int main(int argc, char** argv) {
    // Thumbnails of some megabytes come and go all the time. glibc raises
    // its mmap threshold after the first such block is freed and then serves
    // them from heaps that fragment: paging through 10,000 photos at 4K grew
    // to 2.6 GiB resident for 0.5 GiB of thumbnails. A fixed threshold gives
    // each big block back to the system when it goes.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TivoxPlus"));
    QApplication::setDesktopFileName(QStringLiteral("tivoxplus"));
    tivox::CTivoxApp tivoxApp(app);
    return tivoxApp.Run();
}
