#include "gallery/gallery_command.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "gallery/gallery_folder.h"
#include "gallery_test_support.h"
#include "photos/photo_list.h"
#include "support/fake_edit_host.h"

namespace tivox {
namespace {

namespace fs = std::filesystem;
using test::Exists;
using test::HtmlPages;
using Names = std::vector<std::string>;

const ProcessScope kAll{false, true, false, false, false};
const ProcessScope kRed{false, false, true, false, false};
const ProcessScope kCurrent{true, false, false, false, false};

class GalleryCommandTest : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(photos + "_bak");
        AddPhotos({"IMG_1.jpg"});
        command.m_galleryFolder = dir.File("Galleries");
        command.m_photoFolder = photos;
        // Small pictures keep the runs short; the sizes are the batch test's.
        command.m_form.m_photoWidth = 16;
        command.m_form.m_photoHeight = 12;
        command.m_form.m_thumbWidth = 8;
        command.m_form.m_thumbHeight = 6;
        window.list = &list;
    }
    // Puts photos into the photo folder and opens it anew.
    void AddPhotos(const Names& names, const test::Bytes& bytes = test::SmallJpeg(8, 6)) {
        for (const auto& name : names)
            test::PutFile(photos + "/" + name, bytes);
        list.Open(photos);
        list.StopWorker(1000);
    }
    GalleryOutcome Create(const ProcessScope& scope = kAll) {
        return command.OnCreateGallery(scope, window).outcome;
    }
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
    CPhotoList list;
    test::FakeWindow window;
};

TEST_F(GalleryCommandTest, MakesTheFoldersAndMissingParentsAndAPictureOfEachChosenPhoto) {
    AddPhotos({"a.jpg"});
    const GalleryReport report = command.OnCreateGallery(kAll, window);
    EXPECT_EQ(report.outcome, GalleryOutcome::Written);
    EXPECT_EQ(report.folder, gallery);
    EXPECT_EQ(report.pictures, 2);
    EXPECT_TRUE(prompt.Texts().empty());
    EXPECT_EQ(test::TreeNames(gallery),
              (Names{kGalleryMarkerName, "photo1.html", "photo2.html", "pics/", "pics/IMG_1.jpg",
                     "pics/a.jpg", "pics/thumbs/", "pics/thumbs/IMG_1.jpg", "pics/thumbs/a.jpg",
                     "thumbs1.html"}));
    EXPECT_EQ(busy.begun, 1);
    EXPECT_EQ(busy.depth, 0);
}

TEST_F(GalleryCommandTest, ASecondRunWithFewerPhotosLeavesNoTrace) {
    command.m_form.m_thumbTilesX = command.m_form.m_thumbTilesY = 1;
    AddPhotos({"IMG_2.jpg"});
    ASSERT_EQ(Create(), GalleryOutcome::Written);
    EXPECT_TRUE(Exists(gallery + "/thumbs2.html"));
    test::WriteFile(gallery + "/pics/thumbs/stray.txt", {1});
    fs::create_directories(gallery + "/old/deeper");
    list.PhotoAt(1)->marker = 1;
    EXPECT_EQ(Create(kRed), GalleryOutcome::Written);
    EXPECT_EQ(test::TreeNames(gallery),
              (Names{kGalleryMarkerName, "photo1.html", "pics/", "pics/IMG_2.jpg", "pics/thumbs/",
                     "pics/thumbs/IMG_2.jpg", "thumbs1.html"}));
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
    EXPECT_EQ(busy.depth, 0);

    EXPECT_EQ(Create(), GalleryOutcome::Written); // Yes
    EXPECT_FALSE(Exists(gallery + "/IMG_9.jpg"));
    EXPECT_EQ(prompt.Texts().size(), 2u);
    EXPECT_EQ(busy.depth, 0);
}

