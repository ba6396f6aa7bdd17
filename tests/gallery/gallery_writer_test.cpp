#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

#include "gallery/gallery_writer.h"
#include "gallery/link_text.h"
#include "gallery_test_support.h"
#include "photo_writer/test_jpeg.h"

namespace tivox {
namespace {

using test::CountOf;
using test::HtmlPages;
using test::MakePictureFolders;
using test::NumberedNames;
using test::ReadText;
using test::ScriptedPrompt;
using test::TempDir;
using Pages = std::vector<std::string>;

bool WriteGallery(const std::string& folder, const std::string& title, Size thumbTiles,
                  Size photoTiles, ScriptedPrompt& prompt, const Translator& translate = {}) {
    CGalleryWriter writer(folder, title, thumbTiles, photoTiles, prompt, translate);
    return writer.Write();
}

TEST(GalleryWriter, PagesHoldEveryPictureOnceAndNoPageIsEmpty) {
    const struct {
        const char* name;
        int pictures;
        Size thumbTiles, photoTiles;
        int thumbPages, photoPages, onLastThumbPage, onLastPhotoPage;
    } cases[] = {
        {"none", 0, {4, 4}, {1, 1}, 0, 0, 0, 0},
        {"one", 1, {4, 4}, {1, 1}, 1, 1, 1, 1},
        {"exactly one page", 16, {4, 4}, {1, 1}, 1, 16, 16, 1},
        {"one over", 17, {4, 4}, {1, 1}, 2, 17, 1, 1},
        {"twenty", 20, {4, 4}, {1, 1}, 2, 20, 4, 1},
        {"two per photo page", 3, {4, 4}, {2, 1}, 1, 2, 3, 1},
        {"three across", 7, {4, 4}, {3, 1}, 1, 3, 7, 1},
        {"one by one thumbnails", 3, {1, 1}, {2, 2}, 3, 1, 1, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TempDir dir;
        MakePictureFolders(dir.path(), NumberedNames(c.pictures));
        ScriptedPrompt prompt;
        CGalleryWriter writer(dir.path(), "Title", c.thumbTiles, c.photoTiles, prompt);
        ASSERT_TRUE(writer.Write());
        EXPECT_TRUE(prompt.Texts().empty());
        Pages expected;
        for (int i = 1; i <= c.photoPages; ++i)
            expected.push_back("photo" + std::to_string(i) + ".html");
        for (int i = 1; i <= c.thumbPages; ++i)
            expected.push_back("thumbs" + std::to_string(i) + ".html");
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(HtmlPages(dir.path()), expected);
        if (c.pictures == 0)
            continue;
        EXPECT_EQ(writer.ThumbPageCount(), c.thumbPages);
        EXPECT_EQ(writer.PhotoPageCount(), c.photoPages);
        int thumbImages = 0, photoImages = 0;
        for (const auto& page : expected) {
            const std::string text = ReadText(dir.File(page));
            EXPECT_EQ(CountOf(text, "<tr>"), CountOf(text, "</tr>")) << page;
            EXPECT_EQ(CountOf(text, "\n"), CountOf(text, "\r\n")) << page << ": bare line feed";
            (page[0] == 't' ? thumbImages : photoImages) += CountOf(text, "<img ");
        }
        EXPECT_EQ(thumbImages, c.pictures);
        EXPECT_EQ(photoImages, c.pictures);
        const auto imagesOn = [&](const std::string& page) {
            return CountOf(ReadText(dir.File(page)), "<img ");
        };
        EXPECT_EQ(imagesOn("thumbs" + std::to_string(c.thumbPages) + ".html"), c.onLastThumbPage);
        EXPECT_EQ(imagesOn("photo" + std::to_string(c.photoPages) + ".html"), c.onLastPhotoPage);
        test::ExpectPagesValid(dir.path());
    }
}

TEST(GalleryWriter, LinksLeadToThePagesThatShowThePictures) {
    TempDir dir;
    MakePictureFolders(dir.path(), NumberedNames(3));
    ScriptedPrompt prompt;
    ASSERT_TRUE(WriteGallery(dir.path(), "Trip & <Co>", {4, 4}, {2, 1}, prompt));
    const std::string thumbs = ReadText(dir.File("thumbs1.html"));
    const std::string photo = ReadText(dir.File("photo1.html"));
    EXPECT_NE(thumbs.find("<b>Trip & <Co></b>"), std::string::npos); // the title as typed
    for (const std::string& page : {thumbs, photo})
        EXPECT_NE(page.find("charset=utf-8"), std::string::npos);
    for (const char* link : {"photo1.html\"><img src=\"pics/thumbs/IMG_0001.jpg\"",
                             "photo1.html\"><img src=\"pics/thumbs/IMG_0002.jpg\"",
                             "photo2.html\"><img src=\"pics/thumbs/IMG_0003.jpg\""})
        EXPECT_NE(thumbs.find(link), std::string::npos) << link;
    // Two pictures side by side: one row with both cells.
    EXPECT_EQ(CountOf(photo, "<tr><td><img src=\"pics/IMG_000"), 1);

    // Both navigation rows: previous, up to the thumbnail page of the
    // picture, next; no back link on the first page nor forward on the last.
    TempDir twenty;
    MakePictureFolders(twenty.path(), NumberedNames(20));
    ASSERT_TRUE(WriteGallery(twenty.path(), "", {4, 4}, {1, 1}, prompt));
    const struct {
        const char* page;
        const char* text;
    } navigation[] = {
        {"thumbs1.html", "< Previous&nbsp;"},
        {"thumbs1.html", "<a href=\"thumbs2.html\">Next</a>"},
        {"thumbs2.html", "<a href=\"thumbs1.html\">Previous</a>"},
        {"thumbs2.html", "&nbsp;> Next</font>"},
        {"photo16.html", "^ <a href=\"thumbs1.html\">Gallery"},
        {"photo17.html", "^ <a href=\"thumbs2.html\">Gallery"},
        {"photo17.html", "<a href=\"photo16.html\">Previous</a>"},
        {"photo17.html", "<a href=\"photo18.html\">Next</a>"},
        {"photo20.html", "&nbsp;> Next</font>"},
    };
    for (const auto& n : navigation)
        EXPECT_EQ(CountOf(ReadText(twenty.File(n.page)), n.text), 2) << n.page << ": " << n.text;
}

TEST(GalleryWriter, PicturesComeInByteOrderAndOnlyJpgFilesCount) {
    TempDir dir;
    MakePictureFolders(dir.path(), {"b.jpg", "B.JPG", "a.Jpg", "c.jpeg", "d.jpg.bak", ".jpg"});
    std::filesystem::create_directories(dir.File("pics/thumbs/folder.jpg"));
    ASSERT_EQ(mkfifo(dir.File("pics/thumbs/fifo.jpg").c_str(), 0600), 0);
    ScriptedPrompt prompt;
    CGalleryWriter writer(dir.path(), "", {4, 4}, {1, 1}, prompt);
    ASSERT_TRUE(writer.Write());
    EXPECT_EQ(writer.PictureCount(), 4);
    const std::string thumbs = ReadText(dir.File("thumbs1.html"));
    const auto at = [&](const char* name) { return thumbs.find(name); };
    EXPECT_LT(at("thumbs/.jpg"), at("thumbs/B.JPG"));
    EXPECT_LT(at("thumbs/B.JPG"), at("thumbs/a.Jpg"));
    EXPECT_LT(at("thumbs/a.Jpg"), at("thumbs/b.jpg"));
    for (const char* left : {"c.jpeg", "folder.jpg", "fifo.jpg", "d.jpg.bak"})
        EXPECT_EQ(at(left), std::string::npos) << left;
}

TEST(GalleryWriter, NamesWithSpecialCharactersLinkRightAndInjectNothing) {
    const Pages names = {"a b.jpg",         "quote\".jpg", "<img src=x onerror=alert(1)>.jpg",
                         "R&D.jpg",         "#1.jpg",      "what?.jpg",
                         "100%.jpg",        "it's.jpg",    "\u00DCber.jpg",
                         "back\\slash.jpg", "a:b.jpg"};
    TempDir dir;
    MakePictureFolders(dir.path(), names);
    ScriptedPrompt prompt;
    ASSERT_TRUE(WriteGallery(dir.path(), "", {4, 4}, {1, 1}, prompt));
    const std::string thumbs = ReadText(dir.File("thumbs1.html"));
    EXPECT_EQ(CountOf(thumbs, "<img "), int(names.size())) << "a name opened a tag";
    EXPECT_EQ(CountOf(thumbs, "onerror"), 1) << "the name stays, encoded, as text of one src";
    for (const char* src : {"a%20b.jpg", "R&amp;D.jpg", "%231.jpg", "%C3%9Cber.jpg"})
        EXPECT_NE(thumbs.find(std::string("src=\"pics/thumbs/") + src + "\""), std::string::npos)
            << src;
    test::ExpectPagesValid(dir.path());

    EXPECT_EQ(PercentEncodeSegment("IMG_0001-x.y~z.jpg"), "IMG_0001-x.y~z.jpg");
    EXPECT_EQ(PercentEncodeSegment("a b/c?d#e%f\"g<h>"), "a%20b%2Fc%3Fd%23e%25f%22g%3Ch%3E");
    EXPECT_EQ(PercentEncodeSegment(std::string("\x01\xFF", 2)), "%01%FF");
    EXPECT_EQ(EscapeHtml("a&b<c>d\"e'f"), "a&amp;b&lt;c&gt;d&quot;e&#39;f");
    EXPECT_EQ(FileNameForLink("R&D's.jpg"), "R&amp;D&#39;s.jpg");
}

TEST(GalleryWriter, TranslatedNavigationWordsGoIntoThePages) {
    TempDir dir;
    MakePictureFolders(dir.path(), {"a.jpg"});
    ScriptedPrompt prompt;
    const Translator german = [](const std::string& english) {
        return english == "Previous" ? "Zur\u00FCck" : english == "Gallery" ? "Galerie" : english;
    };
    ASSERT_TRUE(WriteGallery(dir.path(), "", {4, 4}, {1, 1}, prompt, german));
    EXPECT_EQ(CountOf(ReadText(dir.File("thumbs1.html")), "< Zur\u00FCck&nbsp;"), 2);
    EXPECT_EQ(CountOf(ReadText(dir.File("photo1.html")), ">Galerie</a>"), 2);
}

TEST(GalleryWriter, MissingPictureFolderGivesFalseWithoutMessageOrPage) {
    TempDir dir;
    std::filesystem::create_directories(dir.File("pics"));
    ScriptedPrompt prompt;
    EXPECT_FALSE(WriteGallery(dir.path(), "", {4, 4}, {1, 1}, prompt));
    EXPECT_FALSE(WriteGallery(dir.File("nowhere"), "", {4, 4}, {1, 1}, prompt));
    EXPECT_TRUE(prompt.Texts().empty());
    EXPECT_TRUE(HtmlPages(dir.path()).empty());
}

TEST(GalleryWriter, PageThatCannotBeWrittenStopsWithItsMessageAndKeepsEarlierPages) {
    const struct {
        const char* blocked; // a folder in the way of this page
        const char* message;
        int photoPagesLeft;
    } cases[] = {
        {"thumbs2.html", "Error creating thumbnail page: aborting", 16},
        {"photo3.html", "Error creating photo page: aborting", 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.blocked);
        TempDir dir;
        MakePictureFolders(dir.path(), NumberedNames(17));
        std::filesystem::create_directories(dir.File(c.blocked));
        ScriptedPrompt prompt;
        EXPECT_FALSE(WriteGallery(dir.path(), "", {4, 4}, {1, 1}, prompt));
        ASSERT_EQ(prompt.Texts().size(), 1u);
        EXPECT_EQ(prompt.Texts()[0], c.message);
        EXPECT_EQ(prompt.shown[0].icon, PromptIcon::Stop);
        Pages expected = {"thumbs1.html", c.blocked};
        for (int i = 1; i <= c.photoPagesLeft; ++i)
            expected.push_back("photo" + std::to_string(i) + ".html");
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(HtmlPages(dir.path()), expected);
    }
}

} // namespace
} // namespace tivox
