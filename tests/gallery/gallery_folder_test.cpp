#include "gallery/gallery_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "photo_writer/test_jpeg.h"

namespace tivox {
namespace {

namespace fs = std::filesystem;

TEST(GalleryFolder, TakesThePhotoFolderNameBelowTheBase) {
    EXPECT_EQ(GalleryFolderFor("/g", "/p/2004"), "/g/2004");
    EXPECT_EQ(GalleryFolderFor("/g/", "/p/2004/"), "/g/2004");
    EXPECT_EQ(GalleryFolderFor("/g", "Photos"), "/g/Photos");
    EXPECT_EQ(GalleryFolderFor("/g", "/"), "");
    EXPECT_EQ(GalleryFolderFor("/g", ""), "");
    EXPECT_EQ(GalleryFolderFor("/g", "/p/.."), "");
}

TEST(GalleryFolder, RefusesEveryFolderThatWouldEmptyPhotosOrTheirBackup) {
    test::TempDir dir;
    const std::string photos = dir.File("Photos");
    fs::create_directories(photos + "/sub");
    fs::create_directories(dir.File("Photos_bak"));
    fs::create_directories(dir.File("Galleries"));
    fs::create_symlink(photos, dir.File("link"));
    const struct {
        std::string gallery;
        bool refused;
    } cases[] = {
        {photos, true},                          // the photo folder itself
        {photos + "/", true},                    // the same with a slash
        {photos + "/sub", true},                 // inside it
        {photos + "/new/gallery", true},         // inside it, not there yet
        {dir.path(), true},                      // holds it
        {"/", true},                             // holds everything
        {dir.File("Photos_bak"), true},          // the backup
        {dir.File("Photos_bak/Photos"), true},   // inside the backup
        {dir.File("Galleries/../Photos"), true}, // the photo folder by ".."
        {dir.File("link"), true},                // the photo folder by a link
        {dir.File("link/x"), true},              // inside it by a link
        {dir.File("Galleries/Photos"), false},   // the usual place
        {dir.File("Photos2"), false},            // a name that only starts alike
        {dir.File("Photos_bak2"), false},
        {dir.File("Galleries"), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GalleryFolderEndangersPhotos(c.gallery, photos), c.refused) << c.gallery;
    EXPECT_TRUE(GalleryFolderEndangersPhotos(dir.File("Photos_bak"), photos + "/"));
    // Relative paths are judged from the current folder.
    const std::string here = fs::current_path().string();
    EXPECT_TRUE(FoldersOverlap(".", here));
    EXPECT_TRUE(FoldersOverlap("gallery", here));
    EXPECT_FALSE(FoldersOverlap("", here));
}

} // namespace
} // namespace tivox
