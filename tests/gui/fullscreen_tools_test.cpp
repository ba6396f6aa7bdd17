// The tools of the full-screen window and the Image Operations window, from
// the buttons to the photo files: crop, red eye, the "Process:" boxes, the
// tab pages, commit, discard and closing.

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QSlider>
#include <QTabBar>
#include <filesystem>
#include <functional>

#include "app/fullscreen/tool_state.h"
#include "controls/icon_button.h"
#include "gui/fullscreen_fixture.h"
#include "imageops/photo_pool.h"
#include "photos/photo.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_seams.h"
#include "ui/tab_basic.h"
#include "ui/tab_color.h"
#include "ui/tab_photo.h"
#include "ui/tab_web.h"

namespace tivox::test {
namespace {

class FullScreenTools : public FullScreenTest {
protected:
    // Shows photo `index` alone and brings up the Image Operations window.
    void ShowSingle(int index) {
        Open(4, 4, 30);
        DoubleClick(256 * (index % 4) + 100, 184 * (index / 4) + 100);
        ASSERT_TRUE(m_window->IsSinglePhoto());
        ContextMenu(600, 100);
        ASSERT_NE(Dlg(), nullptr);
    }
    CImageOpsDlg* Dlg() const { return m_window->ImageOpsDlg(); }
    // A click on a control of the Image Operations window as a person makes
    // it: the window brought back by a right click if hidden, then the tab
    // of the control chosen.
    void Use(QWidget* control) {
        // A right click in a crop tool first leaves the tool.
        for (int i = 0; i < 3 && !Dlg()->isVisible(); ++i)
            ContextMenu(900, 700);
        QTabWidget* tabs = Dlg()->Tab();
        for (int i = 0; i < tabs->count(); ++i) {
            if (i != tabs->currentIndex() && tabs->widget(i)->isAncestorOf(control)) {
                QTabBar* bar = tabs->tabBar();
                QTest::mouseClick(Dlg()->windowHandle(), Qt::LeftButton, {},
                                  bar->mapTo(Dlg(), bar->tabRect(i).center()));
            }
        }
        ASSERT_TRUE(control->isVisible());
        ClickOn(control);
    }
    CPhotoPage* PhotoPage() const { return Dlg()->Tab()->m_photo; }
    CColorPage* ColorPage() const { return Dlg()->Tab()->m_color; }
    CPhoto* Photo(int index) const { return m_list.PhotoAt(index); }
    std::int32_t Mode() const { return m_window->Tools().Mode(); }
    Rect CropRect() const { return m_window->Tools().CropRect(); }
    void Drag(int x0, int y0, int x1, int y1) {
        Press(x0, y0);
        Move((x0 + x1) / 2, (y0 + y1) / 2);
        Move(x1, y1);
        Release(x1, y1);
    }
    Bytes FileBytes(int index) const {
        Bytes bytes;
        EXPECT_TRUE(ReadFile(PhotoPath(index), bytes));
        return bytes;
    }
};

TEST_F(FullScreenTools, CropDrawsVeilsAsksAndCrops) {
    WritePhotos(1, 1024, 768, 0x404040);
    ShowSingle(0);
    Use(PhotoPage()->Button(1));      // "9x13"
    EXPECT_FALSE(Dlg()->isVisible()); // out of the way of the mouse
    EXPECT_EQ(m_window->CurrentCursor(), ToolCursor::Crop);
    Drag(100, 100, 200, 300);
    EXPECT_EQ(Mode(), ModeCropPlaced);
    EXPECT_EQ(m_window->CurrentCursor(), ToolCursor::Move);
    EXPECT_EQ(CropRect(), (Rect{100, 100, 100, 69}));
    const QImage frame = Grab(); // all but the rectangle lies under a veil
    EXPECT_NEAR(qRed(frame.pixel(150, 130)), 0x40, 6);
    for (QPoint band : {QPoint(50, 130), QPoint(150, 50), QPoint(150, 500), QPoint(700, 130)})
        EXPECT_GT(qRed(frame.pixel(band)), 0x40 + 60) << band.x() << "," << band.y();
    Click(500, 500); // a release outside the rectangle changes nothing
    Key(Qt::Key_Escape);
    EXPECT_EQ(Mode(), ModeCrop9x13);
    Key(Qt::Key_Escape);
    EXPECT_EQ(Mode(), ModeSelect);
    Use(PhotoPage()->Button(5)); // "20x30" shares the tool of "10x15"
    EXPECT_EQ(Mode(), ModeCrop10x15);
    EXPECT_TRUE(m_prompt.shown.empty());

    // Free: dragged, the rectangle moves with the mouse; the release asks.
    Use(PhotoPage()->Button(6));
    Drag(100, 100, 300, 250);
    Move(150, 150);
    Press(150, 150);
    Move(180, 160);
    EXPECT_EQ(CropRect(), (Rect{130, 110, 200, 150}));
    m_prompt.answers = {PromptAnswer::No, PromptAnswer::Yes};
    Release(180, 160);
    ASSERT_EQ(m_prompt.Texts(), std::vector<std::string>{"Really crop the image(s)?"});
    EXPECT_EQ(m_prompt.shown[0].icon, PromptIcon::Question);
    EXPECT_EQ(Mode(), ModeSelect);
    EXPECT_FALSE(Photo(0)->edits.HasPending());
    Use(PhotoPage()->Button(6));
    Drag(100, 100, 300, 250);
    Click(150, 150);
    EXPECT_EQ(Mode(), ModeSelect);
    EXPECT_TRUE(Photo(0)->edits.cropPending);
    EXPECT_EQ(Photo(0)->edits.cropRect, (Rect{100, 100, 200, 150}));
    EXPECT_NEAR(Photo(0)->screenImage->Width(), 1024, 1); // the piece at screen size
    EXPECT_NEAR(Photo(0)->screenImage->Height(), 768, 1);
    EXPECT_GE(m_busy.begun, 1);
    EXPECT_EQ(m_busy.depth, 0); // every begin has its end
}

TEST_F(FullScreenTools, RedEyeClicksRecordTheFullImagePoint) {
    WritePhotos(1, 2048, 1536, 0xC01010);
    ShowSingle(0);
    Use(PhotoPage()->Button(9));
    EXPECT_EQ(m_window->CurrentCursor(), ToolCursor::RedEye);
    Click(500, 400);
    // The correction itself is tested with the image operations.
    EXPECT_EQ(Photo(0)->edits.redEyePoints, (std::vector<Point>{{1000, 800}}));
    EXPECT_EQ(Mode(), ModeRedEye); // the tool stays
    // A right click leaves the tool and shows the Image Operations window.
    Dlg()->hide();
    ContextMenu(300, 300);
    EXPECT_EQ(Mode(), ModeSelect);
    EXPECT_TRUE(Dlg()->isVisible());
}

TEST_F(FullScreenTools, TheBoxesAndTabsFollowTheWindow) {
    WritePhotos(2);
    Open();
    Move(100, 100);
    ContextMenu(100, 100);
    CImageOpsDlg* dlg = Dlg();
    ASSERT_NE(dlg, nullptr);
    // In the tile view only the Basic page works.
    EXPECT_FALSE(ColorPage()->Slider(0)->isEnabled());
    EXPECT_FALSE(PhotoPage()->Button(0)->isEnabled());
    EXPECT_TRUE(dlg->Tab()->m_basic->Button(0)->isEnabled());
    // The process boxes exclude each other by the rules of ProcessScope.
    EXPECT_TRUE(dlg->ProcessCurrent()->isChecked());
    Use(dlg->ProcessColor(2));
    EXPECT_FALSE(dlg->ProcessCurrent()->isChecked());
    Use(dlg->ProcessAll());
    EXPECT_FALSE(dlg->ProcessColor(2)->isChecked());
    // Select Marker is a radio group that sets the window's marker; the
    // marker keys do not touch the boxes.
    EXPECT_TRUE(dlg->SelectBox(1)->isChecked());
    Use(dlg->SelectBox(3));
    EXPECT_EQ(m_window->CurrentMarker(), 3);
    EXPECT_FALSE(dlg->SelectBox(1)->isChecked());
    Key(Qt::Key_G);
    EXPECT_EQ(m_window->CurrentMarker(), 2);
    EXPECT_TRUE(dlg->SelectBox(3)->isChecked());
    DoubleClick(100, 100);
    EXPECT_TRUE(ColorPage()->Slider(0)->isEnabled());
    EXPECT_TRUE(PhotoPage()->Button(0)->isEnabled());
}

TEST_F(FullScreenTools, PhotoPageUnitsAndKeepAspectRatio) {
    WritePhotos(1, 1024, 768);
    ShowSingle(0);
    EXPECT_EQ(PhotoPage()->Button(0)->text(), "7x10");
    Use(PhotoPage()->Button(7));
    EXPECT_EQ(m_owner.settings.m_metricUnits, 0u);
    EXPECT_EQ(PhotoPage()->Button(0)->text(), "3x4");
    EXPECT_EQ(PhotoPage()->Button(4)->text(), "7x9.5");
    Use(PhotoPage()->Button(0)); // the ratio stays that of the tool
    EXPECT_EQ(m_window->Tools().CropAspect(), 0.75f);
    Key(Qt::Key_Escape);

    QLineEdit* width = PhotoPage()->WidthField();
    QLineEdit* height = PhotoPage()->HeightField();
    auto type = [](QLineEdit* edit, const char* text) {
        edit->setText(QString::fromLatin1(text));
        Q_EMIT edit->textEdited(edit->text());
    };
    type(width, "400");
    EXPECT_EQ(height->text(), "300");
    type(height, "600");
    EXPECT_EQ(width->text(), "800");
    // Off: independent; a later click replaces the height, never the width.
    Use(PhotoPage()->KeepAspectBox());
    type(width, "100");
    EXPECT_EQ(height->text(), "600");
    Use(PhotoPage()->KeepAspectBox());
    EXPECT_EQ(width->text(), "100");
    EXPECT_EQ(height->text(), "75");
}

TEST_F(FullScreenTools, ColorEditsAreSavedOnlyByCommit) {
    WritePhotos(2, 320, 240, 0x606060);
    const Bytes before = FileBytes(0), before1 = FileBytes(1);
    ShowSingle(0);
    QSlider* brightness = ColorPage()->Slider(0);
    brightness->triggerAction(QAbstractSlider::SliderPageStepAdd);
    Use(Dlg()->DiscardButton());
    EXPECT_FALSE(Photo(0)->edits.HasPending());
    EXPECT_EQ(brightness->value(), 0);
    EXPECT_EQ(FileBytes(0), before);

    brightness->triggerAction(QAbstractSlider::SliderPageStepAdd);
    brightness->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(ColorPage()->ValueText()->text(), "0.2");
    EXPECT_FLOAT_EQ(Photo(0)->edits.brightness, 0.2f); // steps set, they do not pile up
    // Arrow keys move the slider without an effect.
    ColorPage()->Slider(1)->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_FLOAT_EQ(Photo(0)->edits.contrast, 1.0f);
    Use(Dlg()->CommitButton());
    EXPECT_FALSE(Photo(0)->edits.HasPending());
    EXPECT_EQ(brightness->value(), 0);
    EXPECT_EQ(ColorPage()->ValueText()->text(), "0.2"); // the text keeps its number
    EXPECT_NE(FileBytes(0), before);
    EXPECT_EQ(FileBytes(1), before1);

    // Leaving with pending edits asks: Cancel stays, No drops them unsaved.
    const Bytes committed = FileBytes(0);
    brightness->triggerAction(QAbstractSlider::SliderPageStepAdd);
    Use(PhotoPage()->Button(9));
    Click(100, 100);
    Key(Qt::Key_Escape); // leaves red eye
    m_prompt.answers = {PromptAnswer::Cancel, PromptAnswer::No};
    Key(Qt::Key_Escape);
    ASSERT_TRUE(m_window->HasWindow());
    EXPECT_EQ(m_prompt.shown.at(0).defaultAnswer, PromptAnswer::Cancel);
    EXPECT_EQ(m_prompt.Texts()[0], "1 photo has changes that are not committed.\n"
                                   "Commit them before leaving? No discards them.");
    Key(Qt::Key_Escape);
    EXPECT_FALSE(m_window->HasWindow());
    EXPECT_EQ(m_window->ImageOpsDlg(), nullptr);
    EXPECT_EQ(FileBytes(0), committed);
}

// The program's progress dialog, with what the user does while it runs.
class UserDuringProgress final : public IStepProgress {
public:
    explicit UserDuringProgress(QWidget* parent) : qt(parent) {}
    void Begin(int total, const UiText& title) override {
        totals.push_back(total);
        qt.Begin(total, title);
    }
    bool Step(int done) override {
        if (during)
            during();
        return qt.Step(done);
    }
    void End() override { qt.End(); }
    QtStepProgress qt;
    std::vector<int> totals;
    std::function<void()> during;
};

// Which photos a cancelled commit leaves is the core's to test; here the
// window's part: the dialog, and the user's input kept from the window.
TEST_F(FullScreenTools, CancelledCommitLeavesTheLaterPhotosPending) {
    // Each worker of the commit holds one photo when the user cancels.
    const int count = PhotoPool::DefaultThreads() + 1;
    WritePhotos(count, 320, 240, 0x606060);
    const Bytes lastBefore = FileBytes(count - 1);
    UserDuringProgress progress(m_window.get());
    m_window->SetStepProgress(&progress);
    ShowSingle(0);
    Use(Dlg()->ProcessAll());
    Use(PhotoPage()->Button(8)); // Denoise, on every photo
    // Esc and a second Commit while the commit runs go nowhere; Esc in its
    // dialog stops it after the photos in hand.
    progress.during = [&] {
        Key(Qt::Key_Escape);
        ASSERT_TRUE(m_window->HasWindow());
        ClickOn(Dlg()->CommitButton());
        QProgressDialog* dialog = progress.qt.Dialog();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->parentWidget(), m_window.get());
        EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
        dialog->show(); // as after a moment of work
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == dialog; }));
        QTest::keyClick(dialog->windowHandle(), Qt::Key_Escape);
    };
    Use(Dlg()->CommitButton());
    EXPECT_EQ(progress.totals, (std::vector<int>{count, count})); // the walk, one commit
    EXPECT_TRUE(m_window->HasWindow());
    EXPECT_FALSE(Photo(0)->edits.HasPending());
    EXPECT_TRUE(Photo(count - 1)->edits.denoisePending);
    EXPECT_EQ(FileBytes(count - 1), lastBefore);
    EXPECT_TRUE(m_prompt.shown.empty());
}

