// Get Photos and Restore from Backup Folder, driven as the dialog drives them,
// with a scripted user and a camera card registered in a fake mount table.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "acquire/photo_transfer.h"
#include "acquire_fixture.h"

namespace tivox::test {
namespace {

namespace fs = std::filesystem;

const char* const kFinished = "Finished copying.";

class TransferRig {
public:
    // removable: the card sits on a USB disc; otherwise on a fixed one.
    explicit TransferRig(bool removable = true) {
        card = dir.File("card");
        base = dir.File("base");
        MakeFolder(card);
        MakeFolder(base);
        sources.mountInfo = dir.File("mountinfo");
        sources.sysfs = dir.File("sys");
        sources.labels = dir.File("labels");
        const std::string disc = sources.sysfs + (removable ? "/devices/pci0/usb1/1-1/block/sdb"
                                                            : "/devices/pci0/ata1/block/sda");
        PutFile(disc + "/removable", removable ? "1\n" : "0\n");
        PutFile(disc + "/size", "1000\n");
        MakeFolder(sources.sysfs + "/dev/block");
        fs::create_symlink(fs::relative(disc, sources.sysfs + "/dev/block"),
                           sources.sysfs + "/dev/block/8:16");
        PutFile(sources.mountInfo, "40 1 8:16 / " + card + " rw - vfat /dev/sdb rw\n");
        transfer.m_cameraDrive = card;
        transfer.m_baseFolder = base;
        transfer.m_photoFolder = "Photos";
        transfer.m_driveSources = sources;
    }
    std::string Photos() const { return base + "/Photos"; }
    std::string Backup() const { return base + "/Photos_bak"; }
    void CardPhoto(const std::string& relative, const Bytes& bytes) {
        PutFile(card + "/" + relative, bytes);
    }

