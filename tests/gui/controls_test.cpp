// The custom controls: icon button, hyperlink label, colour strip, folder
// browser.

#include <QApplication>
#include <QEnterEvent>
#include <QFileDialog>
#include <QMouseEvent>
#include <QTest>
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

struct OffsetCase {
    QColor start;
    int index, offset, result;
    QColor want;
};

TEST(IconButton, OffsetColorKeepsTheHueInsideTheRange) {
    const OffsetCase cases[] = {
        {QColor(212, 208, 200), 0, 255, 0, QColor(255, 251, 243)},
        {QColor(212, 208, 200), 0, 20, 0, QColor(232, 228, 220)},
        {QColor(212, 208, 200), 2, -255, 0, QColor(12, 8, 0)},
        {QColor(10, 20, 30), 4, -5, 0, QColor(5, 15, 25)},
        {QColor(10, 20, 30), 6, 5, 3, QColor(10, 20, 30)},
        {QColor(10, 20, 30), -1, 5, 3, QColor(10, 20, 30)},
        {QColor(10, 20, 30), 0, 256, 5, QColor(10, 20, 30)},
        {QColor(10, 20, 30), 0, -256, 5, QColor(10, 20, 30)},
    };
    for (const OffsetCase& c : cases) {
        CIconButton button;
        const int slot = c.index >= 0 && c.index <= 5 ? c.index : 0;
        button.SetColor(slot, c.start);
        EXPECT_EQ(button.OffsetColor(c.index, c.offset), c.result);
        EXPECT_EQ(button.Color(slot), c.result == 0 ? c.want : c.start)
            << c.index << " " << c.offset;
    }
}

TEST(IconButton, SecondPictureShowsAtRestAndTheFirstUnderTheMouse) {
    CIconButton button(QStringLiteral("Caption"));
    ASSERT_EQ(button.SetIcon(QStringLiteral(":/icons/camera.svg"), 32, 32, CIconButton::kGrayCopy),
              0);
    const QImage rest = button.CurrentPicture();
    Enter(&button);
    EXPECT_TRUE(button.IsMouseOver());
    const QImage active = button.CurrentPicture();
    EXPECT_NE(rest, active);
    EXPECT_NE(qRed(active.pixel(16, 18)), qBlue(active.pixel(16, 18))); // in colour
    Leave(&button);
    EXPECT_FALSE(button.IsMouseOver());
    EXPECT_EQ(button.CurrentPicture(), rest);
    const QRgb pixel = rest.pixel(16, 18);
    EXPECT_EQ(qRed(pixel), qGreen(pixel)); // the gray copy
    EXPECT_EQ(qGreen(pixel), qBlue(pixel));
}

TEST(IconButton, CheckBoxWithTwoPicturesShowsTheFirstWhileChecked) {
    CIconButton box(QStringLiteral("Create Backup"));
    box.SetCheckBox(true);
    ASSERT_EQ(box.SetIcons(QStringLiteral(":/icons/backup.svg"), 32, 32,
                           QStringLiteral(":/icons/restore.svg"), 32, 32),
              0);
    const QImage unchecked = box.CurrentPicture();
    Enter(&box); // the mouse doesn't count for a check box
    EXPECT_EQ(box.CurrentPicture(), unchecked);
    box.click();
    EXPECT_TRUE(box.isChecked());
    const QImage checked = box.CurrentPicture();
    EXPECT_NE(checked, unchecked);
    box.click();
    EXPECT_FALSE(box.isChecked());
    EXPECT_EQ(box.CurrentPicture(), unchecked);
}

TEST(IconButton, AMissingPictureLeavesTheCaption) {
    CIconButton button(QStringLiteral("Only text"));
    EXPECT_EQ(button.SetIcon(QStringLiteral(":/icons/none.svg"), 16, 16), 1);
    EXPECT_FALSE(button.HasPicture());
    EXPECT_EQ(button.SetBitmap(QStringLiteral(":/icons/none.svg"), 0x7F7F7F), 1);
}

TEST(IconButton, QuickClicksCountAsSingleClicks) {
    CIconButton button(QStringLiteral("Go"));
    button.resize(80, 30);
    button.show();
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] { ++clicks; });
    const QPointF at(10, 10);
    const QPointF global = button.mapToGlobal(at);
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                              QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, global, Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&button, &event);
    }
    EXPECT_EQ(clicks, 2);
}

