// Full Screen Editing from the main dialog: the opening order, a second
// opening, commands and the dialog's end while the window is open, and the
// German texts of the Image Operations window.

#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QTranslator>
#include <filesystem>

#include "controls/icon_button.h"
#include "gui/fullscreen_fixture.h"
#include "gui/gui_fixture.h"
#include "photos/photo.h"
#include "ui/fullscreen_editing.h"
#include "ui/image_ops_dlg.h"
#include "ui/tab_color.h"

namespace tivox::test {
namespace {

struct EditingRig {
    EditingRig() {
        MainDialogFields& f = rig.dlg->Commands().Fields();
        f.m_baseFolder = rig.dir.path();
        f.m_photoFolder = "Photos";
        f.m_tilesX = 3;
        f.m_tilesY = 2;
        f.m_statusBarHeight = 30;
        f.m_showStatusBar = 1;
        rig.dlg->Commands().UpdateData(false);
        std::filesystem::create_directories(Folder());
        for (int i = 0; i < 5; ++i) {
            TestJpegOptions options;
            options.width = 160;
            options.height = 120;
            WriteFile(Folder() + "/p" + std::to_string(i) + ".jpg", MakeJpeg(options));
        }
        editing.Window().SetPrompt(&rig.prompt);
    }
    std::string Folder() const { return rig.dir.path() + "/Photos"; }

    DialogRig rig;
    CFullScreenEditing editing{*rig.dlg};
};

TEST(FullScreenEditing, OpensThePhotoFolderWithTheDialogsTiles) {
    EditingRig e;
    e.rig.dlg->OnFullScreen();
    CFullScreenWnd& window = e.editing.Window();
    ASSERT_TRUE(window.HasWindow());
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.Layout().GetTileCount(), (Size{3, 2}));
    EXPECT_EQ(window.Layout().GetStatusHeight(), 30);
    EXPECT_EQ(e.editing.PhotoList().Count(), 5);
    EXPECT_EQ(e.editing.PhotoList().thumbnailSize, window.GetThumbSize());
    EXPECT_EQ(window.GetPhotoList(), &e.editing.PhotoList());
    EXPECT_EQ(window.GetJpegQuality(), 80);
}

TEST(FullScreenEditing, ASecondOpeningStartsAfresh) {
    EditingRig e;
    e.rig.dlg->OnFullScreen();
    CFullScreenWnd& window = e.editing.Window();
    e.editing.PhotoList().PhotoAt(0)->marker = 2;
    QKeyEvent next(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
    QApplication::sendEvent(&window, &next);
    EXPECT_EQ(window.PageStart(), 0); // five photos fit one page of six
    std::filesystem::remove(e.Folder() + "/p4.jpg");
    e.rig.dlg->OnFullScreen();
    EXPECT_TRUE(window.HasWindow());
    EXPECT_EQ(e.editing.PhotoList().Count(), 4);
    EXPECT_EQ(e.editing.PhotoList().PhotoAt(0)->marker, 0);
    EXPECT_EQ(window.PageStart(), 0);
}

TEST(FullScreenEditing, GetPhotosAndTheDialogsEndCloseTheWindowFirst) {
    EditingRig e;
    e.rig.dlg->OnFullScreen();
    ASSERT_TRUE(e.editing.Window().HasWindow());
    // Get Photos refuses the missing camera drive, but only after the
    // window is gone and the worker stopped.
    e.rig.dlg->OnGetPhotos();
    EXPECT_FALSE(e.editing.Window().HasWindow());
    EXPECT_EQ(e.editing.PhotoList().Count(), 0);
    EXPECT_TRUE(std::filesystem::exists(e.Folder() + "/p0.jpg"));

    e.rig.dlg->OnFullScreen();
    ASSERT_TRUE(e.editing.Window().HasWindow());
    e.rig.dlg->done(QDialog::Accepted);
    EXPECT_FALSE(e.editing.Window().HasWindow());
    EXPECT_EQ(e.editing.PhotoList().Count(), 0);
}

TEST(FullScreenEditing, ImageOperationsWindowSpeaksGerman) {
    QTranslator language;
    ASSERT_TRUE(language.load(QStringLiteral(TIVOX_QM_FILE)));
    QCoreApplication::installTranslator(&language);
    EditingRig e;
    e.rig.dlg->OnFullScreen();
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(50, 50), QPoint(50, 50));
    QApplication::sendEvent(&e.editing.Window(), &menu);
    CImageOpsDlg* dlg = e.editing.Window().ImageOpsDlg();
    ASSERT_NE(dlg, nullptr);
    EXPECT_EQ(dlg->windowTitle(), "Bildbearbeitung");
    const QStringList tabs = {dlg->Tab()->tabText(0), dlg->Tab()->tabText(1),
                              dlg->Tab()->tabText(2), dlg->Tab()->tabText(3)};
    EXPECT_EQ(tabs, (QStringList{"Basis", "Farbe", "Foto", "Web"}));
    EXPECT_EQ(dlg->CommitButton()->text(), QString::fromUtf8("Ü&bernehmen"));
    QStringList labels;
    for (QLabel* label : dlg->Tab()->m_color->findChildren<QLabel*>()) {
        labels << label->text();
    }
    EXPECT_TRUE(labels.contains(QString::fromUtf8("Sättigung")));
    QCoreApplication::removeTranslator(&language);
}

} // namespace
} // namespace tivox::test
