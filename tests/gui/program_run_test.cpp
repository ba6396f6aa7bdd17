// The program as it runs: the main dialog shown as CTivoxApp shows it, Full
// Screen Editing beside it, and every key and click sent through the window
// system, where focus and modality decide who gets them.

#include <QGuiApplication>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <filesystem>
#include <gtest/gtest.h>

#include "app/main_dialog/settings.h"
#include "controls/icon_button.h"
#include "gui_fixture.h"
#include "photos/photo.h"
#include "ui/fullscreen_editing.h"
#include "ui/image_ops_dlg.h"
#include "ui/tivox_app.h"

namespace tivox::test {
namespace {

Bytes ReadBytes(const std::string& path) {
    Bytes bytes;
    EXPECT_TRUE(ReadFile(path, bytes));
    return bytes;
}

// Runs the dialog as the program does while `user` acts from inside its
// event loop; a user who stops early still ends the dialog.
void RunWithUser(CTivoxDlg& dialog, const std::function<void()>& user) {
    QTimer::singleShot(0, [&] {
        user();
        if (dialog.isVisible())
            dialog.done(QDialog::Rejected);
    });
    CTivoxApp::RunDialog(dialog);
}

TEST(ProgramRun, FullScreenEditingTakesInputBesideTheDialog) {
    DialogRig rig;
    const std::string photo0 = rig.PhotosToEdit(6, 2, 2) + "/p0.jpg";
    const Bytes original = ReadBytes(photo0);
    CFullScreenEditing editing{*rig.dlg};
    CFullScreenWnd& window = editing.Window();
    CPhotoList& list = editing.PhotoList();
    window.SetPrompt(&rig.prompt);

    RunWithUser(*rig.dlg, [&] {
        ClickOn(rig.dlg->Button("fullScreen"));
        ASSERT_TRUE(window.isVisible());
        ASSERT_TRUE(list.WaitWorker(20000));
        EXPECT_EQ(QGuiApplication::focusWindow(), window.windowHandle());
        QWindow* photos = window.windowHandle();
        QTest::keyClick(photos, Qt::Key_PageDown);
        EXPECT_EQ(window.PageStart(), 4);
        QTest::keyClick(photos, Qt::Key_G);
        QTest::mouseMove(photos, QPoint(100, 100));
        QTest::mouseClick(photos, Qt::LeftButton, {}, QPoint(100, 100));
        EXPECT_EQ(list.PhotoAt(4)->marker, 2);

        // The Image Operations window opens wholly on the screen, however
        // near the corner the click was, and gives the keys back.
        const QRect screen = window.geometry();
        const QPoint corner = screen.bottomRight() - QPoint(3, 3);
        QTest::mouseMove(photos, corner);
        QTest::mouseClick(photos, Qt::RightButton, {}, corner);
        CImageOpsDlg* tools = window.ImageOpsDlg();
        ASSERT_TRUE(tools && tools->isVisible());
        EXPECT_TRUE(screen.contains(tools->frameGeometry())) << tools->frameGeometry().x();
        ClickOn(tools->ProcessAll());
        QTest::keyClick(tools->windowHandle(), Qt::Key_PageUp);
        QTest::keyClick(tools->windowHandle(), Qt::Key_Space);
        EXPECT_EQ(window.PageStart(), 0);
        EXPECT_EQ(list.PhotoAt(3)->marker, 2); // the tile under the corner
        QTest::keyClick(tools->windowHandle(), Qt::Key_Escape);
        EXPECT_FALSE(tools->isVisible());

        QTest::keyClick(photos, Qt::Key_Escape);
        EXPECT_FALSE(window.HasWindow());
        // Open once more with an edit pending: Exit in the dialog asks; Cancel
        // keeps both open, Yes commits and ends both.
        ClickOn(rig.dlg->Button("fullScreen"));
        ASSERT_TRUE(window.HasWindow() && list.WaitWorker(20000));
        list.PhotoAt(0)->edits.AddRedEyePoint({1, 1});
        rig.prompt.answers = {PromptAnswer::Cancel, PromptAnswer::Yes};
        ClickOn(rig.dlg->Button("exit"));
        EXPECT_TRUE(window.HasWindow() && rig.dlg->isVisible());
        ClickOn(rig.dlg->Button("exit"));
    });
    EXPECT_NE(ReadBytes(photo0), original);
    EXPECT_FALSE(rig.dlg->isVisible());
    EXPECT_EQ(rig.dlg->result(), QDialog::Accepted);
    EXPECT_FALSE(window.HasWindow());
    EXPECT_EQ(list.Count(), 0);
    CSettings stored;
    ASSERT_TRUE(stored.LoadFile(rig.dir.File("TivoxSettings.dat")));
    EXPECT_EQ(stored.m_tilesX, 2u);
}

} // namespace
} // namespace tivox::test