TEST_F(FullScreenTools, BasicPageRotatesAndDeletesAtOnce) {
    WritePhotos(3);
    Open();
    Move(300, 100); // tile 1
    ContextMenu(300, 100);
    CBasicPage* basic = Dlg()->Tab()->m_basic;
    Use(basic->Button(1)); // Right 90°
    Settle();
    EXPECT_EQ(Photo(1)->thumbnail->Width(), 132); // 240 x 320 into 248 x 176
    EXPECT_EQ(Photo(1)->thumbnail->Height(), 176);
    // Deleting moves to the Trash, after a question that counts the photos
    // and names the colours.
    TempDir data;
    ::setenv("XDG_DATA_HOME", data.path().c_str(), 1);
    Photo(0)->marker = 1;
    Photo(2)->marker = 3;
    m_prompt.answers = {PromptAnswer::No, PromptAnswer::No, PromptAnswer::Yes};
    Use(basic->Button(5));
    EXPECT_EQ(m_prompt.Texts().back(), "Move 1 photo to the Trash?");
    Use(Dlg()->ProcessColor(1));
    Use(Dlg()->ProcessColor(3));
    Use(basic->Button(5));
    EXPECT_EQ(m_prompt.Texts().back(), "Move 2 photos (red, blue) to the Trash?");
    EXPECT_EQ(m_list.Count(), 3);
    Use(basic->Button(5));
    EXPECT_EQ(m_list.Count(), 1);
    EXPECT_FALSE(std::filesystem::exists(PhotoPath(0)));
    EXPECT_TRUE(std::filesystem::exists(
        data.File("Trash/files/" + std::filesystem::path(PhotoPath(2)).filename().string())));
    EXPECT_TRUE(std::filesystem::exists(PhotoPath(1)));
}

TEST_F(FullScreenTools, WebTabWritesTheGalleryOfTheChosenPhotos) {
    WritePhotos(3);
    ShowSingle(1);
    CWebPage* web = Dlg()->Tab()->m_web;
    web->TitleField()->setText(QStringLiteral("Holiday"));
    web->NumberField(2)->setText(QStringLiteral("600")); // thumbnails at most 500
    Use(web->CreateButton());
    // "Current" is asked first; then the refused number is told, and the
    // run goes on with what the read left.
    ASSERT_GE(m_prompt.Texts().size(), 2u);
    const std::string gallery = m_owner.galleryFolder + "/Photos";
    EXPECT_TRUE(std::filesystem::exists(gallery + "/pics/photo_01.jpg"));
    EXPECT_FALSE(std::filesystem::exists(gallery + "/pics/photo_00.jpg"));
    EXPECT_EQ(web->Form().m_title, "Holiday");
}

} // namespace
} // namespace tivox::test
