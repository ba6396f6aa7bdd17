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

void Pick(QWidget* modal, int row, bool ok = true) {
    auto* dlg = qobject_cast<CDrivesDlg*>(modal);
    ASSERT_NE(dlg, nullptr);
    if (row >= 0) {
        dlg->List()->setCurrentRow(row);
        dlg->UpdateDescription();
    }
    if (ok)
        dlg->accept();
    else
        dlg->reject();
}

TEST(DrivesDialog, ListsEveryDriveWithItsTextAndPicture) {
    FakeDrives fake;
    fake.drives.push_back(Drive("/mnt/nas", kDriveRemote, "NAS"));
    CDrivesDlg dlg(fake.Lister());
    EXPECT_EQ(dlg.windowTitle(), "Drives");
    ASSERT_EQ(dlg.List()->count(), 4);
    EXPECT_EQ(dlg.List()->item(0)->text(), "/");
    EXPECT_EQ(dlg.List()->item(1)->text(), "/media/a/CARD  (CARD)");
    EXPECT_EQ(dlg.List()->item(2)->text(), "/media/a/READER");
    EXPECT_EQ(dlg.List()->item(3)->text(), "/mnt/nas  (NAS)");
    // The reader without a card shows the removable picture, like the card.
    const QImage card = dlg.List()->item(1)->icon().pixmap(16, 16).toImage();
    EXPECT_EQ(dlg.List()->item(2)->icon().pixmap(16, 16).toImage(), card);
    EXPECT_NE(dlg.List()->item(0)->icon().pixmap(16, 16).toImage(), card);
    EXPECT_EQ(dlg.Selected(), -1);
    EXPECT_EQ(dlg.GetSelectedDrive(), nullptr);
}

TEST(DrivesDialog, ClickShowsTheDescriptionAndRefreshKeepsIt) {
    FakeDrives fake;
    CDrivesDlg dlg(fake.Lister());
    dlg.show();
    QListWidget* list = dlg.List();
    const QRect second = list->visualItemRect(list->item(1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second.center());
    EXPECT_EQ(dlg.Selected(), 1);
    EXPECT_EQ(dlg.Description(), "Removable Drive");

    fake.drives.push_back(Drive("/media/a/STICK", kDriveRemovable, "STICK"));
    QTest::mouseClick(dlg.findChild<QPushButton*>("refresh"), Qt::LeftButton);
    ASSERT_EQ(list->count(), 4);
    EXPECT_EQ(list->item(3)->text(), "/media/a/STICK  (STICK)");
    EXPECT_EQ(dlg.Description(), "Removable Drive");
    ASSERT_NE(dlg.GetSelectedDrive(), nullptr);
    EXPECT_EQ(dlg.GetSelectedDrive()->m_root, "/media/a/CARD");

    // A selection that points behind the list after a refresh counts as none.
    fake.drives.resize(1);
    dlg.OnRefresh();
    EXPECT_EQ(dlg.GetSelectedDrive(), nullptr);
}

TEST(DrivesDialog, ArrowKeysShowTheDriveSelectedBeforeTheKey) {
    FakeDrives fake;
    CDrivesDlg dlg(fake.Lister());
    dlg.show();
    dlg.List()->setCurrentRow(0);
    dlg.List()->setFocus();
    QTest::keyClick(dlg.List(), Qt::Key_Down);
    EXPECT_EQ(dlg.Selected(), 0);
    EXPECT_EQ(dlg.Description(), "Hard Disc");
    QTest::keyClick(dlg.List(), Qt::Key_Down);
    EXPECT_EQ(dlg.Selected(), 1);
}

struct ChoiceCase {
    const char* name;
    int row; // -1: none selected
    bool ok; // OK or Cancel
    std::vector<PromptAnswer> answers;
    std::size_t questions;
    const char* wantDrive;
};

class CameraDriveChoice : public ::testing::TestWithParam<ChoiceCase> {};

TEST_P(CameraDriveChoice, TakesTheDriveAsTheUserSays) {
    const ChoiceCase& c = GetParam();
    FakeDrives fake;
    DialogRig rig;
    rig.dlg->SetDriveLister(fake.Lister());
    rig.dlg->Commands().Fields().m_cameraDrive = "/media/old";
    rig.dlg->Edit(DlgItem::BaseFolder)->setText("/typed/not/read");
    rig.prompt.answers = c.answers;

    WithModal([&](QWidget* modal) { Pick(modal, c.row, c.ok); },
              [&] {
                  rig.dlg->OnSelectCameraDrive();
                  return 0;
              });

    EXPECT_EQ(rig.dlg->Fields().m_cameraDrive, c.wantDrive);
    ASSERT_EQ(rig.prompt.shown.size(), c.questions);
    if (c.questions) {
        EXPECT_EQ(rig.prompt.shown[0].text,
                  "The drive you selected is not a removable drive.\nAre you sure that this is "
                  "your digital camera?");
        EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Question);
        EXPECT_EQ(rig.prompt.shown[0].defaultAnswer, PromptAnswer::No);
    }
    if (std::string(c.wantDrive) != "/media/old") {
        // The write puts the fields back: the typed text is gone.
        EXPECT_EQ(rig.dlg->DriveLabel()->text().toStdString(), c.wantDrive);
        EXPECT_NE(rig.dlg->Edit(DlgItem::BaseFolder)->text(), "/typed/not/read");
    }
}

INSTANTIATE_TEST_SUITE_P(
    DrivesDialog, CameraDriveChoice,
    ::testing::Values(ChoiceCase{"RemovableWithoutQuestion", 1, true, {}, 0, "/media/a/CARD"},
                      ChoiceCase{"CancelKeepsTheDrive", 1, false, {}, 0, "/media/old"},
                      ChoiceCase{"OkWithoutSelection", -1, true, {}, 0, "/media/old"},
                      ChoiceCase{
                          "HardDiscAnsweredNo", 0, true, {PromptAnswer::No}, 1, "/media/old"},
                      ChoiceCase{"HardDiscAnsweredYes", 0, true, {PromptAnswer::Yes}, 1, "/"}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace tivox::test