TEST_F(GalleryCommandTest, NothingChosenOrNoFolderNameWritesNoPage) {
    EarlierGallery();
    const GalleryReport report = command.OnCreateGallery(kRed, window); // no photo is red
    EXPECT_EQ(report.outcome, GalleryOutcome::Written);
    EXPECT_EQ(report.pictures, 0);
    EXPECT_TRUE(HtmlPages(gallery).empty());
    EXPECT_TRUE(fs::is_directory(gallery + "/pics/thumbs"));

    command.m_photoFolder = "/";
    EXPECT_EQ(command.GetGalleryFolder(), "");
    EXPECT_EQ(Create(), GalleryOutcome::NoFolder);
    EXPECT_TRUE(prompt.Texts().empty());
}

TEST_F(GalleryCommandTest, CurrentPhotoAsksFirstAndNoLeavesEverything) {
    EarlierGallery();
    prompt.answers = {PromptAnswer::No};
    command.m_processCurrent = true;
    bool controlsRead = false;
    command.m_readControls = [&] { controlsRead = true; };
    EXPECT_EQ(Create(kCurrent), GalleryOutcome::Declined);
    ASSERT_EQ(prompt.Texts().size(), 1u);
    EXPECT_EQ(prompt.Texts()[0], "Create an HTML gallery from the current photo only?");
    EXPECT_EQ(prompt.shown[0].icon, PromptIcon::Question);
    EXPECT_FALSE(controlsRead);
    EXPECT_EQ(busy.begun, 0);
    EXPECT_TRUE(Exists(gallery + "/thumbs1.html"));

    window.current = list.PhotoAt(0);
    EXPECT_EQ(Create(kCurrent), GalleryOutcome::Written); // Yes, once the script has run out
    EXPECT_EQ(HtmlPages(gallery), (Names{"photo1.html", "thumbs1.html"}));
    EXPECT_EQ(prompt.Texts().size(), 2u);
    EXPECT_TRUE(controlsRead);
}

TEST_F(GalleryCommandTest, GalleryFolderOverPhotosIsRefusedBeforeAnythingIsDeleted) {
    const std::string bad = photos + "_bak/x";
    test::ScriptedPrompt refusal;
    CGalleryCommand c(refusal, busy, progress);
    c.m_photoFolder = photos;
    EXPECT_EQ(c.CreateGalleryIn(bad, kAll, window).outcome, GalleryOutcome::Refused);
    ASSERT_EQ(refusal.Texts().size(), 1u);
    EXPECT_NE(refusal.Texts()[0].find(bad), std::string::npos);
    EXPECT_EQ(refusal.shown[0].icon, PromptIcon::Stop);
    EXPECT_FALSE(Exists(bad + "/pics"));
    // Galleries based where the photos are: the gallery folder is the photo
    // folder itself, as with both defaults at one place.
    command.m_galleryFolder = dir.File("Pictures");
    EXPECT_EQ(Create(), GalleryOutcome::Refused);
    EXPECT_TRUE(Exists(photos + "/IMG_1.jpg"));
}

TEST_F(GalleryCommandTest, FolderThatCannotBeMadeGivesTheFolderMessage) {
    test::WriteFile(dir.File("Galleries"), {1}); // a file where the base should be
    EXPECT_EQ(Create(), GalleryOutcome::FolderError);
    ASSERT_EQ(prompt.Texts().size(), 1u);
    EXPECT_EQ(prompt.Texts()[0], "Error creating gallery directories");
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
    AddPhotos({"IMG_2.jpg", "IMG_3.jpg"}, test::Bytes{'n', 'o'});
    AddPhotos({"IMG_4.jpg"});
    command.m_threads = 2;
    GalleryReport report = command.OnCreateGallery(kAll, window);
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
    report = command.OnCreateGallery(kAll, window);
    EXPECT_EQ(report.outcome, GalleryOutcome::Cancelled);
    EXPECT_TRUE(HtmlPages(gallery).empty());
    EXPECT_TRUE(Exists(gallery + "/pics/thumbs/IMG_1.jpg"));
    EXPECT_TRUE(progress.runs[1].ended);
    EXPECT_EQ(busy.depth, 0);
}

} // namespace
} // namespace tivox
