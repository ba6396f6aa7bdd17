// Get Photos and Restore from Backup Folder, driven as the dialog drives them,
// with a scripted user and a camera card registered in a fake mount table.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "acquire/photo_transfer.h"
#include "acquire/upright_photo.h"
#include "acquire_fixture.h"
#include "exif/exif_orientation.h"
#include "platform/jpeg_codec.h"
#include "support/batch_runner.h"
#include "photo_writer/photo_pixels.h"

namespace tivox::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

const char* const kNoon = "2004:07:31 12:00:00";

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// A disc that runs full after `room` bytes, flips a bit in the middle of
// writes over 64 KiB when `corrupt`, and fails each flush after `flushes`.
class FaultyDisc final : public FileOps {
public:
    FaultyDisc(std::size_t room, bool corrupt, int flushes)
        : m_room(room), m_corrupt(corrupt), m_flushes(flushes) {}
    ssize_t Write(int fd, const void* data, std::size_t size) override {
        if (size > m_room) {
            errno = ENOSPC;
            return -1;
        }
        m_room -= size;
        std::vector<char> bytes(static_cast<const char*>(data),
                                static_cast<const char*>(data) + size);
        bytes[size / 2] ^= char(m_corrupt && size > 65536);
        return FileOps::Write(fd, bytes.data(), size);
    }
    int Syncfs(int fd) override {
        if (m_flushes-- > 0)
            return FileOps::Syncfs(fd);
        errno = EIO;
        return -1;
    }

private:
    std::size_t m_room;
    bool m_corrupt;
    int m_flushes;
};

class TransferRig {
public:
    // removable: the card sits on a USB disc; otherwise on a fixed one.
    explicit TransferRig(bool removable = true, FileOps& ops = SystemFileOps())
        : transfer{prompt, progress, busy, ops} {
        MakeFolder(card);
        MakeFolder(base);
        sources = {dir.File("mountinfo"), dir.File("sys"), dir.File("labels")};
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
    std::string card = dir.File("card"), base = dir.File("base");
    DriveSources sources;
    ScriptedPrompt prompt;
    RecordingProgress progress;
    CountingBusy busy;
    CPhotoTransfer transfer;
};

TEST(PhotoTransfer, CollisionNumbersRunAcrossTheMainAndTheBackupPass) {
    TransferRig rig;
    rig.CardPhoto("DCIM/100/IMG_0001.JPG", PhotoShotAt(kNoon));
    rig.CardPhoto("DCIM/100/IMG_0002.JPG", PhotoShotAt(kNoon, true));
    rig.CardPhoto("DCIM/100/IMG_0003.JPG", PhotoShotAt("2004:07:31 12:05:00"));
    rig.CardPhoto("DCIM/100/IMG_0004.JPG", PhotoShotAt("2004:07:31 12:05:00", true));
    const timespec times[2] = {{1000000000, 0}, {1091275200, 123456789}};
    ASSERT_EQ(utimensat(AT_FDCWD, (rig.card + "/DCIM/100/IMG_0001.JPG").c_str(), times, 0), 0);
    const auto cardBefore = TreeChecksums(rig.card);

    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    // Copies keep the modification time (and the bytes: see the upright test).
    struct stat st {};
    ASSERT_EQ(stat((rig.Photos() + "/20040731_120000.jpg").c_str(), &st), 0);
    EXPECT_EQ(st.st_mtim.tv_sec, 1091275200);
    EXPECT_EQ(st.st_mtim.tv_nsec, 123456789);
    EXPECT_EQ(rig.prompt.Texts(), Names{"Finished copying.\nPhotos copied and verified: 4 of 4.\n"
                                        "Copied and verified into the backup folder: 4 of 4."});
    EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Information);
    EXPECT_EQ(FileNames(rig.Photos()), (Names{"20040731_120000.jpg", "20040731_120000_1.jpg",
                                              "20040731_120500.jpg", "20040731_120500_2.jpg"}));
    // In the backup a collision name expands to the plain name, which is taken.
    EXPECT_EQ(FileNames(rig.Backup()), (Names{"20040731_120000.jpg", "20040731_120000_3.jpg",
                                              "20040731_120500.jpg", "20040731_120500_4.jpg"}));
    EXPECT_EQ(rig.transfer.m_renameCounter, 5);
    EXPECT_EQ(TreeChecksums(rig.card), cardBefore);
    EXPECT_EQ(rig.progress.upper, 4);
    EXPECT_EQ(rig.progress.positions, (std::vector<int>{1, 2, 3, 4, 1, 2, 3, 4, 0}));
    const PassReport& r = rig.transfer.Report().photos;
    EXPECT_EQ(std::make_tuple(r.found, r.copied, r.renamed), std::make_tuple(4, 4, 4));

