#include <gtest/gtest.h>

#include <filesystem>

#include "gallery/gallery_command.h"
#include "gallery_test_support.h"
#include "imageops/operation.h"
#include "support/test_jpeg.h"

namespace tivox {
namespace {

namespace fs = std::filesystem;
using test::CountingBusy;
using test::Exists;
using test::HtmlPages;
using test::ScriptedPrompt;
using test::TempDir;

// Stands in for the selection pass: "copies" each chosen photo name into the
// operation's folder and notes what it was asked.
struct FakePass {
    std::vector<std::string> chosen;
    std::vector<COperation> operations;
    CGalleryCommand::ApplyOperation Bind() {
        return [this](const COperation& op) {
            operations.push_back(op);
            for (const auto& name : chosen)
                test::WriteFile(op.text + "/" + name, test::SmallJpeg(8, 6));
        };
    }
};

class GalleryCommandTest : public testing::Test {
protected:
    void SetUp() override {
        photos = dir.File("Pictures/2004");
        fs::create_directories(photos);
        fs::create_directories(photos + "_bak");
        test::WriteFile(photos + "/IMG_1.jpg", test::SmallJpeg(8, 6));
        command.m_galleryFolder = dir.File("Galleries");
        command.m_photoFolder = photos;
    }
    std::string Gallery() const { return dir.File("Galleries/2004"); }

