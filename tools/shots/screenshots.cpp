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
#include "shots/shot_support.h"
#include "ui/tivox_dlg.h"

namespace {

// Drives of a typical desktop, one of each kind.
std::vector<tivox::CDriveInfo> SampleDrives() {
    using namespace tivox;
    auto drive = [](const char* root, std::uint32_t type, const char* label) {
        CDriveInfo info;
        info.m_root = root;
        info.m_type = type;
        info.m_label = label;
        return info;
    };
    return {
        drive("/", kDriveFixed, ""),
        drive("/home", kDriveFixed, "HOME"),
        drive("/media/anna/EOS_DIGITAL", kDriveRemovable, "EOS_DIGITAL"),
        drive("/media/anna/CDROM", kDriveCdRom, "HOLIDAY_2004"),
        drive("/run/user/1000", kDriveRamDisk, ""),
        drive("/mnt/nas", kDriveRemote, "PHOTOS"),
        drive("/mnt/gone", kDriveNoRootDir, ""),
    };
}

bool Save(QWidget& widget, const QString& path) {
    widget.show();
    widget.activateWindow();
    return tivox::shots::SaveGrab(widget, path);
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