    // A second run starts the numbers at 1 again.
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_TRUE(fs::exists(rig.Photos() + "/20040731_120000_1.jpg"));
    EXPECT_EQ(TreeChecksums(rig.card), cardBefore);
}

TEST(PhotoTransfer, CameraNamesStayWhereTheRuleCannotApply) {
    TransferRig rig;
    rig.transfer.m_createBackup = 0;
    rig.CardPhoto("DCIM/100/IMG_0001.JPG", MakeJpeg({}));
    rig.CardPhoto("DCIM/101/IMG_0001.JPG", MakeJpeg({})); // same name: not copied
    rig.CardPhoto("DCIM/100/IMG_0002.JPG", PhotoShotAt(kNoon));
    rig.CardPhoto("DCIM/100/IMG_0003.jpeg", PhotoShotAt("2004:07:31 13:00:00"));
    rig.CardPhoto("DCIM/100/MVI_0004.AVI", Bytes(100, 7));
    PutFile(rig.card + "/DCIM/100/BROKEN.jpg", "not a photo at all");
    rig.CardPhoto("DCIM/100/IMG_0005.JPG", PhotoShotAt(""));
    const auto cardBefore = TreeChecksums(rig.card);

    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Incomplete);
    // TreeNames also shows any temporary file left half-done.
    EXPECT_EQ(TreeNames(rig.Photos()),
              (Names{"20040731_120000.jpg", "BROKEN.jpg", "IMG_0001.JPG", "_.jpg"}));
    EXPECT_EQ(rig.progress.upper, 5); // .jpeg and .AVI don't count
    const PassReport& r = rig.transfer.Report().photos;
    EXPECT_EQ(std::make_tuple(r.copied, r.failures.size(), r.renamed, r.keptName),
              std::make_tuple(4, 1u, 2, 2));
    EXPECT_EQ(r.failures[0].source, rig.card + "/DCIM/101/IMG_0001.JPG");
    EXPECT_EQ(RenderUiText(r.failures[0].cause), rig.Photos() + "/IMG_0001.JPG exists already");
    EXPECT_FALSE(fs::exists(rig.Backup()));
    EXPECT_EQ(TreeChecksums(rig.card), cardBefore);
}

TEST(PhotoTransfer, RulesWithoutTokensAndWithSeparators) {
    const std::pair<const char*, Names> cases[] = {
        {"trip", {"trip.jpg", "trip_1.jpg", "trip_2.jpg"}},
        {"%Date%/x", {"IMG_0001.JPG", "IMG_0002.JPG", "IMG_0003.JPG"}},
        {"../%Time%", {"IMG_0001.JPG", "IMG_0002.JPG", "IMG_0003.JPG"}},
        {"%date%", {"%date%.jpg", "%date%_1.jpg", "%date%_2.jpg"}},
    };
    for (const auto& [rule, names] : cases) {
        SCOPED_TRACE(rule);
        TransferRig rig;
        rig.transfer.m_renamingRule = rule;
        rig.transfer.m_createBackup = 0;
        for (int i = 1; i <= 3; ++i)
            rig.CardPhoto("IMG_000" + std::to_string(i) + ".JPG",
                          PhotoShotAt("2004:07:31 12:00:0" + std::to_string(i)));
        EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
        EXPECT_EQ(FileNames(rig.Photos()), names);
        EXPECT_EQ(FileNames(rig.base), Names{}); // nothing escaped
    }
}

// More photos than one batch holds: each batch is read back while the next
// one is copied, and the copies are still named in the order of the card.
TEST(PhotoTransfer, BatchesAreNamedInTheOrderOfTheCard) {
    TransferRig rig;
    rig.transfer.m_renamingRule = "trip";
    rig.transfer.m_createBackup = 0;
    std::vector<Bytes> photos;
    for (int i = 0; i < 300; ++i) {
        char date[32];
        std::snprintf(date, sizeof date, "2004:07:31 %02d:%02d:00", i / 60, i % 60);
        photos.push_back(PhotoShotAt(date));
        rig.CardPhoto("IMG_" + std::to_string(1000 + i) + ".JPG", photos.back());
    }
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_EQ(TreeNames(rig.Photos()).size(), 300u);
    for (int i : {0, 255, 256, 299}) {
        Bytes copy;
        ReadFile(rig.Photos() + (i ? "/trip_" + std::to_string(i) : "/trip") + ".jpg", copy);
        EXPECT_EQ(copy, photos[std::size_t(i)]) << i;
    }
}

