// Grabbed pictures of the main dialog: the coloured lines and the icon
// buttons are really drawn, in the right places.

#include <QEnterEvent>
#include <QTest>
#include <gtest/gtest.h>

#include "controls/color_static.h"
#include "controls/icon_button.h"
#include "gui_fixture.h"

namespace tivox::test {
namespace {

// How many pixels of `area` in the grabbed dialog match `match`.
template <typename Match> int Count(const QImage& image, const QRect& area, Match match) {
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            n += match(image.pixelColor(x, y)) ? 1 : 0;
    return n;
}

TEST(DialogDrawing, TheThreeLinesAreRedGreenAndBlueFromTopToBottom) {
    DialogRig rig;
    rig.dlg->show();
    const QImage image = rig.dlg->grab().toImage();
    const QColor want[3] = {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255)};
    int lastTop = -1;
    for (int i = 0; i < 3; ++i) {
        const QRect area = rig.dlg->Line(i)->geometry();
        ASSERT_GT(area.width(), 100);
        EXPECT_GT(area.top(), lastTop);
        lastTop = area.top();
        EXPECT_EQ(Count(image, area, [&](const QColor& c) { return c == want[i]; }),
                  area.width() * area.height())
            << "line " << i;
    }
}

TEST(DialogDrawing, IconButtonsShowTheirPictures) {
    DialogRig rig;
    rig.dlg->show();
    const QImage image = rig.dlg->grab().toImage();
    auto reddish = [](const QColor& c) { return c.red() > 180 && c.green() < 90 && c.blue() < 90; };
    auto greenish = [](const QColor& c) {
        return c.green() > 120 && c.red() < 90 && c.blue() < 110;
    };
    // The red cross of Exit, the green arrow of Get Photos and of the rule tag.
    EXPECT_GT(Count(image, rig.dlg->Button("exit")->geometry(), reddish), 40);
    EXPECT_GT(Count(image, rig.dlg->Button("getPhotos")->geometry(), greenish), 40);
    EXPECT_GT(Count(image, rig.dlg->Button("addRuleTag")->geometry(), greenish), 10);
    // The full-screen picture's grey frame is see-through.
    const QRect button = rig.dlg->Button("fullScreen")->geometry();
    const QRect full(button.left(), button.top(), 3 + 64, button.height()); // the picture
    EXPECT_EQ(Count(image, full, [](const QColor& c) { return c == QColor(0x7F, 0x7F, 0x7F); }), 0);
    // A caption-only button at rest is flat: no edge, just its background.
    CIconButton* date = rig.dlg->Button("currentDate");
    const QColor face = date->Color(CIconButton::kBackOut);
    const QRect edge(date->geometry().topLeft(), QSize(date->width(), 1));
    EXPECT_EQ(Count(image, edge, [&](const QColor& c) { return c == face; }), date->width());
}

TEST(DialogDrawing, AHoveredButtonLightsUpWithItsOffsetBackground) {
    DialogRig rig;
    rig.dlg->show();
    CIconButton* date = rig.dlg->Button("currentDate");
    const QColor rest = date->grab().toImage().pixelColor(date->width() / 2, 2);
    QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), date->mapToGlobal(QPointF(2, 2)));
    QApplication::sendEvent(date, &enter);
    const QColor lit = date->grab().toImage().pixelColor(date->width() / 2, 2);
    EXPECT_EQ(lit, date->Color(CIconButton::kBackIn));
    EXPECT_NE(lit, rest);
    EXPECT_GE(lit.lightness(), rest.lightness());
}

} // namespace
} // namespace tivox::test
