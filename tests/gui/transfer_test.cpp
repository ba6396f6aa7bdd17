// Get Photos and Restore from Backup Folder, driven from the dialog's
// buttons on a generated camera card.

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

// A dialog whose camera drive is a generated card, mounted (in a fake mount
// table) from a USB disc.
struct CardRig {
    CardRig() {
        card = rig.dir.File("card");
        base = rig.dir.File("base");
        fs::create_directories(base);
        std::vector<CardFile> written;
        std::string error;
        EXPECT_TRUE(WriteSampleCard(card, kDefaultCardPhotos, written, error)) << error;
        for (const CardFile& f : written) {
            std::string lower = f.path;
            std::transform(lower.begin(), lower.end(), lower.begin(), ::tolower);
            if (lower.size() > 4 && lower.compare(lower.size() - 4, 4, ".jpg") == 0)
                ++jpgFiles;
        }
        DriveSources& sources = rig.dlg->Commands().m_driveSources;
        sources.mountInfo = rig.dir.File("mountinfo");
        sources.sysfs = rig.dir.File("sys");
        sources.labels = rig.dir.File("labels");
        const std::string disc = sources.sysfs + "/devices/pci0/usb1/1-1/block/sdb";
        PutFile(disc + "/removable", "1\n");
        PutFile(disc + "/size", "1000\n");
        fs::create_directories(sources.sysfs + "/dev/block");
        fs::create_directory_symlink(fs::relative(disc, sources.sysfs + "/dev/block"),
                                     sources.sysfs + "/dev/block/8:16");
        PutFile(sources.mountInfo, "40 1 8:16 / " + card + " rw - vfat /dev/sdb rw\n");

        MainDialogFields& f = rig.dlg->Commands().Fields();
        f.m_cameraDrive = card;
        f.m_baseFolder = base;
        f.m_photoFolder = "Photos";
        rig.dlg->Commands().UpdateData(false);
        QObject::connect(rig.dlg->Progress(), &QProgressBar::valueChanged,
                         [this](int value) { positions.push_back(value); });
    }
    std::string Photos() const { return base + "/Photos"; }
    std::string Backup() const { return base + "/Photos_bak"; }
    int MaxPosition() const {
        return positions.empty() ? -1 : *std::max_element(positions.begin(), positions.end());
    }

    DialogRig rig;
    std::string card, base;
    int jpgFiles = 0;
    std::vector<int> positions;
};

TEST(DialogTransfer, GetPhotosFillsThePhotoAndBackupFoldersWithAMovingBar) {
    CardRig c;
    c.rig.dlg->show();
    QTest::mouseClick(c.rig.dlg->Button("getPhotos"), Qt::LeftButton);

    EXPECT_EQ(c.rig.prompt.Texts(), std::vector<std::string>{"Finished copying."});
    EXPECT_EQ(c.rig.prompt.shown[0].icon, PromptIcon::Information);
    const auto photos = FileNames(c.Photos());
    EXPECT_EQ(int(photos.size()), c.jpgFiles);
    // The backup pass renames too; its collision numbers go on counting.
    EXPECT_EQ(FileNames(c.Backup()).size(), photos.size());
    // Renamed by the default rule: the first photo of the card.
    EXPECT_NE(std::find(photos.begin(), photos.end(), "20040423_150053.jpg"), photos.end());
    EXPECT_EQ(c.rig.dlg->Progress()->maximum(), c.jpgFiles);
    EXPECT_EQ(c.MaxPosition(), c.jpgFiles);
    ASSERT_FALSE(c.positions.empty());
    EXPECT_EQ(c.positions.back(), 0);
    EXPECT_FALSE(c.rig.dlg->IsBusy());
}

TEST(DialogTransfer, GetPhotosReadsTheControlsFirst) {
    CardRig c;
    c.rig.dlg->Edit(DlgItem::PhotoFolder)->setText("Typed");
    c.rig.dlg->Button("createBackup")->click(); // no backup
    QTest::mouseClick(c.rig.dlg->Button("getPhotos"), Qt::LeftButton);
    EXPECT_EQ(int(FileNames(c.base + "/Typed").size()), c.jpgFiles);
    EXPECT_FALSE(fs::exists(c.base + "/Typed_bak"));
}

TEST(DialogTransfer, AFullPhotoFolderIsEmptiedOnlyAfterTheQuestion) {
    CardRig c;
    PutFile(c.Photos() + "/keep.jpg", "mine");
    c.rig.prompt.answers = {PromptAnswer::No};
    QTest::mouseClick(c.rig.dlg->Button("getPhotos"), Qt::LeftButton);
    ASSERT_EQ(c.rig.prompt.shown.size(), 1u);
    EXPECT_EQ(c.rig.prompt.shown[0].icon, PromptIcon::Warning);
    EXPECT_NE(c.rig.prompt.shown[0].text.find("contains 1 files and 0 folders"), std::string::npos);
    EXPECT_EQ(FileNames(c.Photos()), std::vector<std::string>{"keep.jpg"});
    EXPECT_TRUE(c.positions.empty());
}

TEST(DialogTransfer, RestoreBringsTheBackupBack) {
    CardRig c;
    QTest::mouseClick(c.rig.dlg->Button("getPhotos"), Qt::LeftButton);
    const auto original = FileNames(c.Photos());
    const auto backup = FileNames(c.Backup());
    fs::remove(c.Photos() + "/" + original.front());
    PutFile(c.Photos() + "/stray.jpg", "x");
    c.rig.prompt.shown.clear();
    c.positions.clear();

    QTest::mouseClick(c.rig.dlg->Button("restore"), Qt::LeftButton);

    ASSERT_EQ(c.rig.prompt.shown.size(), 2u);
    EXPECT_EQ(c.rig.prompt.shown[0].icon, PromptIcon::Question);
    EXPECT_EQ(c.rig.prompt.shown[1].text, "Finished restoring the photo folder from its backup.");
    // Every backup file is back (renamed by the rule again), the stray is gone.
    const auto restored = FileNames(c.Photos());
    EXPECT_EQ(restored.size(), backup.size());
    EXPECT_EQ(std::count(restored.begin(), restored.end(), "stray.jpg"), 0);
    EXPECT_EQ(std::count(restored.begin(), restored.end(), original.front()), 1);
    EXPECT_EQ(c.MaxPosition(), int(original.size()));
    EXPECT_EQ(c.positions.back(), 0);
}

TEST(DialogTransfer, NoCameraDriveStopsWithAMessage) {
    DialogRig rig;
    QTest::mouseClick(rig.dlg->Button("getPhotos"), Qt::LeftButton);
    EXPECT_EQ(rig.prompt.Texts(),
              std::vector<std::string>{"Please select the digital camera drive first."});
    EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Stop);
}

} // namespace
} // namespace tivox::test