TEST(PhotoTransfer, StopsWithAMessageBeforeAnythingChanges) {
    const std::string drive = "Please select the digital camera drive first.";
    const std::string create = "Could not create the target folder.\nAborted.";
    const std::string overlap = "The photo folder and the camera drive overlap.\nThe camera "
                                "drive is only ever read.\nAborted.";
    const std::string isFile =
        "The target folder path exists,\nbut it is a file, not a folder.\nAborted.";
    using Arrange = void (*)(TransferRig&);
    const std::tuple<const char*, Arrange, std::string> cases[] = {
        {"no drive", [](TransferRig& r) { r.transfer.m_cameraDrive.clear(); }, drive},
        {"no mount point", [](TransferRig& r) { r.transfer.m_cameraDrive = r.card + "/DCIM"; },
         drive},
        {"target is a file", [](TransferRig& r) { PutFile(r.Photos(), "x"); }, isFile},
        {"missing base", [](TransferRig& r) { r.transfer.m_baseFolder = r.base + "/no/such"; },
         create},
        {"base is the root, no photo folder",
         [](TransferRig& r) {
             r.transfer.m_baseFolder = "/";
             r.transfer.m_photoFolder = "";
         },
         create},
        {"photo folder on the card",
         [](TransferRig& r) {
             r.transfer.m_baseFolder = r.card;
             r.transfer.m_photoFolder = "DCIM";
             PutFile(r.card + "/DCIM/keep.txt", "x");
         },
         overlap},
        {"card mounted inside the photo folder",
         [](TransferRig& r) {
             r.transfer.m_baseFolder = fs::path(r.dir.path()).parent_path().string();
             r.transfer.m_photoFolder = fs::path(r.dir.path()).filename().string();
         },
         overlap},
    };
    for (const auto& [name, setup, text] : cases) {
        SCOPED_TRACE(name);
        TransferRig rig;
        rig.CardPhoto("IMG_0001.JPG", PhotoShotAt(kNoon));
        setup(rig);
        const auto before = TreeChecksums(rig.dir.path());
        EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Aborted);
        EXPECT_EQ(rig.prompt.Texts(), Names{text});
        ASSERT_FALSE(rig.prompt.shown.empty());
        EXPECT_EQ(rig.prompt.shown.back().icon, PromptIcon::Stop);
        EXPECT_EQ(TreeChecksums(rig.dir.path()), before);
        EXPECT_EQ(rig.busy.depth, 0);
        EXPECT_TRUE(rig.progress.positions.empty());
    }
}

TEST(PhotoTransfer, QuestionsWarnDefaultToNoAndNoChangesNothing) {
    struct Case {
        bool removable;
        std::string question; // its start
    };
    const Case cases[] = {
        {false, "The current digital camera drive has not been detected as a removable drive."},
        {true, "The selected photo folder contains 1 file and 1 folder.\nIf you continue, all "
               "of them will be deleted\nprior to getting new photos from the "
               "camera.\n\nContinue?"},
    };
    for (const Case& c : cases) {
        for (PromptAnswer answer : {PromptAnswer::No, PromptAnswer::Yes}) {
            SCOPED_TRACE(c.question + (answer == PromptAnswer::Yes ? " yes" : " no"));
            TransferRig rig(c.removable);
            rig.CardPhoto("IMG_0001.JPG", PhotoShotAt(kNoon));
            if (c.removable) {
                PutFile(rig.Photos() + "/sub/old.jpg", "old");
                PutFile(rig.Backup() + "/stale.jpg", "old");
            }
            const auto before = TreeChecksums(rig.dir.path());
            rig.prompt.answers = {answer};
            const TransferOutcome outcome = rig.transfer.OnGetPhotos();
            ASSERT_FALSE(rig.prompt.shown.empty());
            EXPECT_EQ(rig.prompt.shown[0].text.rfind(c.question, 0), 0u);
            EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Warning);
            EXPECT_EQ(rig.prompt.shown[0].defaultAnswer, PromptAnswer::No);
            if (answer == PromptAnswer::No) {
                EXPECT_EQ(outcome, TransferOutcome::Aborted);
                EXPECT_EQ(rig.prompt.shown.size(), 1u);
                EXPECT_EQ(TreeChecksums(rig.dir.path()), before);
            } else {
                // Emptying takes everything, in the photo and the backup folder.
                EXPECT_EQ(outcome, TransferOutcome::Finished);
                EXPECT_EQ(TreeNames(rig.Photos()), Names{"20040731_120000.jpg"});
                EXPECT_EQ(TreeNames(rig.Backup()), Names{"20040731_120000.jpg"});
            }
        }
    }
}

