// The drive dialog and the choice of the camera drive.

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "gui_fixture.h"
#include "ui/drives_dlg.h"

namespace tivox::test {
namespace {

CDriveInfo Drive(const char* root, std::uint32_t type, const char* label = "") {
    CDriveInfo drive;
    drive.m_root = root;
    drive.m_type = type;
    drive.m_label = label;
    return drive;
}

// The drives the lister gives; tests change it to let a drive come or go.
struct FakeDrives {
    std::vector<CDriveInfo> drives{Drive("/", kDriveFixed),
                                   Drive("/media/a/CARD", kDriveRemovable, "CARD"),
                                   Drive("/media/a/READER", kDriveRemovable)};
    DriveLister Lister() {
        return [this] { return drives; };
    }
};

TEST(DrivesDialog, ListClickRefreshAndArrowKeys) {
    FakeDrives fake;
    CDrivesDlg dlg(fake.Lister());
    dlg.show();
    QListWidget* list = dlg.List();
    EXPECT_EQ(dlg.windowTitle(), "Drives");
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->item(0)->text(), "/");
    EXPECT_EQ(list->item(1)->text(), "/media/a/CARD  (CARD)");
    EXPECT_EQ(list->item(2)->text(), "/media/a/READER");
    // The reader without a card shows the removable picture, like the card.
    auto picture = [&](int row) { return list->item(row)->icon().pixmap(16, 16).toImage(); };
    EXPECT_EQ(picture(2), picture(1));
    EXPECT_NE(picture(0), picture(1));
    EXPECT_EQ(dlg.GetSelectedDrive(), nullptr);

    QTest::mouseClick(dlg.windowHandle(), Qt::LeftButton, {},
                      list->viewport()->mapTo(&dlg, list->visualItemRect(list->item(1)).center()));
    EXPECT_EQ(dlg.Selected(), 1);
    EXPECT_EQ(dlg.Description(), "Removable Drive");
    // Refresh lists a new drive and keeps the selection.
    fake.drives.push_back(Drive("/media/a/STICK", kDriveRemovable, "STICK"));
    ClickOn(dlg.findChild<QPushButton*>("refresh"));
    ASSERT_EQ(list->count(), 4);
    EXPECT_EQ(dlg.Description(), "Removable Drive");
    ASSERT_NE(dlg.GetSelectedDrive(), nullptr);
    EXPECT_EQ(dlg.GetSelectedDrive()->m_root, "/media/a/CARD");
    // An arrow key shows the drive selected before the key.
    list->setCurrentRow(0);
    list->setFocus();
    QTest::keyClick(dlg.windowHandle(), Qt::Key_Down);
    EXPECT_EQ(dlg.Selected(), 0);
    EXPECT_EQ(dlg.Description(), "Hard Disc");
    // A selection behind the list after a refresh counts as none.
    fake.drives.resize(0);
    dlg.OnRefresh();
    EXPECT_EQ(dlg.GetSelectedDrive(), nullptr);
}

TEST(DrivesDialog, CameraDriveIsTakenAsTheUserSays) {
    const std::vector<std::string> question{"The drive you selected is not a removable drive.\n"
                                            "Are you sure that this is your digital camera?"};
    const char* const old = "/media/old";
    const struct {
        int row; // -1: none selected
        bool ok, asked;
        PromptAnswer answer; // to the question for the fixed disc in row 0
        const char* wantDrive;
    } cases[] = {{1, true, false, {}, "/media/a/CARD"},
                 {1, false, false, {}, old},
                 {-1, true, false, {}, old},
                 {0, true, true, PromptAnswer::No, old},
                 {0, true, true, PromptAnswer::Yes, "/"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.row << (c.ok ? " OK " : " cancel ") << int(c.answer));
        FakeDrives fake;
        DialogRig rig;
        rig.dlg->SetDriveLister(fake.Lister());
        rig.dlg->Commands().Fields().m_cameraDrive = old;
        rig.dlg->Edit(DlgItem::BaseFolder)->setText("/typed/not/read");
        rig.prompt.answers = {c.answer};
        WithModal(
            [&](QWidget* modal) {
                auto* dlg = qobject_cast<CDrivesDlg*>(modal);
                ASSERT_NE(dlg, nullptr);
                dlg->List()->setCurrentRow(c.row);
                dlg->UpdateDescription();
                c.ok ? dlg->accept() : dlg->reject();
            },
            [&] {
                rig.dlg->OnSelectCameraDrive();
                return 0;
            });
        EXPECT_EQ(rig.dlg->Fields().m_cameraDrive, c.wantDrive);
        EXPECT_EQ(rig.prompt.Texts(), c.asked ? question : std::vector<std::string>{});
        if (c.asked) {
            EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Question);
            EXPECT_EQ(rig.prompt.shown[0].defaultAnswer, PromptAnswer::No);
        }
        if (std::string(c.wantDrive) != old) { // written back with every field
            EXPECT_EQ(rig.dlg->DriveLabel()->text().toStdString(), c.wantDrive);
            EXPECT_NE(rig.dlg->Edit(DlgItem::BaseFolder)->text(), "/typed/not/read");
        }
    }
}

} // namespace
} // namespace tivox::test