    TempDir dir;
    std::string photos;
    ScriptedPrompt prompt;
    CountingBusy busy;
    CGalleryCommand command{prompt, busy};
    FakePass pass;
};

TEST_F(GalleryCommandTest, MakesTheFoldersAndMissingParentsThumbnailsFirst) {
    pass.chosen = {"a.jpg", "b.jpg"};
    command.m_form.m_title = "T";
    const GalleryReport report = command.OnCreateGallery(pass.Bind());
    EXPECT_EQ(report.outcome, GalleryOutcome::Written);
    EXPECT_EQ(report.folder, Gallery());
    EXPECT_EQ(report.pictures, 2);
    EXPECT_TRUE(prompt.Texts().empty());
    ASSERT_EQ(pass.operations.size(), 2u);
    EXPECT_EQ(pass.operations[0].code, opResize);
    EXPECT_EQ(pass.operations[0].kind, kindResize);
    EXPECT_EQ(pass.operations[0].text, Gallery() + "/pics/thumbs");
    EXPECT_EQ(pass.operations[0].width, 200);
    EXPECT_EQ(pass.operations[0].height, 150);
    EXPECT_EQ(pass.operations[1].text, Gallery() + "/pics");
    EXPECT_EQ(pass.operations[1].width, 800);
    EXPECT_EQ(pass.operations[1].height, 600);
    EXPECT_EQ(HtmlPages(Gallery()),
              (std::vector<std::string>{"photo1.html", "photo2.html", "thumbs1.html"}));
    EXPECT_EQ(busy.begun, 1);
    EXPECT_EQ(busy.depth, 0);
}

TEST_F(GalleryCommandTest, ASecondRunWithFewerPhotosLeavesNoTrace) {
    pass.chosen = test::NumberedNames(20);
    ASSERT_EQ(command.OnCreateGallery(pass.Bind()).outcome, GalleryOutcome::Written);
    EXPECT_TRUE(Exists(Gallery() + "/thumbs2.html"));
    test::WriteFile(Gallery() + "/pics/thumbs/stray.txt", {1});
    fs::create_directories(Gallery() + "/old/deeper");

    pass.chosen = {"IMG_0003.jpg"};
    const GalleryReport report = command.OnCreateGallery(pass.Bind());
    EXPECT_EQ(report.outcome, GalleryOutcome::Written);
    std::vector<std::string> left;
    for (const auto& entry : fs::recursive_directory_iterator(Gallery()))
        left.push_back(fs::relative(entry.path(), Gallery()).string());
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left,
              (std::vector<std::string>{"photo1.html", "pics", "pics/IMG_0003.jpg", "pics/thumbs",
                                        "pics/thumbs/IMG_0003.jpg", "thumbs1.html"}));
}

TEST_F(GalleryCommandTest, NothingChosenLeavesEmptyFoldersAndNoPage) {
    test::WriteFile(dir.File("Galleries/2004/thumbs1.html"), {1});
    const GalleryReport report = command.OnCreateGallery(pass.Bind());
    EXPECT_EQ(report.outcome, GalleryOutcome::Written);
    EXPECT_EQ(report.pictures, 0);
    EXPECT_TRUE(HtmlPages(Gallery()).empty());
    EXPECT_TRUE(fs::is_directory(Gallery() + "/pics/thumbs"));
}

TEST_F(GalleryCommandTest, CurrentPhotoAsksFirstAndNoLeavesEverything) {
    fs::create_directories(Gallery());
    test::WriteFile(Gallery() + "/thumbs1.html", {1});
    command.m_processCurrent = true;
    ScriptedPrompt no;
    no.answers = {PromptAnswer::No};
    CGalleryCommand declining(no, busy);
    declining.m_galleryFolder = command.m_galleryFolder;
    declining.m_photoFolder = photos;
    declining.m_processCurrent = true;
    bool controlsRead = false;
    declining.m_readControls = [&] { controlsRead = true; };
    EXPECT_EQ(declining.OnCreateGallery(pass.Bind()).outcome, GalleryOutcome::Declined);
    ASSERT_EQ(no.Texts().size(), 1u);
    EXPECT_EQ(no.Texts()[0], "Create an HTML gallery from the current photo only?");
    EXPECT_EQ(no.shown[0].icon, PromptIcon::Question);
    EXPECT_TRUE(pass.operations.empty());
    EXPECT_FALSE(controlsRead);
    EXPECT_EQ(busy.begun, 0);
    EXPECT_TRUE(Exists(Gallery() + "/thumbs1.html"));

    pass.chosen = {"a.jpg"};
    EXPECT_EQ(command.OnCreateGallery(pass.Bind()).outcome, GalleryOutcome::Written);
    EXPECT_EQ(prompt.Texts().size(), 1u);
    EXPECT_EQ(pass.operations.size(), 2u);
}

TEST_F(GalleryCommandTest, GalleryFolderOverPhotosIsRefusedBeforeAnythingIsDeleted) {
    const std::string base = dir.File("Pictures");
    for (const std::string& gallery :
         {photos, photos + "/gallery", base, photos + "_bak", photos + "_bak/x"}) {
        SCOPED_TRACE(gallery);
        ScriptedPrompt refusal;
        CGalleryCommand c(refusal, busy);
        c.m_photoFolder = photos;
        EXPECT_EQ(c.CreateGalleryIn(gallery, pass.Bind()).outcome, GalleryOutcome::Refused);
        ASSERT_EQ(refusal.Texts().size(), 1u);
        EXPECT_NE(refusal.Texts()[0].find(gallery), std::string::npos);
        EXPECT_EQ(refusal.shown[0].icon, PromptIcon::Stop);
        EXPECT_TRUE(Exists(photos + "/IMG_1.jpg"));
        EXPECT_FALSE(Exists(gallery + "/pics"));
    }
    // The base folder of galleries equal to the photos' base: the gallery
    // folder is the photo folder itself, as with both defaults at one place.
    command.m_galleryFolder = base;
    EXPECT_EQ(command.OnCreateGallery(pass.Bind()).outcome, GalleryOutcome::Refused);
    EXPECT_TRUE(Exists(photos + "/IMG_1.jpg"));
    EXPECT_TRUE(pass.operations.empty());
}

TEST_F(GalleryCommandTest, FolderThatCannotBeMadeGivesTheFolderMessage) {
    test::WriteFile(dir.File("Galleries"), {1}); // a file where the base should be
    const GalleryReport report = command.OnCreateGallery(pass.Bind());
    EXPECT_EQ(report.outcome, GalleryOutcome::FolderError);
    ASSERT_EQ(prompt.Texts().size(), 1u);
    EXPECT_EQ(prompt.Texts()[0], "Error creating gallery directories");
    EXPECT_TRUE(pass.operations.empty());
    EXPECT_EQ(busy.depth, 0);

    // A file where the gallery folder should be stays, and is reported.
    fs::remove(dir.File("Galleries"));
    fs::create_directories(dir.File("Galleries"));
    test::WriteFile(Gallery(), {7});
    EXPECT_EQ(command.OnCreateGallery(pass.Bind()).outcome, GalleryOutcome::FolderError);
    EXPECT_EQ(prompt.Texts().size(), 2u);
    EXPECT_TRUE(fs::is_regular_file(Gallery()));
    fs::remove(Gallery());

    // A file named "pics" in an existing gallery folder goes with the rest.
    fs::create_directories(Gallery());
    test::WriteFile(Gallery() + "/pics", {1});
    EXPECT_EQ(command.OnCreateGallery(pass.Bind()).outcome, GalleryOutcome::Written);
}

TEST_F(GalleryCommandTest, PhotoFolderWithoutANameHasNoGallery) {
    command.m_photoFolder = "/";
    EXPECT_EQ(command.GetGalleryFolder(), "");
    EXPECT_EQ(command.OnCreateGallery(pass.Bind()).outcome, GalleryOutcome::NoFolder);
    EXPECT_TRUE(pass.operations.empty());
    EXPECT_TRUE(prompt.Texts().empty());
}

} // namespace
} // namespace tivox
