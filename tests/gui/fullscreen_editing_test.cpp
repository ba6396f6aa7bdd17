// Full Screen Editing from the main dialog: the opening order, a second
// opening, and commands and the dialog's end while the window is open.

#include <filesystem>
#include <gtest/gtest.h>

#include "gui/gui_fixture.h"
#include "photos/photo.h"
#include "ui/fullscreen_editing.h"

namespace tivox::test {
namespace {

struct EditingRig {
    EditingRig() {
        MainDialogFields& f = rig.dlg->Commands().Fields();
        f.m_baseFolder = rig.dir.path();
        f.m_photoFolder = "Photos";
        f.m_tilesX = 3;
        f.m_tilesY = 2;
        f.m_showStatusBar = 1;
        f.m_statusBarHeight = 30;
        rig.dlg->Commands().UpdateData(false);
        TestJpegOptions options;
        options.width = 160;
        options.height = 120;
        for (int i = 0; i < 5; ++i)
            PutFile(Folder() + "/p" + std::to_string(i) + ".jpg", MakeJpeg(options));
        editing.Window().SetPrompt(&rig.prompt);
    }
    std::string Folder() const { return rig.dir.path() + "/Photos"; }

    DialogRig rig;
    CFullScreenEditing editing{*rig.dlg};
};

TEST(FullScreenEditing, OpensAfreshAndClosesBeforeOtherCommands) {
    EditingRig e;
    e.rig.dlg->OnFullScreen();
    CFullScreenWnd& window = e.editing.Window();
    CPhotoList& list = e.editing.PhotoList();
    ASSERT_TRUE(window.isVisible());
    EXPECT_EQ(window.Layout().GetTileCount(), (Size{3, 2}));
    EXPECT_EQ(window.Layout().GetStatusHeight(), 30);
    EXPECT_EQ(list.Count(), 5);
    // A second opening reads the folder anew and forgets the marks.
    list.PhotoAt(0)->marker = 2;
    std::filesystem::remove(e.Folder() + "/p4.jpg");
    e.rig.dlg->OnFullScreen();
    EXPECT_EQ(list.Count(), 4);
    EXPECT_EQ(list.PhotoAt(0)->marker, 0);
    // Get Photos refuses the missing camera drive, but only after the
    // window is gone and the worker stopped.
    e.rig.dlg->OnGetPhotos();
    EXPECT_FALSE(window.HasWindow());
    EXPECT_EQ(list.Count(), 0);
    EXPECT_TRUE(std::filesystem::exists(e.Folder() + "/p0.jpg"));
    // So does the dialog's end.
    e.rig.dlg->OnFullScreen();
    ASSERT_TRUE(window.HasWindow());
    e.rig.dlg->done(QDialog::Accepted);
    EXPECT_FALSE(window.HasWindow());
    EXPECT_EQ(list.Count(), 0);
}

} // namespace
} // namespace tivox::test
