#include <string>

#include <gtest/gtest.h>

#include "app/fullscreen_status.h"
#include "app/tool_resize.h"
#include "app/tool_scope.h"

namespace tivox {
namespace {

TEST(ProcessBoxes, ExclusionRules) {
    ProcessScope s; // "Current" checked
    // A colour while "Current" is checked: Current goes, the colour comes.
    s.green = true;
    EXPECT_TRUE(ClickProcessColor(s, 2));
    EXPECT_FALSE(s.current);
    EXPECT_TRUE(s.green);
    // Colours are free among themselves: a second one is added, nothing written.
    s.blue = true;
    EXPECT_FALSE(ClickProcessColor(s, 3));
    EXPECT_TRUE(s.green && s.blue);
    // Unchecking a colour while neither Current nor All: just unchecked.
    s.green = false;
    EXPECT_FALSE(ClickProcessColor(s, 2));
    EXPECT_FALSE(s.green);
    EXPECT_TRUE(s.blue);
    // "All" clears everything else.
    s.all = true;
    EXPECT_TRUE(ClickProcessAll(s));
    EXPECT_FALSE(s.blue || s.current);
    // Unchecking "Current" or "All" leaves no box checked: nothing is chosen.
    s.all = false;
    EXPECT_FALSE(ClickProcessAll(s));
    for (int marker = 0; marker <= 3; ++marker) {
        EXPECT_FALSE(s.Chooses(marker));
    }
    s.current = true;
    s.red = true; // as read; Current wins
    EXPECT_TRUE(ClickProcessCurrent(s));
    EXPECT_FALSE(s.red);
}

TEST(ProcessBoxes, WalkChoosesByMarker) {
    ProcessScope s;
    s.current = false;
    s.red = s.blue = true;
    EXPECT_FALSE(s.Chooses(0));
    EXPECT_TRUE(s.Chooses(1));
    EXPECT_FALSE(s.Chooses(2));
    EXPECT_TRUE(s.Chooses(3));
    s.all = true;
    EXPECT_TRUE(s.Chooses(0));
}

TEST(KeepAspect, FromThePictureOnTheScreen) {
    const Size shown{1024, 768};
    EXPECT_EQ(HeightFromWidth(400, shown), 300);
    EXPECT_EQ(HeightFromWidth(5, shown), 4); // 3.75 rounds up
    EXPECT_EQ(WidthFromHeight(300, shown), 400);
    EXPECT_EQ(WidthFromHeight(3, shown), 4);
    const Size upright{576, 768};
    EXPECT_EQ(HeightFromWidth(300, upright), 400);
}

TEST(StatusText, LongPathsLoseTheirFront) {
    EXPECT_EQ(StatusTextOf("/photos/a.jpg"), "/photos/a.jpg");
    const std::string name = "/IMG_0001.jpg";
    const std::string longPath = std::string(400, 'x') + name;
    const std::string cut = StatusTextOf(longPath);
    EXPECT_EQ(cut.size(), kStatusTextChars);
    EXPECT_EQ(cut.substr(0, 3), "...");
    EXPECT_EQ(cut.substr(cut.size() - name.size()), name);
    // Two-byte characters are counted as one and never split.
    std::string umlauts;
    for (int i = 0; i < 20; ++i) {
        umlauts += "\xC3\xA4"; // ä
    }
    const std::string cutUmlauts = StatusTextOf(umlauts, 10);
    EXPECT_EQ(cutUmlauts, "..." + umlauts.substr(0, 14));
    EXPECT_EQ(StatusTextOf("abcdef", 2), "..");
}

} // namespace
} // namespace tivox
