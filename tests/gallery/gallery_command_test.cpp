#include "gallery/gallery_command.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "gallery/gallery_folder.h"
#include "gallery_test_support.h"
#include "imageops/operation.h"
#include "photos/photo_list.h"
#include "platform/geometry.h"
#include "support/fake_edit_host.h"

namespace tivox {
namespace {

namespace fs = std::filesystem;
using test::Exists;
using test::HtmlPages;
using Names = std::vector<std::string>;

// Stands in for the selection pass: "copies" each chosen photo name into the
// operation's folder and its thumbnail folder, and notes what it was asked.
struct FakePass {
    Names chosen;
    std::vector<COperation> operations;
    CGalleryCommand::ApplyOperation Bind() {
        return [this](const COperation& op, IStepProgress&) {
            operations.push_back(op);
            for (const auto& name : chosen)
                for (const char* sub : {"/", "/thumbs/"})
                    test::WriteFile(op.text + sub + name, test::SmallJpeg(8, 6));
            return PassResult{};
        };
    }
};

class GalleryCommandTest : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(photos + "_bak");
        test::PutFile(photos + "/IMG_1.jpg", test::SmallJpeg(8, 6));
        command.m_galleryFolder = dir.File("Galleries");
        command.m_photoFolder = photos;
    }
    GalleryOutcome Create() { return command.OnCreateGallery(pass.Bind()).outcome; }
    // A gallery folder as an earlier run left it, with an old page.
    void EarlierGallery() {
        test::PutFile(gallery + "/thumbs1.html", "old");
        std::string error;
        ASSERT_TRUE(MarkGalleryFolder(gallery, error)) << error;
    }

    test::TempDir dir;
    const std::string photos = dir.File("Pictures/2004");
    const std::string gallery = dir.File("Galleries/2004");
    test::ScriptedPrompt prompt;
    test::CountingBusy busy;
    test::ScriptedProgress progress;
    CGalleryCommand command{prompt, busy, progress};
    FakePass pass;
};

TEST_F(GalleryCommandTest, MakesTheFoldersAndMissingParentsInOneWalkOverThePhotos) {
    pass.chosen = {"a.jpg", "b.jpg"};
    const GalleryReport report = command.OnCreateGallery(pass.Bind());
    EXPECT_EQ(report.outcome, GalleryOutcome::Written);
    EXPECT_EQ(report.folder, gallery);
    EXPECT_EQ(report.pictures, 2);
    EXPECT_TRUE(prompt.Texts().empty());
    ASSERT_EQ(pass.operations.size(), 1u);
    const COperation& copies = pass.operations[0];
    EXPECT_EQ(copies.code, opResize);
    EXPECT_EQ(copies.kind, kindResize);
    EXPECT_EQ(copies.text, gallery + "/pics");
    EXPECT_EQ((Size{copies.width, copies.height}), (Size{800, 600}));
    EXPECT_EQ((Size{copies.x, copies.y}), (Size{200, 150}));
    EXPECT_EQ(HtmlPages(gallery), (Names{"photo1.html", "photo2.html", "thumbs1.html"}));
    EXPECT_EQ(busy.begun, 1);
    EXPECT_EQ(busy.depth, 0);
}

TEST_F(GalleryCommandTest, ASecondRunWithFewerPhotosLeavesNoTrace) {
    pass.chosen = test::NumberedNames(20);
    ASSERT_EQ(Create(), GalleryOutcome::Written);
    EXPECT_TRUE(Exists(gallery + "/thumbs2.html"));
    test::WriteFile(gallery + "/pics/thumbs/stray.txt", {1});
    fs::create_directories(gallery + "/old/deeper");
    pass.chosen = {"IMG_0003.jpg"};
    EXPECT_EQ(Create(), GalleryOutcome::Written);
    EXPECT_EQ(test::TreeNames(gallery),
              (Names{kGalleryMarkerName, "photo1.html", "pics/", "pics/IMG_0003.jpg",
                     "pics/thumbs/", "pics/thumbs/IMG_0003.jpg", "thumbs1.html"}));
    EXPECT_TRUE(prompt.Texts().empty());
}

// Another photo folder named as the gallery folder once lost its photos.
TEST_F(GalleryCommandTest, AFolderNoGalleryRunMadeIsEmptiedOnlyAfterYes) {
    test::PutFile(gallery + "/IMG_9.jpg", "mine");
    prompt.answers = {PromptAnswer::No};
    EXPECT_EQ(Create(), GalleryOutcome::Kept);
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_NE(prompt.Texts()[0].find(gallery + " holds files"), std::string::npos);
    EXPECT_EQ(prompt.shown[0].defaultAnswer, PromptAnswer::No);
    EXPECT_EQ(test::TreeNames(gallery), (Names{"IMG_9.jpg"}));
    EXPECT_TRUE(pass.operations.empty());
    EXPECT_EQ(busy.depth, 0);

    EXPECT_EQ(Create(), GalleryOutcome::Written); // Yes
    EXPECT_FALSE(Exists(gallery + "/IMG_9.jpg"));
    EXPECT_EQ(prompt.Texts().size(), 2u);
    EXPECT_EQ(busy.depth, 0);
}

TEST_F(GalleryCommandTest, NothingChosenOrNoFolderNameWritesNoPage) {
    EarlierGallery();
    const GalleryReport report = command.OnCreateGallery(pass.Bind());
    EXPECT_EQ(report.outcome, GalleryOutcome::Written);
    EXPECT_EQ(report.pictures, 0);
    EXPECT_TRUE(HtmlPages(gallery).empty());
    EXPECT_TRUE(fs::is_directory(gallery + "/pics/thumbs"));

    pass.operations.clear();
    command.m_photoFolder = "/";
    EXPECT_EQ(command.GetGalleryFolder(), "");
    EXPECT_EQ(Create(), GalleryOutcome::NoFolder);
    EXPECT_TRUE(pass.operations.empty());
    EXPECT_TRUE(prompt.Texts().empty());
}

