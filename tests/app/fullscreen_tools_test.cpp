#include <string>

#include <gtest/gtest.h>

#include "app/fullscreen_status.h"
#include "app/tool_resize.h"
#include "app/tool_scope.h"

namespace tivox {
namespace {

TEST(ProcessBoxes, ExclusionRules) {
    ProcessScope s; // "Current" checked
    s.green = true; // a colour replaces "Current"
    EXPECT_TRUE(ClickProcessColor(s, 2));
    EXPECT_FALSE(s.current);
    s.blue = true; // colours add up: nothing to write back
    EXPECT_FALSE(ClickProcessColor(s, 3));
    EXPECT_TRUE(s.green && s.blue);
    s.green = false; // unchecking a colour touches nothing else
    EXPECT_FALSE(ClickProcessColor(s, 2));
    EXPECT_TRUE(s.blue);
    s.all = true; // "All" clears everything else
    EXPECT_TRUE(ClickProcessAll(s));
    EXPECT_FALSE(s.blue || s.current);
    s.all = false; // unchecked, nothing is chosen at all
    EXPECT_FALSE(ClickProcessAll(s));
    for (int marker = 0; marker <= 3; ++marker)
        EXPECT_FALSE(s.Chooses(marker));
    s.current = true;
    s.red = true; // as read; "Current" wins
    EXPECT_TRUE(ClickProcessCurrent(s));
    EXPECT_FALSE(s.red);
}

TEST(KeepAspect, FromThePictureOnTheScreen) {
    const Size shown{1024, 768};
    EXPECT_EQ(HeightFromWidth(400, shown), 300);
    EXPECT_EQ(HeightFromWidth(5, shown), 4); // 3.75 rounds up
    EXPECT_EQ(WidthFromHeight(3, shown), 4);
    EXPECT_EQ(HeightFromWidth(300, Size{576, 768}), 400);
}

TEST(StatusText, LongPathsLoseTheirFront) {
    EXPECT_EQ(StatusTextOf("/photos/a.jpg"), "/photos/a.jpg");
    const std::string name = "/IMG_0001.jpg";
    const std::string cut = StatusTextOf(std::string(400, 'x') + name);
    EXPECT_EQ(cut.size(), kStatusTextChars);
    EXPECT_EQ(cut.substr(0, 3), "...");
    EXPECT_EQ(cut.substr(cut.size() - name.size()), name);
    // Two-byte characters count as one and are never split.
    std::string umlauts;
    for (int i = 0; i < 20; ++i)
        umlauts += "\xC3\xA4"; // ä
    EXPECT_EQ(StatusTextOf(umlauts, 10), "..." + umlauts.substr(0, 14));
    EXPECT_EQ(StatusTextOf("abcdef", 2), "..");
}

} // namespace
} // namespace tivox
