// The main dialog: defaults, the reading and writing of its controls, and
// the commands that live in the dialog itself.

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

#include "acquire/folder_paths.h"
#include "app/settings.h"
#include "controls/icon_button.h"
#include "exif/exif_tags.h"
#include "gui_fixture.h"

namespace tivox::test {
namespace {

QString Text(const DialogRig& rig, DlgItem item) {
    return rig.dlg->Edit(item)->text();
}
void Type(DialogRig& rig, DlgItem item, const char* text) {
    rig.dlg->Edit(item)->setText(QString::fromUtf8(text));
}

TEST(MainDialog, ShowsTheDefaultsWithoutASettingsFile) {
    DialogRig rig;
    CTivoxDlg& dlg = *rig.dlg;
    EXPECT_EQ(dlg.windowTitle(), "TivoxPlus");
    EXPECT_EQ(dlg.DriveLabel()->text(), "");
    EXPECT_EQ(Text(rig, DlgItem::BaseFolder).toStdString(), DefaultBaseFolder());
    EXPECT_EQ(Text(rig, DlgItem::PhotoFolder), "Photos");
    EXPECT_EQ(Text(rig, DlgItem::RenamingRule), "%Date%_%Time%");
    EXPECT_EQ(Text(rig, DlgItem::TilesX), "4");
    EXPECT_EQ(Text(rig, DlgItem::TilesY), "4");
    EXPECT_FALSE(dlg.Button("showStatusBar")->isChecked());
    EXPECT_EQ(Text(rig, DlgItem::GalleryFolder).toStdString(), DefaultGalleryFolder());
    EXPECT_TRUE(dlg.Button("createBackup")->isChecked());
    EXPECT_EQ(dlg.QualitySlider()->value(), 80);
    EXPECT_EQ(Text(rig, DlgItem::JpegQuality), "80");
    EXPECT_EQ(dlg.ExifTagBox()->currentText(), "");
    EXPECT_EQ(dlg.Progress()->value(), 0);
}

TEST(MainDialog, TagBoxListsTheTokensInTheDialogsOrder) {
    DialogRig rig;
    QComboBox* box = rig.dlg->ExifTagBox();
    ASSERT_EQ(box->count(), kRuleTokenCount);
    for (int i = 0; i < kRuleTokenCount; ++i)
        EXPECT_EQ(box->itemText(i).toStdString(), RuleTokensDialogOrder()[std::size_t(i)]);
    EXPECT_TRUE(box->isEditable());
}

// A refused number stops the read: what stands before it is taken, what
// stands behind it stays, and the message names both limits.
struct ReadCase {
    const char* name;
    const char* tilesX;
    const char* tilesY;
    const char* quality;
    const char* message; // empty: the read succeeds
    std::uint32_t wantX, wantY, wantQuality;
    bool galleryTaken; // the gallery folder stands behind the tiles
};

class ReadFailure : public ::testing::TestWithParam<ReadCase> {};

TEST_P(ReadFailure, StopsAtTheFirstRefusedNumber) {
    const ReadCase& c = GetParam();
    DialogRig rig;
    Type(rig, DlgItem::BaseFolder, "/new/base");
    Type(rig, DlgItem::GalleryFolder, "/new/galleries");
    Type(rig, DlgItem::TilesX, c.tilesX);
    Type(rig, DlgItem::TilesY, c.tilesY);
    Type(rig, DlgItem::JpegQuality, c.quality);
    const std::string oldGallery = rig.dlg->Fields().m_galleryFolder;

    const bool read = rig.dlg->Commands().UpdateData(true);

    const MainDialogFields& f = rig.dlg->Fields();
    EXPECT_EQ(read, *c.message == '\0');
    if (*c.message) {
        ASSERT_EQ(rig.prompt.shown.size(), 1u);
        EXPECT_EQ(rig.prompt.shown[0].text, c.message);
    } else {
        EXPECT_TRUE(rig.prompt.shown.empty());
    }
    EXPECT_EQ(f.m_baseFolder, "/new/base"); // always before the numbers
    EXPECT_EQ(f.m_tilesX, c.wantX);
    EXPECT_EQ(f.m_tilesY, c.wantY);
    EXPECT_EQ(f.m_jpegQuality, c.wantQuality);
    EXPECT_EQ(f.m_galleryFolder, c.galleryTaken ? "/new/galleries" : oldGallery);
}

INSTANTIATE_TEST_SUITE_P(
    MainDialog, ReadFailure,
    ::testing::Values(ReadCase{"AllGood", "2", "10", "0", "", 2, 10, 0, true},
                      ReadCase{"TilesXTooSmall", "1", "5", "50",
                               "Please enter an integer between 2 and 10.", 1, 4, 80, false},
                      ReadCase{"TilesYTooLarge", "3", "11", "50",
                               "Please enter an integer between 2 and 10.", 3, 11, 80, false},
                      ReadCase{"TilesYNoNumber", "3", "many", "50",
                               "Please enter an integer between 2 and 10.", 3, 4, 80, false},
                      ReadCase{"NegativeIsNoNumber", "-3", "5", "50",
                               "Please enter an integer between 2 and 10.", 4, 4, 80, false},
                      ReadCase{"QualityTooHigh", "5", "6", "101",
                               "Please enter an integer between 0 and 100.", 5, 6, 101, true},
                      ReadCase{"BlanksAroundANumber", " 7 ", "8", " 90", "", 7, 8, 90, true}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(MainDialog, WritesDoNotCheckTheRanges) {
    CSettings stored;
    stored.m_tilesX = 11;
    stored.m_tilesY = 1;
    stored.m_jpegQuality = 300;
    TempDir dir;
    ASSERT_TRUE(stored.StoreFile(dir.File("s.dat")));
    DialogRig rig(dir.File("s.dat"));
    EXPECT_EQ(Text(rig, DlgItem::TilesX), "11");
    EXPECT_EQ(Text(rig, DlgItem::TilesY), "1");
    EXPECT_EQ(Text(rig, DlgItem::JpegQuality), "300");
    EXPECT_TRUE(rig.prompt.shown.empty());
}

TEST(MainDialog, ExitAndCloseStayOpenAfterARefusedRead) {
    DialogRig rig;
    rig.dlg->show();
    Type(rig, DlgItem::TilesX, "11");
    QTest::mouseClick(rig.dlg->Button("exit"), Qt::LeftButton);
    EXPECT_TRUE(rig.dlg->isVisible());
    EXPECT_FALSE(rig.dlg->close());
    EXPECT_TRUE(rig.dlg->isVisible());
    EXPECT_EQ(rig.prompt.shown.size(), 2u);

    Type(rig, DlgItem::TilesX, "10");
    EXPECT_TRUE(rig.dlg->close());
    EXPECT_FALSE(rig.dlg->isVisible());
    EXPECT_EQ(rig.dlg->result(), QDialog::Accepted);
}

TEST(MainDialog, EscDoesNothingAndEnterInAnEditPressesExit) {
    DialogRig rig;
    rig.dlg->show();
    QLineEdit* rule = rig.dlg->Edit(DlgItem::RenamingRule);
    rule->setFocus();
    QTest::keyClick(rule, Qt::Key_Escape);
    EXPECT_TRUE(rig.dlg->isVisible());
    QTest::keyClick(rule, Qt::Key_Return);
    EXPECT_FALSE(rig.dlg->isVisible());
    EXPECT_EQ(rig.dlg->result(), QDialog::Accepted);
}

TEST(MainDialog, CurrentDateWritesEveryFieldBackWithoutReading) {
    DialogRig rig;
    Type(rig, DlgItem::BaseFolder, "/typed/but/not/read");
    Type(rig, DlgItem::PhotoFolder, "typed");
    rig.dlg->Commands().SetDateFolder(2004, 7, 31);
    EXPECT_EQ(Text(rig, DlgItem::PhotoFolder), "20040731");
    EXPECT_EQ(Text(rig, DlgItem::BaseFolder).toStdString(), DefaultBaseFolder());

    QTest::mouseClick(rig.dlg->Button("currentDate"), Qt::LeftButton);
    EXPECT_EQ(Text(rig, DlgItem::PhotoFolder).size(), 8);
}

TEST(MainDialog, AddRuleTagAppendsTheTagAtTheEnd) {
    DialogRig rig;
    rig.dlg->ExifTagBox()->setEditText("%Time%");
    CIconButton* add = rig.dlg->Button("addRuleTag");
    QTest::mouseClick(add, Qt::LeftButton);
    QTest::mouseClick(add, Qt::LeftButton);
    EXPECT_EQ(Text(rig, DlgItem::RenamingRule), "%Date%_%Time%%Time%%Time%");
    rig.dlg->ExifTagBox()->setEditText("");
    QTest::mouseClick(add, Qt::LeftButton);
    EXPECT_EQ(Text(rig, DlgItem::RenamingRule), "%Date%_%Time%%Time%%Time%");
}

TEST(MainDialog, SliderMovesTheEditAtOnceAndTheFieldAtTheNextRead) {
    DialogRig rig;
    rig.dlg->QualitySlider()->setValue(33);
    EXPECT_EQ(Text(rig, DlgItem::JpegQuality), "33");
    EXPECT_EQ(rig.dlg->Fields().m_jpegQuality, 80u);
    Type(rig, DlgItem::JpegQuality, "95"); // typing does not move the slider
    EXPECT_EQ(rig.dlg->QualitySlider()->value(), 33);
    ASSERT_TRUE(rig.dlg->Commands().UpdateData(true));
    EXPECT_EQ(rig.dlg->Fields().m_jpegQuality, 95u);
}

TEST(MainDialog, PhotoFolderPickerSplitsThePathAndRefusesTheRoot) {
    DialogRig rig;
    Type(rig, DlgItem::BaseFolder, "/pics");
    rig.picker.folders = {"/", "/data/Photos", ""};
    CIconButton* pick = rig.dlg->Button("photoFolder");

    QTest::mouseClick(pick, Qt::LeftButton);
    ASSERT_EQ(rig.prompt.Texts(),
              std::vector<std::string>{"Root directory not allowed.\nPlease select a subfolder."});
    EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Warning);
    EXPECT_EQ(rig.dlg->Fields().m_baseFolder, "/pics");
    EXPECT_EQ(rig.dlg->Fields().m_photoFolder, "Photos");
    EXPECT_EQ(rig.picker.runs[0].title, "Select target directory for photos");
    EXPECT_EQ(rig.picker.runs[0].startFolder, "/pics");

    QTest::mouseClick(pick, Qt::LeftButton);
    EXPECT_EQ(Text(rig, DlgItem::BaseFolder), "/data");
    EXPECT_EQ(Text(rig, DlgItem::PhotoFolder), "Photos");
    EXPECT_EQ(rig.dlg->Commands().GetPhotoFolderPath(), "/data/Photos");
    EXPECT_EQ(rig.dlg->Commands().GetBackupFolderPath(), "/data/Photos_bak");

    // Cancel changes nothing.
    QTest::mouseClick(pick, Qt::LeftButton);
    EXPECT_EQ(rig.dlg->Commands().GetPhotoFolderPath(), "/data/Photos");
}

TEST(MainDialog, TheThreePickersShareTheirStartFolder) {
    DialogRig rig;
    rig.picker.folders = {"/a/gallery", "", "/b/base"};
    QTest::mouseClick(rig.dlg->Button("galleryFolder"), Qt::LeftButton);
    EXPECT_EQ(Text(rig, DlgItem::GalleryFolder), "/a/gallery");
    QTest::mouseClick(rig.dlg->Button("baseFolder"), Qt::LeftButton);
    QTest::mouseClick(rig.dlg->Button("baseFolder"), Qt::LeftButton);
    ASSERT_EQ(rig.picker.runs.size(), 3u);
    EXPECT_EQ(rig.picker.runs[0].startFolder, DefaultBaseFolder());
    EXPECT_EQ(rig.picker.runs[0].title, "Select base directory for HTML galleries");
    EXPECT_EQ(rig.picker.runs[1].startFolder, "/a/gallery");
    EXPECT_EQ(rig.picker.runs[1].title, "Select base directory for photo folders");
    EXPECT_EQ(Text(rig, DlgItem::BaseFolder), "/b/base");
}

TEST(MainDialog, FullScreenOpensOnlyAfterASuccessfulRead) {
    DialogRig rig;
    int opened = 0;
    rig.dlg->SetFullScreenHooks([&] { ++opened; }, {});
    Type(rig, DlgItem::TilesY, "1");
    QTest::mouseClick(rig.dlg->Button("fullScreen"), Qt::LeftButton);
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(rig.prompt.shown.size(), 1u);
    Type(rig, DlgItem::TilesY, "3");
    QTest::mouseClick(rig.dlg->Button("fullScreen"), Qt::LeftButton);
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(rig.dlg->Fields().m_tilesY, 3u);
}

TEST(MainDialog, SettingsSurviveARestart) {
    TempDir dir;
    const std::string file = dir.File("TivoxSettings.dat");
    {
        DialogRig rig(file);
        Type(rig, DlgItem::BaseFolder, "/srv/pictures");
        Type(rig, DlgItem::PhotoFolder, "Holiday");
        Type(rig, DlgItem::RenamingRule, "%Model%_%Date%");
        Type(rig, DlgItem::TilesX, "6");
        Type(rig, DlgItem::TilesY, "5");
        Type(rig, DlgItem::GalleryFolder, "/srv/web");
        Type(rig, DlgItem::JpegQuality, "91");
        rig.dlg->Button("createBackup")->click();  // off
        rig.dlg->Button("showStatusBar")->click(); // on: height 30
        EXPECT_EQ(rig.dlg->Fields().m_statusBarHeight, 30u);
        rig.Close();
    }
    CSettings stored;
    ASSERT_TRUE(stored.LoadFile(file));
    EXPECT_EQ(stored.m_statusBarHeight, 30u);
    EXPECT_EQ(stored.m_createBackup, 0u);

    DialogRig again(file);
    EXPECT_EQ(Text(again, DlgItem::BaseFolder), "/srv/pictures");
    EXPECT_EQ(Text(again, DlgItem::PhotoFolder), "Holiday");
    EXPECT_EQ(Text(again, DlgItem::RenamingRule), "%Model%_%Date%");
    EXPECT_EQ(Text(again, DlgItem::TilesX), "6");
    EXPECT_EQ(Text(again, DlgItem::TilesY), "5");
    EXPECT_EQ(Text(again, DlgItem::GalleryFolder), "/srv/web");
    EXPECT_EQ(Text(again, DlgItem::JpegQuality), "91");
    EXPECT_EQ(again.dlg->QualitySlider()->value(), 91);
    EXPECT_FALSE(again.dlg->Button("createBackup")->isChecked());
    EXPECT_TRUE(again.dlg->Button("showStatusBar")->isChecked());
}

TEST(MainDialog, ADamagedSettingsFileLeavesTheDefaults) {
    TempDir dir;
    const std::string file = dir.File("TivoxSettings.dat");
    WriteFile(file, Bytes{0x96, 0x00, 0x00, 0x00, 0x05, 'a', 'b'});
    DialogRig rig(file);
    EXPECT_EQ(Text(rig, DlgItem::PhotoFolder), "Photos");
    EXPECT_EQ(Text(rig, DlgItem::TilesX), "4");
    EXPECT_TRUE(rig.prompt.shown.empty());
}

} // namespace
} // namespace tivox::test

namespace tivox::test {
namespace {

TEST(MainDialog, AboutBoxShowsNameVersionAndPurpose) {
    DialogRig rig;
    rig.dlg->show();
    rig.dlg->activateWindow();
    QString title;
    QStringList texts;
    WithModal(
        [&](QWidget* modal) {
            ASSERT_NE(modal, nullptr);
            title = modal->windowTitle();
            for (QLabel* label : modal->findChildren<QLabel*>())
                texts << label->text();
            static_cast<QDialog*>(modal)->accept();
        },
        [&] {
            rig.dlg->OnAbout();
            return 0;
        });
    EXPECT_EQ(title, "About Tivox");
    EXPECT_TRUE(texts.contains("Tivox Version 1.5"));
    EXPECT_TRUE(texts.contains(
        "Transfers photos from digital cameras\nto PCs and helps with photo maintenance."));
}

} // namespace
} // namespace tivox::test
