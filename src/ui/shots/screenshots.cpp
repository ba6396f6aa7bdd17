// tivox-screenshots OUTDIR [LANGUAGE_FILE]: grabs the main window and the drive
// dialog into OUTDIR/main_window.png and OUTDIR/drives.png. With a language
// file the windows come up in that language. scripts/screenshots runs it
// under Xvfb for the pictures of the README.

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QTimer>
#include <QTranslator>
#include <cstdio>

#include "ui/drives_dlg.h"
#include "ui/tivox_dlg.h"

namespace {

// Drives of a typical desktop: one of each picture.
std::vector<tivox::DriveEntry> SampleDrives() {
    using namespace tivox;
    return {
        {"/", "/", "Fixed drive, 38.214.316 KB free of 61.255.652 KB", kDriveFixed, false},
        {"/home", "/home  (HOME)", "Fixed drive, 210.331.008 KB free of 480.113.216 KB",
         kDriveFixed, false},
        {"/media/anna/EOS_DIGITAL", "/media/anna/EOS_DIGITAL  (EOS_DIGITAL)",
         "Removable drive, 7.402.112 KB free of 7.801.344 KB", kDriveRemovable, false},
        {"/media/anna/CDROM", "/media/anna/CDROM  (HOLIDAY_2004)", "CD-ROM drive", kDriveCdRom,
         false},
        {"/run/user/1000", "/run/user/1000", "RAM disk", kDriveRamDisk, false},
        {"/mnt/nas", "/mnt/nas  (PHOTOS)", "Network drive", kDriveRemote, false},
        {"/media/floppy", "/media/floppy", "Floppy drive", kDriveRemovable, true},
        {"/mnt/gone", "/mnt/gone", "Unknown drive", kDriveNoRootDir, false},
    };
}

bool Save(QWidget& widget, const QString& path) {
    widget.show();
    widget.activateWindow();
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents();
    const bool saved = widget.grab().save(path);
    std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(path));
    return saved;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: tivox-screenshots OUTDIR [LANGUAGE_FILE]\n");
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(out);
    QTranslator language;
    if (argc > 2) {
        if (!language.load(QString::fromLocal8Bit(argv[2]))) {
            std::fprintf(stderr, "cannot load %s\n", argv[2]);
            return 1;
        }
        QApplication::installTranslator(&language);
    }
    bool ok = true;
    {
        tivox::CTivoxDlg dialog;
        dialog.Commands().Fields().m_cameraDrive = "/media/anna/EOS_DIGITAL";
        dialog.Commands().Fields().m_baseFolder = "/home/anna/Pictures";
        dialog.Commands().Fields().m_galleryFolder = "/home/anna/Pictures/Galleries";
        dialog.Commands().SetDateFolder(2004, 7, 31);
        dialog.Progress()->setValue(40);
        ok = Save(dialog, out + "/main_window.png") && ok;
        dialog.Progress()->setValue(0);
        tivox::CDrivesDlg drives(SampleDrives, &dialog);
        drives.List()->setCurrentRow(2);
        drives.UpdateDescription();
        ok = Save(drives, out + "/drives.png") && ok;
        drives.hide();
        dialog.hide();
    }
    return ok ? 0 : 1;
}