TEST_F(GalleryCommandTest, CurrentPhotoAsksFirstAndNoLeavesEverything) {
    EarlierGallery();
    prompt.answers = {PromptAnswer::No};
    command.m_processCurrent = true;
    bool controlsRead = false;
    command.m_readControls = [&] { controlsRead = true; };
    EXPECT_EQ(Create(), GalleryOutcome::Declined);
    ASSERT_EQ(prompt.Texts().size(), 1u);
    EXPECT_EQ(prompt.Texts()[0], "Create an HTML gallery from the current photo only?");
    EXPECT_EQ(prompt.shown[0].icon, PromptIcon::Question);
    EXPECT_TRUE(pass.operations.empty());
    EXPECT_FALSE(controlsRead);
    EXPECT_EQ(busy.begun, 0);
    EXPECT_TRUE(Exists(gallery + "/thumbs1.html"));

    pass.chosen = {"a.jpg"};
    EXPECT_EQ(Create(), GalleryOutcome::Written); // Yes, once the script has run out
    EXPECT_EQ(prompt.Texts().size(), 2u);
    EXPECT_TRUE(controlsRead);
}

TEST_F(GalleryCommandTest, GalleryFolderOverPhotosIsRefusedBeforeAnythingIsDeleted) {
    const std::string bad = photos + "_bak/x";
    test::ScriptedPrompt refusal;
    CGalleryCommand c(refusal, busy, progress);
    c.m_photoFolder = photos;
    EXPECT_EQ(c.CreateGalleryIn(bad, pass.Bind()).outcome, GalleryOutcome::Refused);
    ASSERT_EQ(refusal.Texts().size(), 1u);
    EXPECT_NE(refusal.Texts()[0].find(bad), std::string::npos);
    EXPECT_EQ(refusal.shown[0].icon, PromptIcon::Stop);
    EXPECT_FALSE(Exists(bad + "/pics"));
    // Galleries based where the photos are: the gallery folder is the photo
    // folder itself, as with both defaults at one place.
    command.m_galleryFolder = dir.File("Pictures");
    EXPECT_EQ(Create(), GalleryOutcome::Refused);
    EXPECT_TRUE(Exists(photos + "/IMG_1.jpg"));
    EXPECT_TRUE(pass.operations.empty());
}

TEST_F(GalleryCommandTest, FolderThatCannotBeMadeGivesTheFolderMessage) {
    test::WriteFile(dir.File("Galleries"), {1}); // a file where the base should be
    EXPECT_EQ(Create(), GalleryOutcome::FolderError);
    ASSERT_EQ(prompt.Texts().size(), 1u);
    EXPECT_EQ(prompt.Texts()[0], "Error creating gallery directories");
    EXPECT_TRUE(pass.operations.empty());
    EXPECT_EQ(busy.depth, 0);

    // A file where the gallery folder should be stays, and is reported.
    fs::remove(dir.File("Galleries"));
    test::PutFile(gallery, "x");
    EXPECT_EQ(Create(), GalleryOutcome::FolderError);
    EXPECT_TRUE(fs::is_regular_file(gallery));

    // A file named "pics" in an existing gallery folder goes with the rest.
    fs::remove(gallery);
    test::PutFile(gallery + "/pics", "x");
    EXPECT_EQ(Create(), GalleryOutcome::Written);
}

TEST_F(GalleryCommandTest, BrokenPhotosAreToldOnceAtTheEndAndCancelWritesNoPage) {
    for (const char* name : {"IMG_2.jpg", "IMG_3.jpg"})
        test::PutFile(photos + "/" + name, "not a jpeg");
    test::PutFile(photos + "/IMG_4.jpg", test::SmallJpeg(8, 6));
    CPhotoList list;
    list.Open(photos);
    list.StopWorker(1000);
    test::FakeWindow window;
    window.list = &list;
    const ProcessScope all{false, true, false, false, false};
    command.m_threads = 2;
    GalleryReport report = command.OnCreateGallery(all, window);
    EXPECT_EQ(report.outcome, GalleryOutcome::Written);
    EXPECT_EQ(report.pictures, 2);
    const std::string cause = ": it is not a readable JPEG picture.";
    EXPECT_EQ(report.failures.size(), 2u); // one read of each photo
    EXPECT_EQ(prompt.Texts(),
              (Names{"2 photos could not be processed:\nCould not read " + photos + "/IMG_2.jpg" +
                     cause + "\nCould not read " + photos + "/IMG_3.jpg" + cause}));
    ASSERT_EQ(progress.runs.size(), 1u);
    EXPECT_EQ(progress.runs[0].total, 4);
    EXPECT_EQ(progress.runs[0].steps.back(), 4);
    EXPECT_TRUE(progress.runs[0].ended);

    // Cancelled after the first photo: what is made stays, no page.
    progress.cancelAfter = 1;
    report = command.OnCreateGallery(all, window);
    EXPECT_EQ(report.outcome, GalleryOutcome::Cancelled);
    EXPECT_TRUE(HtmlPages(gallery).empty());
    EXPECT_TRUE(Exists(gallery + "/pics/thumbs/IMG_1.jpg"));
    EXPECT_TRUE(progress.runs[1].ended);
    EXPECT_EQ(busy.depth, 0);
}

} // namespace
} // namespace tivox