    TempDir dir;
    std::string card, base;
    DriveSources sources;
    ScriptedPrompt prompt;
    RecordingProgress progress;
    CountingBusy busy;
    CPhotoTransfer transfer{prompt, progress, busy};
};

TEST(PhotoTransfer, CollisionNumbersRunAcrossTheMainAndTheBackupPass) {
    TransferRig rig;
    rig.CardPhoto("DCIM/100/IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    rig.CardPhoto("DCIM/100/IMG_0002.JPG", PhotoShotAt("2004:07:31 12:00:00", true));
    rig.CardPhoto("DCIM/100/IMG_0003.JPG", PhotoShotAt("2004:07:31 12:05:00"));
    rig.CardPhoto("DCIM/100/IMG_0004.JPG", PhotoShotAt("2004:07:31 12:05:00", true));
    const auto cardBefore = TreeChecksums(rig.card);
    bool controlsRead = false;
    rig.transfer.m_readControls = [&] { controlsRead = true; };

    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_TRUE(controlsRead);
    EXPECT_EQ(rig.prompt.Texts(), std::vector<std::string>{kFinished});
    EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Information);
    EXPECT_EQ(FileNames(rig.Photos()),
              (std::vector<std::string>{"20040731_120000.jpg", "20040731_120000_1.jpg",
                                        "20040731_120500.jpg", "20040731_120500_2.jpg"}));
    // In the backup a collision name expands to the plain name, which is taken.
    EXPECT_EQ(FileNames(rig.Backup()),
              (std::vector<std::string>{"20040731_120000.jpg", "20040731_120000_3.jpg",
                                        "20040731_120500.jpg", "20040731_120500_4.jpg"}));
    EXPECT_EQ(rig.transfer.m_renameCounter, 5);
    EXPECT_EQ(TreeChecksums(rig.card), cardBefore);
    EXPECT_EQ(rig.progress.lower, 0);
    EXPECT_EQ(rig.progress.upper, 4);
    EXPECT_EQ(rig.progress.step, 1);
    EXPECT_EQ(rig.progress.positions, (std::vector<int>{1, 2, 3, 4, 1, 2, 3, 4, 0}));
    EXPECT_EQ(rig.busy.depth, 0);
    EXPECT_GE(rig.busy.begun, 1);
    const PassReport& r = rig.transfer.Report().photos;
    EXPECT_EQ(r.found, 4);
    EXPECT_EQ(r.copied, 4);
    EXPECT_EQ(r.renamed, 4);

    // A second run starts the numbers at 1 again.
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_TRUE(fs::exists(rig.Photos() + "/20040731_120000_1.jpg"));
    EXPECT_EQ(TreeChecksums(rig.card), cardBefore);
}

TEST(PhotoTransfer, CameraNamesStayWhereTheRuleCannotApply) {
    TransferRig rig;
    rig.transfer.m_createBackup = 0;
    rig.CardPhoto("DCIM/100/IMG_0001.JPG", PhotoWithoutExif());
    rig.CardPhoto("DCIM/101/IMG_0001.JPG", PhotoWithoutExif()); // same name: lost
    rig.CardPhoto("DCIM/100/IMG_0002.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    rig.CardPhoto("DCIM/100/IMG_0003.jpeg", PhotoShotAt("2004:07:31 13:00:00"));
    rig.CardPhoto("DCIM/100/MVI_0004.AVI", Bytes(100, 7));
    PutFile(rig.card + "/DCIM/100/BROKEN.jpg", "not a photo at all");
    rig.CardPhoto("DCIM/100/IMG_0005.JPG", PhotoShotAt(""));
    const auto cardBefore = TreeChecksums(rig.card);

    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_EQ(
        FileNames(rig.Photos()),
        (std::vector<std::string>{"20040731_120000.jpg", "BROKEN.jpg", "IMG_0001.JPG", "_.jpg"}));
    EXPECT_EQ(rig.progress.upper, 5); // .jpeg and .AVI don't count
    const PassReport& r = rig.transfer.Report().photos;
    EXPECT_EQ(r.copied, 4);
    EXPECT_EQ(r.failed, 1);
    EXPECT_EQ(r.renamed, 2);
    EXPECT_EQ(r.keptName, 2);
    EXPECT_FALSE(fs::exists(rig.Backup()));
    EXPECT_EQ(TreeChecksums(rig.card), cardBefore);
    // Nothing half-done stays behind.
    for (const std::string& name : TreeNames(rig.Photos()))
        EXPECT_EQ(name.find(".tivox"), std::string::npos) << name;
}

TEST(PhotoTransfer, CopiesKeepTheModificationTimeAndTheBytes) {
    TransferRig rig;
    rig.transfer.m_renamingRule.clear();
    rig.transfer.m_createBackup = 0;
    const Bytes photo = PhotoShotAt("2004:07:31 12:00:00");
    rig.CardPhoto("IMG_0001.JPG", photo);
    const timespec old[2] = {{1000000000, 0}, {1091275200, 123456789}};
    ASSERT_EQ(utimensat(AT_FDCWD, (rig.card + "/IMG_0001.JPG").c_str(), old, 0), 0);
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    struct stat st {};
    ASSERT_EQ(stat((rig.Photos() + "/IMG_0001.JPG").c_str(), &st), 0);
    EXPECT_EQ(st.st_mtim.tv_sec, 1091275200);
    EXPECT_EQ(st.st_mtim.tv_nsec, 123456789);
    Bytes copy;
    ReadFile(rig.Photos() + "/IMG_0001.JPG", copy);
    EXPECT_EQ(copy, photo);
}

TEST(PhotoTransfer, RulesWithoutTokensAndWithSeparators) {
    struct Case {
        const char* rule;
        std::vector<std::string> names;
    };
    const Case cases[] = {
        {"trip", {"trip.jpg", "trip_1.jpg", "trip_2.jpg"}},
        {"%Date%/x", {"IMG_0001.JPG", "IMG_0002.JPG", "IMG_0003.JPG"}},
        {"../%Time%", {"IMG_0001.JPG", "IMG_0002.JPG", "IMG_0003.JPG"}},
        {"%date%", {"%date%.jpg", "%date%_1.jpg", "%date%_2.jpg"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.rule);
        TransferRig rig;
        rig.transfer.m_renamingRule = c.rule;
        rig.transfer.m_createBackup = 0;
        for (int i = 1; i <= 3; ++i)
            rig.CardPhoto("IMG_000" + std::to_string(i) + ".JPG",
                          PhotoShotAt("2004:07:31 12:00:0" + std::to_string(i)));
        EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
        EXPECT_EQ(FileNames(rig.Photos()), c.names);
        EXPECT_EQ(FileNames(rig.base), std::vector<std::string>{}); // nothing escaped
    }
}

TEST(PhotoTransfer, StopsBeforeAnythingChanges) {
    struct Case {
        const char* name;
        std::function<void(TransferRig&)> setup;
        std::vector<PromptAnswer> answers;
        std::vector<std::string> texts;
        PromptIcon icon;
    };
    const std::string drive = "Please select the digital camera drive first.";
    const std::string create = "Could not create the target folder.\nAborted.";
    const std::string overlap =
        "The photo folder and the camera drive overlap.\nThe camera drive is only ever "
        "read.\nAborted.";
    const std::string isFile =
        "The target folder path exists,\nbut it is a file, not a folder.\nAborted.";
    const Case cases[] = {
        {"no drive",
         [](TransferRig& r) { r.transfer.m_cameraDrive.clear(); },
         {},
         {drive},
         PromptIcon::Stop},
        {"no mount point",
         [](TransferRig& r) { r.transfer.m_cameraDrive = r.card + "/DCIM"; },
         {},
         {drive},
         PromptIcon::Stop},
        {"target is a file",
         [](TransferRig& r) { PutFile(r.Photos(), "x"); },
         {},
         {isFile},
         PromptIcon::Stop},
        {"missing base",
         [](TransferRig& r) { r.transfer.m_baseFolder = r.base + "/no/such"; },
         {},
         {create},
         PromptIcon::Stop},
        {"photo folder empty, base is the root",
         [](TransferRig& r) {
             r.transfer.m_baseFolder = "/";
             r.transfer.m_photoFolder = "";
         },
         {},
         {create},
         PromptIcon::Stop},
        {"photo folder on the card",
         [](TransferRig& r) {
             r.transfer.m_baseFolder = r.card;
             r.transfer.m_photoFolder = "DCIM";
             PutFile(r.card + "/DCIM/keep.txt", "x");
         },
         {},
         {overlap},
         PromptIcon::Stop},
        {"card mounted inside the photo folder",
         [](TransferRig& r) {
             const fs::path top = r.dir.path();
             r.transfer.m_baseFolder = top.parent_path().string();
             r.transfer.m_photoFolder = top.filename().string();
         },
         {},
         {overlap},
         PromptIcon::Stop},
        {"no to emptying",
         [](TransferRig& r) {
             PutFile(r.Photos() + "/notes.txt", "keep");
             PutFile(r.Photos() + "/sub/old.jpg", "keep");
         },
         {PromptAnswer::No},
         {"The selected photo folder contains 2 files and 1 folders.\nIf you continue, all of "
          "them will be deleted\nprior to getting new photos from the camera.\n\nContinue?"},
         PromptIcon::Warning},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TransferRig rig;
        rig.CardPhoto("IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
        c.setup(rig);
        rig.prompt.answers = c.answers;
        const auto before = TreeChecksums(rig.dir.path());
        EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Aborted);
        EXPECT_EQ(rig.prompt.Texts(), c.texts);
        ASSERT_FALSE(rig.prompt.shown.empty());
        EXPECT_EQ(rig.prompt.shown.back().icon, c.icon);
        EXPECT_EQ(TreeChecksums(rig.dir.path()), before);
        EXPECT_EQ(rig.busy.depth, 0);
        EXPECT_TRUE(rig.progress.positions.empty());
    }
}

TEST(PhotoTransfer, AFixedDiscAsCameraIsQuestionedDefaultNo) {
    for (PromptAnswer answer : {PromptAnswer::No, PromptAnswer::Yes}) {
        TransferRig rig(false);
        rig.CardPhoto("IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
        rig.prompt.answers = {answer};
        const TransferOutcome outcome = rig.transfer.OnGetPhotos();
        ASSERT_GE(rig.prompt.shown.size(), 1u);
        const auto& q = rig.prompt.shown[0];
        EXPECT_EQ(q.text.rfind("The current digital camera drive has not been detected as a "
                               "removable drive.",
                               0),
                  0u);
        EXPECT_EQ(q.icon, PromptIcon::Warning);
        EXPECT_EQ(q.defaultAnswer, PromptAnswer::No);
        EXPECT_EQ(outcome, answer == PromptAnswer::Yes ? TransferOutcome::Finished
                                                       : TransferOutcome::Aborted);
        EXPECT_EQ(fs::exists(rig.Photos() + "/20040731_120000.jpg"), answer == PromptAnswer::Yes);
    }
}

TEST(PhotoTransfer, EmptyingThePhotoFolderTakesEverything) {
    TransferRig rig;
    rig.CardPhoto("IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    PutFile(rig.Photos() + "/notes.txt", "old");
    PutFile(rig.Photos() + "/sub/old.jpg", "old");
    PutFile(rig.Backup() + "/stale.jpg", "old");
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_EQ(TreeNames(rig.Photos()), std::vector<std::string>{"20040731_120000.jpg"});
    EXPECT_EQ(TreeNames(rig.Backup()), std::vector<std::string>{"20040731_120000.jpg"});
}

TEST(PhotoTransfer, BackupProblemsLeaveThePhotosAndStillFinish) {
    TransferRig rig;
    rig.CardPhoto("IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    PutFile(rig.Backup(), "a file where the backup should be");
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::BackupAborted);
    EXPECT_EQ(rig.prompt.Texts(),
              (std::vector<std::string>{
                  "The backup folder path exists,\nbut it is a file, not a folder.\nAborted.",
                  kFinished}));
    EXPECT_EQ(FileNames(rig.Photos()), std::vector<std::string>{"20040731_120000.jpg"});

    // With the option off an older backup stays as it was.
    TransferRig off;
    off.transfer.m_createBackup = 0;
    off.CardPhoto("IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    PutFile(off.Backup() + "/older.jpg", "older");
    const auto before = TreeChecksums(off.Backup());
    EXPECT_EQ(off.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_EQ(TreeChecksums(off.Backup()), before);
}

TEST(PhotoTransfer, AnEmptyCardStillFinishes) {
    TransferRig rig;
    PutFile(rig.card + "/DCIM/readme.txt", "no photos");
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_EQ(rig.progress.upper, 0);
    EXPECT_TRUE(TreeNames(rig.Photos()).empty());
    EXPECT_TRUE(TreeNames(rig.Backup()).empty());
    EXPECT_EQ(rig.prompt.Texts(), std::vector<std::string>{kFinished});
}

TEST(PhotoTransfer, AnUnreadableCardFileIsSkipped) {
    TransferRig rig;
    rig.transfer.m_createBackup = 0;
    rig.CardPhoto("IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
    rig.CardPhoto("IMG_0002.JPG", PhotoShotAt("2004:07:31 12:00:01"));
    OpenToAll(rig.dir.path());
    chmod((rig.card + "/IMG_0001.JPG").c_str(), 0);
    const auto before = TreeChecksums(rig.card);
    const int failed = RunInChild({true, -1}, [&] {
        rig.transfer.OnGetPhotos();
        return rig.transfer.Report().photos.failed;
    });
    EXPECT_EQ(failed, 1);
    EXPECT_EQ(FileNames(rig.Photos()), std::vector<std::string>{"20040731_120001.jpg"});
    EXPECT_EQ(TreeChecksums(rig.card), before);
}

TEST(PhotoTransfer, AFullDiscLosesNoPhotoAndLeavesNoHalfFile) {
    TransferRig rig;
    rig.transfer.m_createBackup = 0;
    TestJpegOptions big;
    big.width = 800;
    big.height = 600;
    big.pattern = Pattern::Noise;
    CameraExif exif;
    exif.dateTimeOriginal = "2004:07:31 12:00:01";
    big.exif = CameraExifPayload(exif);
    const Bytes bigPhoto = MakeJpeg(big);
    const Bytes smallPhoto = PhotoShotAt("2004:07:31 12:00:00");
    ASSERT_GT(bigPhoto.size(), 65536u);
    ASSERT_LT(smallPhoto.size(), 65536u);
    rig.CardPhoto("IMG_0001.JPG", smallPhoto);
    rig.CardPhoto("IMG_0002.JPG", bigPhoto);
    rig.CardPhoto("IMG_0003.JPG", PhotoShotAt("2004:07:31 12:00:02"));
    const auto before = TreeChecksums(rig.card);
    // No file may grow past 64 KiB: the big photo's copy runs out of room.
    const int result = RunInChild({false, 65536}, [&] {
        return int(rig.transfer.OnGetPhotos()) * 10 + rig.transfer.Report().photos.failed;
    });
    EXPECT_EQ(result, int(TransferOutcome::Finished) * 10 + 1);
    EXPECT_EQ(TreeNames(rig.Photos()),
              (std::vector<std::string>{"20040731_120000.jpg", "20040731_120002.jpg"}));
    EXPECT_EQ(TreeChecksums(rig.card), before);
}

class RestoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.CardPhoto("DCIM/IMG_0001.JPG", PhotoShotAt("2004:07:31 12:00:00"));
        rig.CardPhoto("DCIM/IMG_0002.JPG", PhotoWithoutExif());
        ASSERT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
        rig.prompt.shown.clear();
        rig.progress.positions.clear();
    }
    TransferRig rig;
};

TEST_F(RestoreTest, BringsTheBackupBackUnderTheCurrentRule) {
    PutFile(rig.Photos() + "/edited.txt", "goes");
    PutFile(rig.Photos() + "/sub/x", "goes");
    std::remove((rig.Photos() + "/20040731_120000.jpg").c_str());
    PutFile(rig.Backup() + "/more/IMG_0009.JPG", PhotoShotAt("2004:08:01 08:00:00"));
    const auto backupBefore = TreeChecksums(rig.Backup());
    bool controlsRead = false;
    rig.transfer.m_readControls = [&] { controlsRead = true; };
    rig.transfer.m_cameraDrive.clear(); // no camera needed
    rig.transfer.m_renamingRule = "%Time%";

    EXPECT_EQ(rig.transfer.OnRestore(), TransferOutcome::Finished);
    EXPECT_FALSE(controlsRead);
    ASSERT_EQ(rig.prompt.shown.size(), 2u);
    EXPECT_EQ(rig.prompt.shown[0].text,
              "Restoring from the backup folder deletes the 3 files and 1 folders in the "
              "current photo folder\nand replaces them with the originals from the backup "
              "folder.\n\nContinue?");
    EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Question);
    EXPECT_EQ(rig.prompt.shown[1].text, "Finished restoring the photo folder from its backup.");
    EXPECT_EQ(TreeNames(rig.Photos()),
              (std::vector<std::string>{"080000.jpg", "120000.jpg", "IMG_0002.JPG"}));
    EXPECT_EQ(TreeChecksums(rig.Backup()), backupBefore);
    EXPECT_EQ(rig.progress.upper, 3);
    EXPECT_EQ(rig.progress.positions.back(), 0);
}

TEST_F(RestoreTest, NothingChangesWithoutBackupOrWithoutYes) {
    const auto before = TreeChecksums(rig.dir.path());
    rig.prompt.answers = {PromptAnswer::No};
    EXPECT_EQ(rig.transfer.OnRestore(), TransferOutcome::Aborted);
    EXPECT_EQ(rig.prompt.shown.size(), 1u);

    fs::rename(rig.Backup(), rig.base + "/elsewhere");
    const auto moved = TreeChecksums(rig.dir.path());
    EXPECT_EQ(rig.transfer.OnRestore(), TransferOutcome::Aborted);
    EXPECT_EQ(rig.prompt.shown.back().text, "No backup files found!\n\nAborted.");
    EXPECT_EQ(rig.prompt.shown.back().icon, PromptIcon::Warning);
    EXPECT_EQ(TreeChecksums(rig.dir.path()), moved);
    (void)before;
}

TEST_F(RestoreTest, RecreatesAMissingPhotoFolderAndKeepsCountingCollisions) {
    fs::remove_all(rig.Photos());
    rig.transfer.m_renamingRule = "same";
    rig.transfer.m_renameCounter = 7;
    EXPECT_EQ(rig.transfer.OnRestore(), TransferOutcome::Finished);
    // The question without counts: the folder was gone.
    EXPECT_EQ(rig.prompt.shown[0].text.rfind("Restoring from the backup folder deletes the "
                                             "files in the current photo folder",
                                             0),
              0u);
    EXPECT_EQ(FileNames(rig.Photos()), (std::vector<std::string>{"IMG_0002.JPG", "same.jpg"}));
    EXPECT_EQ(rig.transfer.m_renameCounter, 7);
}

} // namespace
} // namespace tivox::test
