// A grabbed picture of the main dialog: the coloured lines and the icon
// buttons are really drawn, in the right places.

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

TEST(DialogDrawing, LinesAndButtonPictures) {
    DialogRig rig;
    rig.dlg->show();
    const QImage image = rig.dlg->grab().toImage();
    // Red, green and blue lines from top to bottom.
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
    // The red cross of Exit, the green arrows of Get Photos and the rule tag.
    auto reddish = [](const QColor& c) { return c.red() > 180 && c.green() < 90 && c.blue() < 90; };
    auto greenish = [](const QColor& c) {
        return c.green() > 120 && c.red() < 90 && c.blue() < 110;
    };
    EXPECT_GT(Count(image, rig.dlg->Button("exit")->geometry(), reddish), 40);
    EXPECT_GT(Count(image, rig.dlg->Button("getPhotos")->geometry(), greenish), 40);
    EXPECT_GT(Count(image, rig.dlg->Button("addRuleTag")->geometry(), greenish), 10);
    // A caption-only button at rest is flat: no edge, just its background.
    CIconButton* date = rig.dlg->Button("currentDate");
    const QColor face = date->Color(CIconButton::kBackOut);
    const QRect edge(date->geometry().topLeft(), QSize(date->width(), 1));
    EXPECT_EQ(Count(image, edge, [&](const QColor& c) { return c == face; }), date->width());
}

} // namespace
} // namespace tivox::test