TEST(PhotoTransfer, BackupProblemsAndAnEmptyCardStillFinish) {
    TransferRig rig;
    rig.CardPhoto("IMG_0001.JPG", PhotoShotAt(kNoon));
    PutFile(rig.Backup(), "a file where the backup should be");
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::BackupAborted);
    EXPECT_EQ(rig.prompt.Texts(),
              (Names{"The backup folder path exists,\nbut it is a file, not a folder.\nAborted.",
                     "Copying the photos did not complete.\nPhotos copied and verified: 1 of "
                     "1.\nNo backup was made."}));
    EXPECT_EQ(FileNames(rig.Photos()), Names{"20040731_120000.jpg"});

    // With the option off an older backup stays as it was.
    TransferRig off;
    off.transfer.m_createBackup = 0;
    off.CardPhoto("IMG_0001.JPG", PhotoShotAt(kNoon));
    PutFile(off.Backup() + "/older.jpg", "older");
    const auto before = TreeChecksums(off.Backup());
    EXPECT_EQ(off.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_EQ(TreeChecksums(off.Backup()), before);

    TransferRig empty;
    PutFile(empty.card + "/DCIM/readme.txt", "no photos");
    EXPECT_EQ(empty.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_EQ(empty.progress.upper, 0);
    EXPECT_EQ(TreeNames(empty.Photos()).size() + TreeNames(empty.Backup()).size(), 0u);
    EXPECT_EQ(empty.prompt.Texts(),
              Names{"Finished copying.\nPhotos copied and verified: 0 of 0.\nCopied and verified "
                    "into the backup folder: 0 of 0."});
}

// A disc that runs full, writes wrong bytes or can't flush, and a card file
// that can't be read: each photo not copied is named with its cause, the
// message doesn't say "Finished", and no half copy stays.
TEST(PhotoTransfer, FailedCopiesAreReportedWithTheirCause) {
    const Bytes first = PhotoShotAt(kNoon), big = MakeJpeg(Picture(800, 600, Pattern::Noise));
    ASSERT_GT(big.size(), 65536u);
    const std::size_t any = SIZE_MAX;
    // What is named in the list, below the test's folder, and why.
    const std::tuple<const char*, FaultyDisc, Names, std::string> cases[] = {
        {"disc full",
         FaultyDisc(first.size() + 100, false, 9),
         {"card/IMG_0002.JPG", "card/IMG_0003.JPG"},
         "the disc is full"},
        {"wrong bytes",
         FaultyDisc(any, true, 9),
         {"card/IMG_0002.JPG"},
         "the copy read back from the disc differs from the original"},
        {"no flush",
         FaultyDisc(any, false, 0),
         {"card/IMG_0001.JPG", "card/IMG_0002.JPG", "card/IMG_0003.JPG"},
         "the copy cannot be flushed to the disc: Input/output error"},
        {"names not flushed",
         FaultyDisc(any, false, 1),
         {"base/Photos"},
         "the names of the copies cannot be flushed to the disc: Input/output error"},
    };
    for (auto [name, disc, listed, cause] : cases) {
        SCOPED_TRACE(name);
        TransferRig rig(true, disc);
        rig.transfer.m_createBackup = 0;
        rig.CardPhoto("IMG_0001.JPG", first);
        rig.CardPhoto("IMG_0002.JPG", big);
        rig.CardPhoto("IMG_0003.JPG", PhotoShotAt("2004:07:31 12:00:02"));
        const auto before = TreeChecksums(rig.card);
        EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Incomplete);
        const std::string text = rig.prompt.Texts().back();
        const std::size_t copied = 3 - std::size_t(Has(listed[0], "card/")) * listed.size();
        EXPECT_EQ(text.rfind("Copying the photos did not complete.\nPhotos copied and verified: " +
                                 std::to_string(copied) + " of 3.\n\nNot copied:",
                             0),
                  0u)
            << text;
        EXPECT_EQ(rig.prompt.shown.back().icon, PromptIcon::Warning);
        for (const std::string& path : listed)
            EXPECT_TRUE(Has(text, rig.dir.File(path) + ": " + cause)) << text;
        EXPECT_TRUE(Has(text, "The camera card still holds these photos")) << text;
        EXPECT_EQ(TreeNames(rig.Photos()).size(), copied); // no temporary file
        EXPECT_EQ(TreeChecksums(rig.card), before);
    }
    // Root reads everything, so the unreadable card file is read as nobody.
    TransferRig rig;
    rig.transfer.m_createBackup = 0;
    rig.CardPhoto("IMG_0001.JPG", first);
    rig.CardPhoto("IMG_0002.JPG", first);
    OpenToAll(rig.dir.path());
    chmod((rig.card + "/IMG_0002.JPG").c_str(), 0);
    EXPECT_EQ(RunInChild({true, -1},
                         [&] {
                             rig.transfer.OnGetPhotos();
                             return Has(rig.prompt.Texts().back(),
                                        "IMG_0002.JPG: cannot be read: Permission denied");
                         }),
              1);
    EXPECT_EQ(TreeNames(rig.Photos()), Names{"20040731_120000.jpg"});
}

