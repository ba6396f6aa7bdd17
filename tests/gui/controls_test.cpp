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

// Pixels in (nearly) the caption's ink.
int InkPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qGray(image.pixel(x, y)) < 60;
    return count;
}

TEST(IconButton, FlatAtRestRaisedAndLitUnderTheMouseSunkWhenPressed) {
    CIconButton button(QStringLiteral("Exit"));
    QPalette pal = button.palette();
    pal.setColor(QPalette::Button, QColor(212, 208, 200));
    button.setPalette(pal);
    button.resize(80, 30);
    button.show();
    const QColor face(212, 208, 200), lit(255, 251, 243); // lightened as far as the hue allows
    const QColor light = pal.color(QPalette::Light), shadow = pal.color(QPalette::Mid);
    // Top left edge, bottom right edge, and the face beside the caption.
    auto expectLook = [&](const QImage& image, const QColor& topLeft, const QColor& bottomRight,
                          const QColor& fill) {
        EXPECT_EQ(image.pixel(0, 0), topLeft.rgb());
        EXPECT_EQ(image.pixel(79, 29), bottomRight.rgb());
        EXPECT_EQ(image.pixel(6, 15), fill.rgb());
    };
    const QImage rest = button.grab().toImage();
    expectLook(rest, face, face, face);
    EXPECT_GT(InkPixels(rest), 0);
    Enter(&button);
    const QImage over = button.grab().toImage();
    expectLook(over, light, shadow, lit);
    button.setDown(true);
    const QImage pressed = button.grab().toImage();
    expectLook(pressed, shadow, light, lit);
    // The caption moves one pixel down and right.
    EXPECT_EQ(pressed.copy(6, 6, 68, 18), over.copy(5, 5, 68, 18));
    EXPECT_NE(pressed.copy(5, 5, 68, 18), over.copy(5, 5, 68, 18));
    button.setDown(false);
    Leave(&button);
    EXPECT_EQ(button.grab().toImage(), rest);

    // The focus shows as a dotted frame three pixels inside the edge; losing
    // it ends the lit look too.
    button.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&button));
    button.setFocus();
    Enter(&button);
    const QImage focused = button.grab().toImage();
    EXPECT_GT(InkPixels(focused.copy(3, 3, 1, 24)), 4);
    EXPECT_EQ(InkPixels(rest.copy(3, 3, 1, 24)), 0);
    EXPECT_EQ(focused.pixel(6, 15), lit.rgb());
    button.clearFocus();
    EXPECT_EQ(button.grab().toImage(), rest);

    // Disabled, the caption stands in relief: no ink left, a light copy of it
    // one pixel down and right.
    button.setEnabled(false);
    const QImage disabled = button.grab().toImage();
    EXPECT_EQ(InkPixels(disabled), 0);
    const QRgb relief = pal.color(QPalette::Disabled, QPalette::Light).rgb();
    const auto* pixels = reinterpret_cast<const QRgb*>(disabled.constBits());
    EXPECT_GT(std::count(pixels, pixels + disabled.width() * disabled.height(), relief), 0);
}

TEST(IconButton, ABitmapsKeyColourIsSeeThroughAndAMissingPictureLeavesTheCaption) {
    CIconButton button(QStringLiteral("Caption"));
    ASSERT_EQ(button.SetBitmap(QStringLiteral(":/icons/fullscreen.svg"), qRgb(0x7F, 0x7F, 0x7F)),
              0);
    EXPECT_EQ(qAlpha(button.Picture().pixel(0, 0)), 0);     // the grey frame
    EXPECT_EQ(qAlpha(button.Picture().pixel(32, 10)), 255); // the screen
    EXPECT_EQ(button.SetIcon(QStringLiteral(":/icons/none.svg"), 16, 16), 1);
    EXPECT_TRUE(button.Picture().isNull());
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
    // Caption only, as "Show Statusbar".
    CIconButton box(QStringLiteral("Show Statusbar"));
    box.setCheckable(true);
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
