// The main dialog: defaults, the reading and writing of its controls, the
// settings file, and its commands: those of the dialog itself, Get Photos and
// Restore on a generated camera card (the transfer itself is tested in
// tests/acquire), and opening Full Screen Editing.

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QSlider>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "acquire/folder_paths.h"
#include "app/main_dialog/settings.h"
#include "controls/icon_button.h"
#include "gui_fixture.h"
#include "photos/photo.h"
#include "ui/fullscreen_editing.h"

namespace fs = std::filesystem;

namespace tivox::test {
namespace {

std::string Text(const DialogRig& rig, DlgItem item) {
    return rig.dlg->Edit(item)->text().toStdString();
}
void Type(DialogRig& rig, DlgItem item, const char* text) {
    rig.dlg->Edit(item)->setText(QString::fromUtf8(text));
}
// The dialog is shown as the program shows it; the click goes through the
// window system.
void Click(DialogRig& rig, const char* button) {
    rig.dlg->show();
    ClickOn(rig.dlg->Button(button));
}

TEST(MainDialog, ADamagedSettingsFileSilentlyLeavesTheDefaults) {
    TempDir dir;
    WriteFile(dir.File("s.dat"), Bytes{0x96, 0x00, 0x00, 0x00, 0x05, 'a', 'b'});
    DialogRig rig(dir.File("s.dat"));
    EXPECT_TRUE(rig.prompt.shown.empty());
    EXPECT_EQ(rig.dlg->windowTitle(), "TivoxPlus");
    EXPECT_EQ(rig.dlg->DriveLabel()->text(), "");
    // A few defaults stand for all: the file was read into nothing.
    EXPECT_EQ(Text(rig, DlgItem::BaseFolder), DefaultBaseFolder());
    EXPECT_EQ(Text(rig, DlgItem::RenamingRule), "%Date%_%Time%");
    EXPECT_EQ(Text(rig, DlgItem::ThumbnailMemory), "512");
    EXPECT_FALSE(rig.dlg->Button("showStatusBar")->isChecked());
    EXPECT_TRUE(rig.dlg->Button("createBackup")->isChecked());
    EXPECT_TRUE(rig.dlg->Button("turnUpright")->isChecked());
    EXPECT_EQ(rig.dlg->QualitySlider()->value(), 80);
    EXPECT_EQ(rig.dlg->ExifTagBox()->currentText(), "");
}

TEST(MainDialog, ARefusedNumberStopsTheRead) {
    // What stands before the refused number is taken, what stands behind it
    // stays (the gallery folder stands behind the tiles).
    const char* const tiles = "Please enter an integer between 2 and 10.";
    const struct {
        const char *tilesX, *tilesY, *quality, *message; // message empty: read
        std::uint32_t wantX, wantY, wantQuality;
        bool galleryTaken;
    } cases[] = {
        {"2", "10", "0", "", 2, 10, 0, true},
        {" 7 ", "8", " 90", "", 7, 8, 90, true},
        {"1", "5", "50", tiles, 1, 4, 80, false},
        {"3", "11", "50", tiles, 3, 11, 80, false},
        {"3", "many", "50", tiles, 3, 4, 80, false},
        {"-3", "5", "50", tiles, 4, 4, 80, false}, // a sign is no number
        {"5", "6", "101", "Please enter an integer between 0 and 100.", 5, 6, 101, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.tilesX << " " << c.tilesY << " " << c.quality);
        DialogRig rig;
        Type(rig, DlgItem::BaseFolder, "/new/base");
        Type(rig, DlgItem::GalleryFolder, "/new/galleries");
        Type(rig, DlgItem::TilesX, c.tilesX);
        Type(rig, DlgItem::TilesY, c.tilesY);
        Type(rig, DlgItem::JpegQuality, c.quality);
        const std::string oldGallery = rig.dlg->Fields().m_galleryFolder;
        EXPECT_EQ(rig.dlg->Commands().UpdateData(true), *c.message == '\0');
        EXPECT_EQ(rig.prompt.Texts(),
                  *c.message ? std::vector<std::string>{c.message} : std::vector<std::string>{});
        const MainDialogFields& f = rig.dlg->Fields();
        EXPECT_EQ(f.m_baseFolder, "/new/base");
        EXPECT_EQ(f.m_tilesX, c.wantX);
        EXPECT_EQ(f.m_tilesY, c.wantY);
        EXPECT_EQ(f.m_jpegQuality, c.wantQuality);
        EXPECT_EQ(f.m_galleryFolder, c.galleryTaken ? "/new/galleries" : oldGallery);
    }
    // The thumbnail memory, read last, lies within 64 MiB and 16 GiB.
    for (const auto& [text, good] : {std::pair{"64", true}, {"16384", true}, {"63", false}}) {
        DialogRig rig;
        Type(rig, DlgItem::ThumbnailMemory, text);
        EXPECT_EQ(rig.dlg->Commands().UpdateData(true), good) << text;
        EXPECT_EQ(rig.dlg->Fields().m_thumbnailMemory, std::stoul(text));
    }
}

TEST(MainDialog, ExitCloseAndFullScreenWaitForAGoodRead) {
    DialogRig rig;
    rig.dlg->show();
    int opened = 0;
    rig.dlg->SetFullScreenHooks([&] { ++opened; }, {}, {});
    Type(rig, DlgItem::TilesX, "11");
    Click(rig, "fullScreen");
    Click(rig, "exit");
    EXPECT_FALSE(rig.dlg->close());
    EXPECT_TRUE(rig.dlg->isVisible());
    EXPECT_EQ(rig.prompt.shown.size(), 3u);
    EXPECT_EQ(opened, 0);
    Type(rig, DlgItem::TilesX, "3");
    Click(rig, "fullScreen");
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(rig.dlg->Fields().m_tilesX, 3u);
    EXPECT_TRUE(rig.dlg->close());
    EXPECT_EQ(rig.dlg->result(), QDialog::Accepted);
}

TEST(MainDialog, EscDoesNothingAndEnterInAnEditPressesExit) {
    DialogRig rig;
    rig.dlg->show();
    QLineEdit* rule = rig.dlg->Edit(DlgItem::RenamingRule);
    rule->setFocus();
    QTest::keyClick(rig.dlg->windowHandle(), Qt::Key_Escape);
    EXPECT_TRUE(rig.dlg->isVisible());
    QTest::keyClick(rig.dlg->windowHandle(), Qt::Key_Return);
    EXPECT_FALSE(rig.dlg->isVisible());
    EXPECT_EQ(rig.dlg->result(), QDialog::Accepted);
}

TEST(MainDialog, DateRuleTagAndSliderButtons) {
    DialogRig rig;
    // Current Date writes every field back without reading the typed text.
    Type(rig, DlgItem::BaseFolder, "/typed/but/not/read");
    rig.dlg->Commands().SetDateFolder(2004, 7, 31);
    EXPECT_EQ(Text(rig, DlgItem::PhotoFolder), "20040731");
    EXPECT_EQ(Text(rig, DlgItem::BaseFolder), DefaultBaseFolder());
    Click(rig, "currentDate");
    EXPECT_EQ(Text(rig, DlgItem::PhotoFolder).size(), 8u);
    // The tag goes to the end of the rule; an empty one adds nothing.
    rig.dlg->ExifTagBox()->setEditText("%Time%");
    Click(rig, "addRuleTag");
    rig.dlg->ExifTagBox()->setEditText("");
    Click(rig, "addRuleTag");
    EXPECT_EQ(Text(rig, DlgItem::RenamingRule), "%Date%_%Time%%Time%");
    // The slider moves the edit at once, the field at the next read.
    rig.dlg->QualitySlider()->setValue(33);
    EXPECT_EQ(Text(rig, DlgItem::JpegQuality), "33");
    EXPECT_EQ(rig.dlg->Fields().m_jpegQuality, 80u);
    Type(rig, DlgItem::JpegQuality, "95"); // typing does not move the slider
    EXPECT_EQ(rig.dlg->QualitySlider()->value(), 33);
    ASSERT_TRUE(rig.dlg->Commands().UpdateData(true));
    EXPECT_EQ(rig.dlg->Fields().m_jpegQuality, 95u);
}

TEST(MainDialog, FolderPickers) {
    DialogRig rig;
    rig.picker.folders = {"/a/gallery", "/b/base", "/", "/data/Photos", ""};
    Click(rig, "galleryFolder");
    EXPECT_EQ(Text(rig, DlgItem::GalleryFolder), "/a/gallery");
    Click(rig, "baseFolder");
    EXPECT_EQ(Text(rig, DlgItem::BaseFolder), "/b/base");
    Type(rig, DlgItem::BaseFolder, "/pics");
    Click(rig, "photoFolder");
    ASSERT_EQ(rig.prompt.Texts(),
              std::vector<std::string>{"Root directory not allowed.\nPlease select a subfolder."});
    EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Warning);
    EXPECT_EQ(rig.dlg->Fields().m_baseFolder, "/pics");
    // The photo folder's path is split into base and photo folder.
    Click(rig, "photoFolder");
    EXPECT_EQ(Text(rig, DlgItem::BaseFolder), "/data");
    EXPECT_EQ(Text(rig, DlgItem::PhotoFolder), "Photos");
    EXPECT_EQ(rig.dlg->Commands().GetBackupFolderPath(), "/data/Photos_bak");
    Click(rig, "photoFolder"); // cancelled: nothing changes
    EXPECT_EQ(rig.dlg->Commands().GetPhotoFolderPath(), "/data/Photos");
    // The pickers start where the last one ended; the photo folder's picker
    // at the base folder.
    const std::vector<std::pair<std::string, std::string>> runs{
        {"Select base directory for HTML galleries", DefaultBaseFolder()},
        {"Select base directory for photo folders", "/a/gallery"},
        {"Select target directory for photos", "/pics"},
        {"Select target directory for photos", "/pics"},
        {"Select target directory for photos", "/data"},
    };
    EXPECT_EQ(rig.picker.runs, runs);
}

TEST(MainDialog, SettingsSurviveARestartUnchecked) {
    TempDir dir;
    const std::string file = dir.File("TivoxSettings.dat");
    {
        DialogRig rig(file);
        Type(rig, DlgItem::RenamingRule, "%Model%_%Date%");
        Type(rig, DlgItem::TilesX, "6");
        Type(rig, DlgItem::GalleryFolder, "/srv/web");
        Type(rig, DlgItem::JpegQuality, "91");
        Click(rig, "createBackup");  // off
        Click(rig, "turnUpright");   // off
        Click(rig, "showStatusBar"); // on: height 30
        rig.Close();
    }
    CSettings stored;
    ASSERT_TRUE(stored.LoadFile(file));
    EXPECT_EQ(stored.m_statusBarHeight, 30u);
    {
        DialogRig again(file);
        EXPECT_EQ(Text(again, DlgItem::RenamingRule), "%Model%_%Date%");
        EXPECT_EQ(Text(again, DlgItem::TilesX), "6");
        EXPECT_EQ(Text(again, DlgItem::GalleryFolder), "/srv/web");
        EXPECT_EQ(again.dlg->QualitySlider()->value(), 91);
        EXPECT_FALSE(again.dlg->Button("createBackup")->isChecked());
        EXPECT_FALSE(again.dlg->Button("turnUpright")->isChecked());
        EXPECT_TRUE(again.dlg->Button("showStatusBar")->isChecked());
    }
    // Out-of-range numbers are shown as stored, unchecked.
    stored.m_tilesY = 1;
    stored.m_jpegQuality = 300;
    ASSERT_TRUE(stored.StoreFile(file));
    DialogRig odd(file);
    EXPECT_EQ(Text(odd, DlgItem::TilesY), "1");
    EXPECT_EQ(Text(odd, DlgItem::JpegQuality), "300");
    EXPECT_TRUE(odd.prompt.shown.empty());
}

TEST(MainDialog, ALongDrivePathWidensTheWindowThenGivesWayInTheMiddle) {
    DialogRig rig;
    rig.dlg->show();
    const std::string drive = "/media/someone/EOS_DIGITAL_CARD_FROM_THE_TRIP_2004";
    rig.dlg->Commands().Fields().m_cameraDrive = drive;
    rig.dlg->Commands().UpdateData(false);
    QApplication::processEvents();
    CPathLabel* label = rig.dlg->DriveLabel();
    EXPECT_EQ(label->ShownText().toStdString(), drive); // the window grew for it
    // Too narrow for it: both ends stay, the tip and the value keep it whole.
    rig.dlg->resize(rig.dlg->minimumSizeHint().width(), rig.dlg->height());
    QApplication::processEvents();
    const QString shown = label->ShownText();
    EXPECT_TRUE(shown.startsWith("/media/") && shown.endsWith("2004") && shown.contains(u'…'))
        << shown.toStdString();
    EXPECT_EQ(label->toolTip().toStdString(), drive);
    ASSERT_TRUE(rig.dlg->Commands().UpdateData(true));
    EXPECT_EQ(rig.dlg->Fields().m_cameraDrive, drive);
}

TEST(DialogTransfer, TheButtonsRunTheTransferOnWhatIsTyped) {
    // Only the wiring: the transfer itself is tested in tests/acquire.
    DialogRig rig;
    const std::string card = rig.dir.File("card"), base = rig.dir.File("base");
    PutFile(card + "/DCIM/IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    PutFile(card + "/DCIM/IMG_0002.JPG", PhotoShotAt("2004:07:31 12:05:00"));
    MakeFolder(base);
    // A mounted card on no known disc: the scripted user says Yes to the doubt.
    DriveSources& sources = rig.dlg->Commands().m_driveSources;
    sources = {rig.dir.File("mountinfo"), rig.dir.File("sys"), rig.dir.File("labels")};
    PutFile(sources.mountInfo, "40 1 8:16 / " + card + " rw - vfat /dev/sdb rw\n");
    rig.dlg->Commands().Fields().m_cameraDrive = card;
    rig.dlg->Commands().UpdateData(false);
    Type(rig, DlgItem::BaseFolder, base.c_str()); // the click reads the controls first
    Type(rig, DlgItem::PhotoFolder, "Typed");
    std::vector<int> positions;
    bool busy = false;
    QObject::connect(rig.dlg->Progress(), &QProgressBar::valueChanged, [&](int value) {
        positions.push_back(value);
        busy = busy || QApplication::overrideCursor();
        if (positions.size() == 1) // a second command while the photos are copied
            Click(rig, "restore");
    });

    Click(rig, "getPhotos");
    ASSERT_EQ(rig.prompt.shown.size(), 2u); // the doubt about the card and the report only
    EXPECT_EQ(rig.prompt.Texts().back().rfind("Finished copying.\nPhotos copied and verified: 2 of "
                                              "2.",
                                              0),
              0u);
    const std::vector<std::string> photos{"20040731_120000.jpg", "20040731_120500.jpg"};
    EXPECT_EQ(FileNames(base + "/Typed"), photos);
    EXPECT_EQ(*std::max_element(positions.begin(), positions.end()), 2); // a step per photo
    EXPECT_EQ(positions.back(), 0);
    EXPECT_TRUE(busy);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(rig.dlg->IsBusy());

    // Restore works on the name typed last, which has no backup yet.
    fs::remove(base + "/Typed/" + photos[0]);
    Type(rig, DlgItem::PhotoFolder, "Other");
    Click(rig, "restore");
    EXPECT_EQ(rig.prompt.Texts().back(),
              "No backup files found in " + base + "/Other_bak.\n\nAborted.");
    EXPECT_EQ(FileNames(base + "/Typed"), std::vector<std::string>{photos[1]});
    Type(rig, DlgItem::PhotoFolder, "Typed");
    Click(rig, "restore");
    EXPECT_EQ(rig.prompt.Texts().back().rfind("Finished restoring", 0), 0u);
    EXPECT_EQ(FileNames(base + "/Typed"), photos);
}

TEST(FullScreenEditing, OpensAfreshAndClosesBeforeOtherCommands) {
    DialogRig rig;
    const std::string folder = rig.PhotosToEdit(5, 3, 2);
    Click(rig, "showStatusBar");
    CFullScreenEditing editing{*rig.dlg};
    CFullScreenWnd& window = editing.Window();
    CPhotoList& list = editing.PhotoList();
    window.SetPrompt(&rig.prompt);

    Click(rig, "fullScreen");
    ASSERT_TRUE(window.isVisible());
    EXPECT_EQ(window.Layout().GetTileCount(), (Size{3, 2}));
    EXPECT_EQ(window.Layout().GetStatusHeight(), 30);
    EXPECT_EQ(list.Count(), 5);
    // A second opening reads the folder anew and forgets the marks.
    list.PhotoAt(0)->marker = 2;
    fs::remove(folder + "/p4.jpg");
    Click(rig, "fullScreen");
    EXPECT_EQ(list.Count(), 4);
    EXPECT_EQ(list.PhotoAt(0)->marker, 0);
    // Get Photos refuses the missing camera drive, but only after the
    // window is gone and the worker stopped.
    Click(rig, "getPhotos");
    EXPECT_FALSE(window.HasWindow());
    EXPECT_EQ(list.Count(), 0);
    EXPECT_TRUE(fs::exists(folder + "/p0.jpg"));
}

} // namespace
} // namespace tivox::test
