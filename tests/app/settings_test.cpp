// The settings file: the byte-exact writer, the reading layouts of older
// versions, the all-or-nothing load and the file's location.

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <random>

#include "acquire/folder_paths.h"
#include "app/main_dialog/settings.h"
#include "photo_writer/test_jpeg.h"

namespace tivox::test {
namespace {

using Data = std::vector<std::uint8_t>;

CSettings WindowsEraSettings() {
    CSettings s;
    s.m_cameraDrive = "E:";
    s.m_baseFolder = "C:\\";
    s.m_photoFolder = "Photos";
    s.m_galleryFolder = "C:\\";
    s.m_renamingRule = "%Date%_%Time%";
    return s;
}

// A version 150 file, written before there was a thumbnail memory or the
// upright box, loads as it was (with their defaults) and is written back as
// 170, with those two words behind it.
TEST(Settings, AVersion150FileOfSixtyBytesLoadsAndIsWrittenAs170) {
    Data expected = {0x96, 0x00, 0x00, 0x00, 0x02, 0x45, 0x3A, 0x03, 0x43, 0x3A, 0x5C, 0x06,
                     0x50, 0x68, 0x6F, 0x74, 0x6F, 0x73, 0x03, 0x43, 0x3A, 0x5C, 0x0D, 0x25,
                     0x44, 0x61, 0x74, 0x65, 0x25, 0x5F, 0x25, 0x54, 0x69, 0x6D, 0x65, 0x25,
                     0x04, 0x00, 0x00, 0x00, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                     0x01, 0x00, 0x00, 0x00, 0x50, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00};
    CSettings loaded;
    ASSERT_TRUE(loaded.Load(expected));
    EXPECT_EQ(loaded.m_thumbnailMemory, 512u);
    EXPECT_EQ(loaded.m_turnUpright, 1u);
    expected[0] = 0xAA;
    expected.insert(expected.end(), {0x00, 0x02, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00});
    EXPECT_EQ(WindowsEraSettings().Store(), expected);
    EXPECT_EQ(loaded.Store(), expected);
}

TEST(Settings, LengthPrefixesAtTheirBoundaries) {
    const std::pair<std::size_t, Data> cases[] = {
        {0, {0x00}},
        {254, {0xFE}},
        {255, {0xFF, 0xFF, 0x00}},
        {65533, {0xFF, 0xFD, 0xFF}},
        {65534, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
        {70000, {0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}}};
    for (const auto& [length, prefix] : cases) {
        SCOPED_TRACE(length);
        CSettings s, back;
        s.m_cameraDrive = std::string(length, 'x');
        const Data bytes = s.Store();
        EXPECT_EQ(Data(bytes.begin() + 4, bytes.begin() + 4 + long(prefix.size())), prefix);
        EXPECT_EQ(bytes.size(), 4 + prefix.size() + length + 4 * 1 + 32);
        ASSERT_TRUE(back.Load(bytes));
        EXPECT_EQ(back.m_cameraDrive, s.m_cameraDrive);
    }
}

TEST(Settings, TheVersionWordChoosesTheLayout) {
    // 120 added the gallery folder, backup and quality, 150 the units, 160
    // the thumbnail memory, 170 the upright box (on when the file is older);
    // a word outside 100 to 1000 is no settings file.
    const struct {
        std::int32_t version;
        bool gallery, units, memory, upright;
    } cases[] = {{1000, true, true, true, true},    {170, true, true, true, true},
                 {169, true, true, true, false},    {159, true, true, false, false},
                 {149, true, false, false, false},  {120, true, false, false, false},
                 {119, false, false, false, false}, {100, false, false, false, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.version);
        Data file; // with one-byte lengths
        auto word = [&file](std::uint32_t v) {
            for (int shift = 0; shift < 32; shift += 8)
                file.push_back(std::uint8_t(v >> shift));
        };
        word(std::uint32_t(c.version));
        for (const std::string text : {"/media/card", "/home/a", "2004", "/web", "%Time%"}) {
            if (text == "/web" && !c.gallery)
                continue;
            file.push_back(std::uint8_t(text.size()));
            file.insert(file.end(), text.begin(), text.end());
        }
        const std::uint32_t numbers[] = {5, 6, 30, 0, 90, 0, 64, 0};
        for (int i = 0; i < 3 + 2 * c.gallery + c.units + c.memory + c.upright; ++i)
            word(numbers[i]);
        CSettings s;
        s.m_metricUnits = 7;
        ASSERT_TRUE(s.Load(file));
        EXPECT_EQ(s.m_renamingRule, "%Time%");
        EXPECT_EQ(s.m_statusBarHeight, 30u);
        EXPECT_EQ(s.m_galleryFolder, c.gallery ? "/web" : DefaultGalleryFolder());
        EXPECT_EQ(s.m_createBackup, c.gallery ? 0u : 1u);
        EXPECT_EQ(s.m_jpegQuality, c.gallery ? 90u : 80u);
        EXPECT_EQ(s.m_metricUnits, c.units ? 0u : 1u);
        EXPECT_EQ(s.m_thumbnailMemory, c.memory ? 64u : 512u);
        EXPECT_EQ(s.m_turnUpright, c.upright ? 0u : 1u);
        EXPECT_EQ(s.Store()[0], 170);       // written back as the current version
        file.insert(file.end(), {1, 2, 3}); // trailing bytes are ignored
        EXPECT_TRUE(CSettings().Load(file));
        for (const std::int32_t unknown : {99, 1001, -5}) {
            Data other = file;
            for (int i = 0; i < 4; ++i)
                other[std::size_t(i)] = std::uint8_t(std::uint32_t(unknown) >> (8 * i));
            EXPECT_FALSE(CSettings().Load(other)) << unknown;
        }
    }
}

TEST(Settings, ACutFileLoadsNothing) {
    CSettings full = WindowsEraSettings();
    full.m_tilesX = 50;
    const Data bytes = full.Store();
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        CSettings s;
        s.m_baseFolder = "kept";
        EXPECT_FALSE(s.Load(Data(bytes.begin(), bytes.begin() + long(n)))) << n;
        EXPECT_EQ(s.m_baseFolder, "kept");
        EXPECT_EQ(s.m_tilesX, 4u);
    }
    CSettings s;
    ASSERT_TRUE(s.Load(bytes));
    EXPECT_EQ(s.m_tilesX, 50u); // out of range, but kept: the dialog checks it
    // A two-byte length of 0xFFFE announced a wide string: not ours.
    EXPECT_FALSE(CSettings().Load(Data{150, 0, 0, 0, 0xFF, 0xFE, 0xFF}));
    Data zero = bytes;
    zero[6] = 0; // inside the drive "E:"
    EXPECT_FALSE(CSettings().Load(zero));
    // Random bytes are no settings, though most would fill every field.
    std::mt19937 random(14);
    Data noise(4096);
    for (int round = 0; round < 200; ++round) {
        for (std::uint8_t& b : noise)
            b = std::uint8_t(random());
        EXPECT_FALSE(CSettings().Load(noise)) << round;
    }
}

TEST(Settings, FilesAndTheirLocation) {
    TempDir dir;
    const std::string path = dir.File("conf/tivoxplus/TivoxSettings.dat");
    ASSERT_TRUE(WindowsEraSettings().StoreFile(path));
    Bytes onDisc;
    ASSERT_TRUE(ReadFile(path, onDisc));
    EXPECT_EQ(onDisc, WindowsEraSettings().Store());
    EXPECT_FALSE(CSettings().LoadFile(dir.File("missing.dat")));
    EXPECT_FALSE(CSettings().StoreFile(dir.path())); // a folder can't be the file
    // Replaced, never rewritten in place: a second name of the old file keeps
    // the old bytes, and no temporary file is left beside the new one.
    ASSERT_EQ(link(path.c_str(), dir.File("old.dat").c_str()), 0);
    CSettings changed = WindowsEraSettings();
    changed.m_tilesX = 7;
    ASSERT_TRUE(changed.StoreFile(path));
    CSettings back;
    ASSERT_TRUE(back.LoadFile(path));
    EXPECT_EQ(back.m_tilesX, 7u);
    ASSERT_TRUE(back.LoadFile(dir.File("old.dat")));
    EXPECT_EQ(back.m_tilesX, 4u);
    const std::filesystem::directory_iterator folder(dir.File("conf/tivoxplus"));
    EXPECT_EQ(std::distance(begin(folder), end(folder)), 1);

    // Beside the program only when a settings file is there.
    const std::string program = dir.File("bin/tivox");
    std::filesystem::create_directories(dir.File("bin"));
    WriteFile(program, {0x7F, 'E', 'L', 'F'});
    const std::string xdg = "/cfg/tivoxplus/TivoxSettings.dat";
    EXPECT_EQ(GetSettingsPath(program, "/cfg", "/home/a"), xdg);
    EXPECT_EQ(GetSettingsPath(program, "", "/home/a"),
              "/home/a/.config/tivoxplus/TivoxSettings.dat");
    EXPECT_EQ(GetSettingsPath(program, "relative", "/home/a"),
              "/home/a/.config/tivoxplus/TivoxSettings.dat");
    WriteFile(dir.File("bin/TivoxSettings.dat"), {});
    EXPECT_EQ(GetSettingsPath(program, "/cfg", "/home/a"), dir.File("bin/TivoxSettings.dat"));
    // The program file itself is never taken, even when it bears the name.
    EXPECT_EQ(GetSettingsPath(dir.File("bin/TivoxSettings.dat"), "/cfg", "/h"), xdg);
    EXPECT_EQ(GetSettingsPath("tivox", "/cfg", "/h"), xdg);
}

} // namespace
} // namespace tivox::test
