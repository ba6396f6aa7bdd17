// The custom controls: icon button, colour strip, hyperlink label, folder
// browser.

#include <QApplication>
#include <QEnterEvent>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

#include "controls/color_static.h"
#include "controls/folder_browser.h"
#include "controls/hyper_link_static.h"
#include "controls/icon_button.h"
#include "gui_fixture.h"

namespace tivox::test {
namespace {

void Enter(QWidget* widget) {
    QEnterEvent event(QPointF(2, 2), QPointF(2, 2), widget->mapToGlobal(QPointF(2, 2)));
    QApplication::sendEvent(widget, &event);
}

void Leave(QWidget* widget) {
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(widget, &event);
}

TEST(IconButton, OffsetColorKeepsTheHueInsideTheRange) {
    // A bad slot gives 3, a bad offset 5; neither changes a colour.
    const struct {
        QRgb start;
        int index, offset, result;
        QRgb want;
    } cases[] = {{0xD4D0C8, 0, 255, 0, 0xFFFBF3},  {0xD4D0C8, 0, 20, 0, 0xE8E4DC},
                 {0xD4D0C8, 2, -255, 0, 0x0C0800}, {0x0A141E, 4, -5, 0, 0x050F19},
                 {0x0A141E, 6, 5, 3, 0x0A141E},    {0x0A141E, -1, 5, 3, 0x0A141E},
                 {0x0A141E, 0, 256, 5, 0x0A141E},  {0x0A141E, 0, -256, 5, 0x0A141E}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.index << " " << c.offset);
        CIconButton button;
        const int slot = c.index >= 0 && c.index <= 5 ? c.index : 0;
        button.SetColor(slot, QColor(c.start));
        EXPECT_EQ(button.OffsetColor(c.index, c.offset), c.result);
        EXPECT_EQ(button.Color(slot), QColor(c.want));
    }
}

TEST(IconButton, PicturesAtRestUnderTheMouseAndChecked) {
    CIconButton button(QStringLiteral("Caption"));
    ASSERT_EQ(button.SetIcon(QStringLiteral(":/icons/camera.svg"), 32, 32, CIconButton::kGrayCopy),
              0);
    const QRgb gray = button.CurrentPicture().pixel(16, 18); // the gray copy at rest
    EXPECT_TRUE(qRed(gray) == qGreen(gray) && qGreen(gray) == qBlue(gray));
    Enter(&button);
    const QRgb colour = button.CurrentPicture().pixel(16, 18);
    EXPECT_NE(qRed(colour), qBlue(colour));
    Leave(&button);
    EXPECT_EQ(button.CurrentPicture().pixel(16, 18), gray);
    // A missing picture leaves the caption.
    EXPECT_EQ(button.SetIcon(QStringLiteral(":/icons/none.svg"), 16, 16), 1);
    EXPECT_FALSE(button.HasPicture());
    // A bitmap's transparent colour is see-through.
    ASSERT_EQ(button.SetBitmap(QStringLiteral(":/icons/fullscreen.svg"), qRgb(0x7F, 0x7F, 0x7F)),
              0);
    EXPECT_EQ(qAlpha(button.CurrentPicture().pixel(0, 0)), 0);     // the grey frame
    EXPECT_EQ(qAlpha(button.CurrentPicture().pixel(32, 10)), 255); // the screen

    // A check box with two pictures shows the first while checked; the mouse
    // does not count.
    CIconButton box(QStringLiteral("Create Backup"));
    box.SetCheckBox(true);
    ASSERT_EQ(box.SetIcons(QStringLiteral(":/icons/backup.svg"), 32, 32,
                           QStringLiteral(":/icons/restore.svg"), 32, 32),
              0);
    const QImage unchecked = box.CurrentPicture();
    Enter(&box);
    EXPECT_EQ(box.CurrentPicture(), unchecked);
    box.click();
    EXPECT_NE(box.CurrentPicture(), unchecked);
    box.click();
    EXPECT_EQ(box.CurrentPicture(), unchecked);
}

// The share of pixels that two pictures of one size show in clearly other colours.
double ClearlyDifferent(const QImage& a, const QImage& b) {
    int differing = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            differing += std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                   std::abs(qBlue(p) - qBlue(q))}) > 40;
        }
    return double(differing) / (a.width() * a.height());
}

