// Get Photos and Restore from Backup Folder from the dialog's buttons on a
// generated camera card; the transfer itself is tested in tests/acquire.

#include <QLineEdit>
#include <QProgressBar>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "controls/icon_button.h"
#include "gui_fixture.h"
#include "support/sample_card.h"

namespace fs = std::filesystem;

namespace tivox::test {
namespace {

TEST(DialogTransfer, GetPhotosAndRestoreFromTheButtons) {
    DialogRig rig;
    const std::string card = rig.dir.File("card"), base = rig.dir.File("base");
    std::vector<CardFile> written;
    std::string error;
    ASSERT_TRUE(WriteSampleCard(card, kDefaultCardPhotos, written, error)) << error;
    MakeFolder(base);
    // The card is mounted from a USB disc in a fake mount table.
    DriveSources& sources = rig.dlg->Commands().m_driveSources;
    sources.mountInfo = rig.dir.File("mountinfo");
    sources.sysfs = rig.dir.File("sys");
    sources.labels = rig.dir.File("labels");
    const std::string disc = sources.sysfs + "/devices/pci0/usb1/1-1/block/sdb";
    PutFile(disc + "/removable", "1\n");
    PutFile(disc + "/size", "1000\n");
    MakeFolder(sources.sysfs + "/dev/block");
    fs::create_directory_symlink(fs::relative(disc, sources.sysfs + "/dev/block"),
                                 sources.sysfs + "/dev/block/8:16");
    PutFile(sources.mountInfo, "40 1 8:16 / " + card + " rw - vfat /dev/sdb rw\n");
    rig.dlg->Commands().Fields().m_cameraDrive = card;
    rig.dlg->Commands().UpdateData(false);
    // The click reads the controls first.
    rig.dlg->Edit(DlgItem::BaseFolder)->setText(QString::fromStdString(base));
    rig.dlg->Edit(DlgItem::PhotoFolder)->setText("Typed");
    std::vector<int> positions;
    QObject::connect(rig.dlg->Progress(), &QProgressBar::valueChanged,
                     [&](int value) { positions.push_back(value); });
    rig.dlg->show();

    QTest::mouseClick(rig.dlg->Button("getPhotos"), Qt::LeftButton);
    EXPECT_EQ(rig.prompt.Texts(), std::vector<std::string>{"Finished copying."});
    const auto photos = FileNames(base + "/Typed");
    ASSERT_FALSE(photos.empty());
    EXPECT_EQ(std::count(photos.begin(), photos.end(), "20040423_150053.jpg"), 1);
    EXPECT_EQ(FileNames(base + "/Typed_bak").size(), photos.size());
    // The bar runs up to one step per photo and back to 0.
    EXPECT_EQ(rig.dlg->Progress()->maximum(), int(photos.size()));
    EXPECT_EQ(*std::max_element(positions.begin(), positions.end()), int(photos.size()));
    EXPECT_EQ(positions.back(), 0);
    EXPECT_FALSE(rig.dlg->IsBusy());

    fs::remove(base + "/Typed/" + photos.front());
    PutFile(base + "/Typed/stray.jpg", "x");
    rig.prompt.shown.clear();
    QTest::mouseClick(rig.dlg->Button("restore"), Qt::LeftButton);
    ASSERT_EQ(rig.prompt.shown.size(), 2u);
    EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Question);
    EXPECT_EQ(rig.prompt.shown[1].text, "Finished restoring the photo folder from its backup.");
    // Every backup file is back, renamed by the rule again; the stray is gone.
    const auto restored = FileNames(base + "/Typed");
    EXPECT_EQ(restored.size(), photos.size());
    EXPECT_EQ(std::count(restored.begin(), restored.end(), "stray.jpg"), 0);
    EXPECT_EQ(std::count(restored.begin(), restored.end(), photos.front()), 1);
}

} // namespace
} // namespace tivox::test