TEST(IconButton, TransparentColourOfABitmapIsSeeThrough) {
    CIconButton button;
    ASSERT_EQ(button.SetBitmap(QStringLiteral(":/icons/fullscreen.svg"), qRgb(0x7F, 0x7F, 0x7F)),
              0);
    const QImage& picture = button.CurrentPicture();
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);                      // the grey frame
    EXPECT_EQ(qAlpha(picture.pixel(picture.width() / 2, 10)), 255); // the screen
}

TEST(ColorStatic, ShowsANewColourAtOnce) {
    CColorStatic strip;
    strip.resize(40, 8);
    strip.show();
    strip.SetBackColor(QColor(0, 255, 0));
    EXPECT_EQ(strip.grab().toImage().pixelColor(20, 4), QColor(0, 255, 0));
}

TEST(HyperLink, OpensItsOwnTextWithoutAUrlAndTurnsVisited) {
    CHyperLinkStatic link(QStringLiteral("https://example.org/x"));
    link.resize(link.sizeHint());
    link.show();
    QString opened;
    link.SetOpener([&](const QString& url) {
        opened = url;
        return 42;
    });
    EXPECT_EQ(link.CurrentColor(), QColor(0, 0, 238));
    Enter(&link);
    EXPECT_EQ(link.CurrentColor(), QColor(255, 0, 0));
    EXPECT_TRUE(link.font().underline());
    Leave(&link);
    EXPECT_FALSE(link.font().underline());
    QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_EQ(opened, "https://example.org/x");
    EXPECT_TRUE(link.IsVisited());
    EXPECT_EQ(link.CurrentColor(), QColor(85, 26, 139));
    Enter(&link);
    EXPECT_EQ(link.CurrentColor(), QColor(255, 0, 0));
}

TEST(HyperLink, AFailureIsToldWithTheReason) {
    CHyperLinkStatic link(QStringLiteral("Web Site"));
    link.SetURL(QStringLiteral("https://example.org/"));
    link.resize(link.sizeHint());
    link.show();
    ScriptedPrompt prompt;
    link.SetPrompt(&prompt);
    QString opened;
    link.SetOpener([&](const QString& url) {
        opened = url;
        return 31;
    });
    QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_EQ(opened, "https://example.org/");
    EXPECT_FALSE(link.IsVisited());
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text, "Unable to open hyperlink:\n\nThere is no application "
                                    "associated\nwith the given filename extension.");
    EXPECT_EQ(prompt.shown[0].icon, PromptIcon::Warning);
    EXPECT_EQ(HyperlinkErrorText(77).toStdString(), "Unable to open hyperlink:\n\nUnknown Error "
                                                    "(77) occurred.");
    EXPECT_EQ(link.toolTip(), "https://example.org/");
}

TEST(FolderBrowser, GivesTheChosenFolderAndKeepsItOnCancel) {
    TempDir dir;
    QDir().mkpath(QString::fromStdString(dir.File("pick/me")));
    CFolderBrowser browser(nullptr, QStringLiteral("First title"));
    browser.SetFlags(5);
    browser.SetStartFolder(QString::fromStdString(dir.File("pick/me")));
    bool setterRefused = false;
    const bool chosen = WithModal(
        [&](QWidget* modal) {
            auto* picker = qobject_cast<QFileDialog*>(modal);
            ASSERT_NE(picker, nullptr);
            EXPECT_EQ(picker, browser.Window());
            EXPECT_EQ(picker->windowTitle(), "First title");
            setterRefused = !browser.SetTitle(QStringLiteral("Other"));
            browser.SetStartFolder(QStringLiteral("/elsewhere"));
            static_cast<QDialog*>(picker)->accept();
        },
        [&] { return browser.Run(); });
    EXPECT_TRUE(chosen);
    EXPECT_TRUE(setterRefused);
    EXPECT_EQ(browser.Title(), "First title");
    EXPECT_EQ(browser.GetPath().toStdString(), dir.File("pick/me"));
    EXPECT_EQ(browser.Window(), nullptr);

    const bool again = WithModal([](QWidget* modal) { static_cast<QDialog*>(modal)->reject(); },
                                 [&] { return browser.Run(); });
    EXPECT_FALSE(again);
    EXPECT_EQ(browser.GetPath().toStdString(), dir.File("pick/me"));
    EXPECT_TRUE(browser.SetTitle(QStringLiteral("Second")));
    EXPECT_FALSE(browser.SetTitle(QString()));
    EXPECT_EQ(browser.Title(), "Second");
}

} // namespace
} // namespace tivox::test