TEST(IconButton, ACheckedBoxStandsApartFromAnUncheckedOneAtRestAndUnderTheMouse) {
    // Caption only, as "Show Statusbar", with the dialogs' light hover colour.
    CIconButton box(QStringLiteral("Show Statusbar"));
    box.SetCheckBox(true);
    box.OffsetColor(CIconButton::kBackIn, 255);
    box.resize(box.sizeHint());
    box.show();
    const QImage off = box.grab().toImage();
    Enter(&box);
    const QImage offUnderMouse = box.grab().toImage();
    box.click();
    const QImage onUnderMouse = box.grab().toImage();
    Leave(&box);
    const QImage on = box.grab().toImage();
    for (const QImage* unchecked : {&off, &offUnderMouse})
        for (const QImage* checked : {&on, &onUnderMouse})
            EXPECT_GT(ClearlyDifferent(*unchecked, *checked), 0.3);
}

TEST(ColorStatic, ShowsANewColourAtOnce) {
    CColorStatic strip;
    strip.resize(40, 8);
    strip.show();
    strip.SetBackColor(QColor(0, 255, 0));
    EXPECT_EQ(strip.grab().toImage().pixelColor(20, 4), QColor(0, 255, 0));
}

TEST(HyperLink, OpensTurnsVisitedAndTellsAFailure) {
    CHyperLinkStatic link(QStringLiteral("https://example.org/x"));
    link.resize(link.sizeHint());
    link.show();
    ScriptedPrompt prompt;
    link.SetPrompt(&prompt);
    QString opened;
    bool result = false;
    link.SetOpener([&](const QString& url) {
        opened = url;
        return result;
    });
    EXPECT_EQ(link.CurrentColor(), QColor(0, 0, 238));
    Enter(&link);
    EXPECT_EQ(link.CurrentColor(), QColor(255, 0, 0));
    EXPECT_TRUE(link.font().underline());
    Leave(&link);
    EXPECT_FALSE(link.font().underline());

    QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_EQ(opened, "https://example.org/x"); // without a URL, its own text
    EXPECT_FALSE(link.IsVisited());
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text, "Unable to open hyperlink:\n\nNo program on this computer "
                                    "opens https://example.org/x.");
    EXPECT_EQ(prompt.shown[0].icon, PromptIcon::Warning);

    link.SetURL(QStringLiteral("https://example.org/"));
    EXPECT_EQ(link.toolTip(), "https://example.org/");
    result = true;
    QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_EQ(opened, "https://example.org/");
    EXPECT_TRUE(link.IsVisited());
    EXPECT_EQ(link.CurrentColor(), QColor(85, 26, 139));
    Enter(&link);
    EXPECT_EQ(link.CurrentColor(), QColor(255, 0, 0));
}

TEST(FolderBrowser, GivesTheChosenFolderAndKeepsItOnCancel) {
    TempDir dir;
    CFolderBrowser browser(nullptr, QStringLiteral("Title"));
    browser.SetStartFolder(QString::fromStdString(dir.path()));
    auto run = [&](bool ok) {
        return WithModal(
            [&](QWidget* modal) {
                ASSERT_EQ(modal, browser.Window());
                EXPECT_EQ(modal->windowTitle(), "Title");
                EXPECT_FALSE(browser.SetTitle(QStringLiteral("Other"))); // not while it runs
                ok ? static_cast<QDialog*>(modal)->accept()
                   : static_cast<QDialog*>(modal)->reject();
            },
            [&] { return browser.Run(); });
    };
    EXPECT_TRUE(run(true));
    EXPECT_FALSE(run(false));
    EXPECT_EQ(browser.GetPath().toStdString(), dir.path());
}

} // namespace
} // namespace tivox::test