// Photos of all eight orientations, 4:2:0 and a whole number of blocks in
// size, arrive upright: their decode is the upright decode of the card's
// photo up to the decoder's rounding (about 56 dB; noise encoded anew, even
// at quality 98, gives 30), and exiftool, where installed, reads Orientation
// 1. A photo whose turn would trim an edge arrives byte for byte. (With the
// option off every photo does: see the batch's transfer without --upright.)
TEST(PhotoTransfer, PhotosArriveUprightWhereTheTurnLosesNothing) {
    const bool exiftool = std::system("exiftool -ver >/dev/null 2>&1") == 0;
    TransferRig rig;
    rig.transfer.m_createBackup = 0;
    std::vector<Bytes> photos; // orientations 1 to 8, then 50 x 30 with 6
    for (int i = 1; i <= 9; ++i) {
        CameraExif exif;
        exif.orientation = i <= 8 ? i : 6;
        exif.dateTimeOriginal = "2004:07:31 12:00:0" + std::to_string(i);
        exif.thumbnail = SmallJpeg(16, 12);
        TestJpegOptions options = Picture(i <= 8 ? 64 : 50, i <= 8 ? 48 : 30, Pattern::Noise);
        options.exif = CameraExifPayload(exif);
        photos.push_back(MakeJpeg(options));
        rig.CardPhoto("IMG_000" + std::to_string(i) + ".JPG", photos.back());
    }
    const auto cardBefore = TreeChecksums(rig.card);
    EXPECT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
    EXPECT_EQ(TreeChecksums(rig.card), cardBefore);
    EXPECT_EQ(rig.transfer.Report().photos.turned, 7);
    EXPECT_EQ(rig.prompt.Texts().back(), "Finished copying.\nPhotos copied and verified: 9 of "
                                         "9.\nPhotos turned upright: 7.");
    for (int i = 1; i <= 9; ++i) {
        SCOPED_TRACE(i);
        const std::string path = rig.Photos() + "/20040731_12000" + std::to_string(i) + ".jpg";
        Bytes copy;
        ASSERT_TRUE(ReadFile(path, copy));
        if (i == 1 || i == 9) {
            EXPECT_EQ(copy, photos[std::size_t(i - 1)]);
            continue;
        }
        Bitmap stored, arrived;
        std::string error;
        ASSERT_TRUE(
            DecodeJpegFile(rig.card + "/IMG_000" + std::to_string(i) + ".JPG", {}, stored, error));
        ASSERT_TRUE(DecodeJpegFile(path, {}, arrived, error));
        const Bitmap expected = Shown(stored, i); // by the tag's own definition
        ASSERT_EQ(std::pair(arrived.Width(), arrived.Height()),
                  std::pair(expected.Width(), expected.Height()));
        EXPECT_GT(Psnr(arrived, expected), 50);
        EXPECT_EQ(exiftool ? Capture("exiftool -n -s3 -Orientation " + ShellQuote(path)).output
                           : std::to_string(JpegOrientation(copy.data(), copy.size())) + "\n",
                  "1\n");
    }
}

class RestoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.CardPhoto("DCIM/IMG_0001.JPG", PhotoShotAt(kNoon));
        rig.CardPhoto("DCIM/IMG_0002.JPG", MakeJpeg({}));
        ASSERT_EQ(rig.transfer.OnGetPhotos(), TransferOutcome::Finished);
        rig.prompt.shown.clear();
        rig.progress.positions.clear();
        rig.transfer.m_cameraDrive.clear(); // no camera needed
    }
    TransferRig rig;
};

TEST_F(RestoreTest, BringsTheBackupBackUnderTheCurrentRule) {
    PutFile(rig.Photos() + "/edited.txt", "goes");
    PutFile(rig.Photos() + "/sub/x", "goes");
    fs::remove(rig.Photos() + "/20040731_120000.jpg");
    PutFile(rig.Backup() + "/more/IMG_0009.JPG", PhotoShotAt("2004:08:01 08:00:00"));
    const auto backupBefore = TreeChecksums(rig.Backup());
    bool controlsRead = false;
    rig.transfer.m_readControls = [&] { controlsRead = true; };
    rig.transfer.m_renamingRule = "%Time%";

    EXPECT_EQ(rig.transfer.OnRestore(), TransferOutcome::Finished);
    EXPECT_TRUE(controlsRead);
    EXPECT_EQ(
        rig.prompt.Texts(),
        (Names{"Restoring replaces everything in the photo folder with the photos of its "
               "backup.\n\nPhoto folder: " +
                   rig.Photos() + "\nFiles to delete: 3\nFolders to delete: 1\n\nBackup folder: " +
                   rig.Backup() + "\nPhotos to restore: 3\n\nContinue?",
               "Finished restoring the photo folder from its backup.\nPhotos copied and "
               "verified: 3 of 3."}));
    EXPECT_EQ(rig.prompt.shown[0].icon, PromptIcon::Question);
    EXPECT_EQ(rig.prompt.shown[0].defaultAnswer, PromptAnswer::No);
    EXPECT_EQ(TreeNames(rig.Photos()), (Names{"080000.jpg", "120000.jpg", "IMG_0002.JPG"}));
    EXPECT_EQ(TreeChecksums(rig.Backup()), backupBefore);
    EXPECT_EQ(rig.progress.upper, 3);
    EXPECT_EQ(rig.progress.positions.back(), 0);
}

TEST_F(RestoreTest, NothingChangesWithoutYesOrWithoutBackup) {
    const auto before = TreeChecksums(rig.dir.path());
    rig.prompt.answers = {PromptAnswer::No};
    EXPECT_EQ(rig.transfer.OnRestore(), TransferOutcome::Aborted);
    EXPECT_EQ(rig.prompt.shown.size(), 1u);
    EXPECT_EQ(TreeChecksums(rig.dir.path()), before);

    // A photo folder name just typed has no backup: nothing is asked, and
    // the folder read before stays as it is.
    rig.prompt.shown.clear();
    rig.transfer.m_readControls = [&] { rig.transfer.m_photoFolder = "Typed"; };
    EXPECT_EQ(rig.transfer.OnRestore(), TransferOutcome::Aborted);
    EXPECT_EQ(rig.prompt.Texts(),
              Names{"No backup files found in " + rig.base + "/Typed_bak.\n\nAborted."});
    EXPECT_EQ(rig.prompt.shown.back().icon, PromptIcon::Warning);
    EXPECT_EQ(TreeChecksums(rig.dir.path()), before);
}

TEST_F(RestoreTest, RecreatesAMissingPhotoFolderAndKeepsCountingCollisions) {
    fs::remove_all(rig.Photos());
    rig.transfer.m_renamingRule = "same";
    rig.transfer.m_renameCounter = 7;
    EXPECT_EQ(rig.transfer.OnRestore(), TransferOutcome::Finished);
    EXPECT_EQ(FileNames(rig.Photos()), (Names{"IMG_0002.JPG", "same.jpg"}));
    EXPECT_EQ(rig.transfer.m_renameCounter, 7);
}

} // namespace
} // namespace tivox::test
