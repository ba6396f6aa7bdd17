#include "acquire/photo_transfer.h"

#include <sys/stat.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "acquire/drive_info.h"
#include "acquire/folder_paths.h"
#include "acquire/photo_copier.h"
#include "exif/exif_reader.h"
#include "exif/exif_tags.h"
#include "platform/path_overlap.h"

namespace tivox {

namespace {

// A batch of copies is flushed to the disc at once, and read back while the
// next one is copied. Small batches keep the photos appearing steadily and
// leave little to read back after the last copy; each costs one flush.
constexpr std::size_t kBatchFiles = 256;
constexpr std::uint64_t kBatchBytes = std::uint64_t(64) << 20;
// A message box holds this many lines of a list before it outgrows the screen.
constexpr std::size_t kListedFailures = 15;

const char* const kCannotCreateTarget = TIVOX_TR("Could not create the target folder.\nAborted.");
const char* const kTargetIsFile =
    TIVOX_TR("The target folder path exists,\nbut it is a file, not a folder.\nAborted.");

// What emptying the photo folder would delete. A path that ends in "/" (the
// root among them) is never emptied, as it never passes EnsureFolder.
FolderContents ContentsToGo(const std::string& photos) {
    return PathExists(photos) ? CountFolderContents(photos) : FolderContents{};
}

// True when the folder lies inside the card, or the card inside it. A folder
// path that ends in "/" is never emptied (it fails EnsureFolder), so it
// overlaps nothing.
bool PathsOverlap(const std::string& a, const std::string& b) {
    return !a.empty() && a.back() != '/' && FoldersOverlap(a, b);
}

// One text per singular and plural of the two counts, in the order 1 file
// and 1 folder, 1 file and n folders, n files and 1 folder, n and n: each
// language words every case its own way.
UiText CountedText(const char* const (&texts)[4], const FolderContents& contents) {
    const int index = (contents.files == 1 ? 0 : 2) + (contents.folders == 1 ? 0 : 1);
    return {texts[index], {std::to_string(contents.files), std::to_string(contents.folders)}};
}

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

} // namespace

CPhotoTransfer::CPhotoTransfer(IPrompt& prompt, IProgressSink& progress, IBusyIndicator& busy,
                               FileOps& ops)
    : m_prompt(prompt), m_progress(progress), m_busy(busy), m_copies(ops) {}

PromptAnswer CPhotoTransfer::Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                                 PromptAnswer defaultAnswer) {
    // No wait cursor over a message box.
    if (m_busyOn)
        m_busy.EndBusy();
    const PromptAnswer answer = m_prompt.Ask(text, icon, buttons, defaultAnswer);
    if (m_busyOn)
        m_busy.BeginBusy();
    return answer;
}

bool CPhotoTransfer::CameraDriveChosen() const {
    if (m_cameraDrive.empty())
        return false;
    if (m_cardMayBeAnyFolder)
        return IsFolder(m_cameraDrive);
    CMountTable table;
    table.Load(m_driveSources);
    return table.Find(m_cameraDrive) && IsFolder(m_cameraDrive == "/" ? "/." : m_cameraDrive);
}

bool CPhotoTransfer::CameraLooksRemovable() const {
    CDriveInfo drive;
    drive.m_root = m_cameraDrive;
    CMountTable table;
    table.Load(m_driveSources);
    // A plain folder as card is judged by the volume that holds it.
    if (m_cardMayBeAnyFolder && !table.Find(m_cameraDrive)) {
        char resolved[PATH_MAX];
        if (realpath(m_cameraDrive.c_str(), resolved))
            if (const MountEntry* entry = table.Containing(resolved))
                drive.m_root = entry->mountPoint;
    }
    drive.Inspect(table, m_driveSources);
    return !drive.IsFloppyLetter() && drive.m_type == kDriveRemovable;
}

TransferOutcome CPhotoTransfer::OnGetPhotos() {
    m_busy.BeginBusy();
    m_busyOn = true;
    struct BusyEnd {
        CPhotoTransfer* self;
        ~BusyEnd() {
            if (self->m_busyOn)
                self->m_busy.EndBusy();
            self->m_busyOn = false;
        }
    } busyEnd{this};

    if (m_readControls)
        m_readControls();
    m_report = {};
    const std::string photos = GetPhotoFolderPath(m_baseFolder, m_photoFolder);

    if (!CameraDriveChosen()) {
        Tell(TIVOX_TR("Please select the digital camera drive first."), PromptIcon::Stop);
        return TransferOutcome::Aborted;
    }
    if (photos.empty()) {
        Tell(TIVOX_TR("Please select the target folder first."), PromptIcon::Stop);
        return TransferOutcome::Aborted;
    }
    if (!CameraLooksRemovable()) {
        const UiText question{
            TIVOX_TR("The current digital camera drive has not been detected as a removable "
                     "drive. You may change it by clicking the \"Select Digital Camera Drive\" "
                     "button.\n\nProceed anyway?"),
            {}};
        if (Ask(question, PromptIcon::Warning, PromptButtons::YesNo, PromptAnswer::No) !=
            PromptAnswer::Yes)
            return TransferOutcome::Aborted;
    }
    // Emptying a folder on the card, or one that holds the card, would write
    // to the card and lose the photos about to be copied.
    if (PathsOverlap(photos, m_cameraDrive) ||
        (m_createBackup &&
         PathsOverlap(GetBackupFolderPath(m_baseFolder, m_photoFolder), m_cameraDrive))) {
        Tell(TIVOX_TR("The photo folder and the camera drive overlap.\nThe camera drive is only "
                      "ever read.\nAborted."),
             PromptIcon::Stop);
        return TransferOutcome::Aborted;
    }
    // Whatever the photo folder holds will go: say how much before it does.
    const FolderContents contents = ContentsToGo(photos);
    if (!contents.Empty()) {
        const char* const texts[4] = {
            TIVOX_TR("The selected photo folder contains %s file and %s folder.\nIf you "
                     "continue, all of them will be deleted\nprior to getting new photos from "
                     "the camera.\n\nContinue?"),
            TIVOX_TR("The selected photo folder contains %s file and %s folders.\nIf you "
                     "continue, all of them will be deleted\nprior to getting new photos from "
                     "the camera.\n\nContinue?"),
            TIVOX_TR("The selected photo folder contains %s files and %s folder.\nIf you "
                     "continue, all of them will be deleted\nprior to getting new photos from "
                     "the camera.\n\nContinue?"),
            TIVOX_TR("The selected photo folder contains %s files and %s folders.\nIf you "
                     "continue, all of them will be deleted\nprior to getting new photos from "
                     "the camera.\n\nContinue?")};
        const UiText question = CountedText(texts, contents);
        if (Ask(question, PromptIcon::Warning, PromptButtons::YesNo, PromptAnswer::No) !=
            PromptAnswer::Yes)
            return TransferOutcome::Aborted;
    }
    if (!EnsureFolder(photos, kCannotCreateTarget, kTargetIsFile))
        return TransferOutcome::Aborted;

    std::string source = m_cameraDrive;
    AppendBackslash(source);
    const int count = CFileWalker(".jpg").Walk(source);
    m_progress.SetRange(0, count);
    m_progress.SetStep(1);
    m_renameCounter = 1;
    DeleteFolderContents(photos);
    m_report.photos.found = CopyTree(source, photos, m_report.photos, m_turnUpright != 0);

    bool backupAborted = false;
    if (m_createBackup) {
        const std::string backup = GetBackupFolderPath(m_baseFolder, m_photoFolder);
        if (EnsureFolder(backup, TIVOX_TR("Could not create the backup folder.\nAborted."),
                         TIVOX_TR("The backup folder path exists,\nbut it is a file, not a "
                                  "folder.\nAborted."))) {
            DeleteFolderContents(backup);
            m_report.backup.found = CopyTree(photos, backup, m_report.backup);
        } else {
            backupAborted = true;
        }
    }
    const TransferOutcome outcome = TellReport(false, backupAborted);
    m_progress.SetPos(0);
    return outcome;
}

// Restore reads the controls first, as Get Photos does, so that it works on
// the folder the window shows; it looks for photos in the backup before it
// asks, and the question names the photo folder and what both sides hold.
// Working on the fields of the last read instead emptied a folder other than
// the one on screen when a new name had just been typed.
TransferOutcome CPhotoTransfer::OnRestore() {
    if (m_readControls)
        m_readControls();
    m_report = {};
    const std::string photos = GetPhotoFolderPath(m_baseFolder, m_photoFolder);
    const std::string backup = GetBackupFolderPath(m_baseFolder, m_photoFolder);
    const int count = CFileWalker(".jpg").Walk(backup);
    if (count == 0) {
        Ask({TIVOX_TR("No backup files found in %s.\n\nAborted."), {backup}}, PromptIcon::Warning,
            PromptButtons::Ok, PromptAnswer::Ok);
        return TransferOutcome::Aborted;
    }
    const FolderContents contents = ContentsToGo(photos);
    const UiText question{
        TIVOX_TR("Restoring replaces everything in the photo folder with the photos of its "
                 "backup.\n\nPhoto folder: %s\nFiles to delete: %s\nFolders to delete: "
                 "%s\n\nBackup folder: %s\nPhotos to restore: %s\n\nContinue?"),
        {photos, std::to_string(contents.files), std::to_string(contents.folders), backup,
         std::to_string(count)}};
    if (Ask(question, PromptIcon::Question, PromptButtons::YesNo, PromptAnswer::No) !=
        PromptAnswer::Yes)
        return TransferOutcome::Aborted;

    m_progress.SetRange(0, count);
    m_progress.SetStep(1);
    if (!EnsureFolder(photos, kCannotCreateTarget, kTargetIsFile))
        return TransferOutcome::Aborted;
    DeleteFolderContents(photos);
    m_report.photos.found = CopyTree(backup, photos, m_report.photos);
    const TransferOutcome outcome = TellReport(true, false);
    m_progress.SetPos(0);
    return outcome;
}

TransferOutcome CPhotoTransfer::TellReport(bool restore, bool backupAborted) {
    const PassReport& photos = m_report.photos;
    const PassReport& backup = m_report.backup;
    const bool complete = photos.failures.empty() && backup.failures.empty() && !backupAborted;
    const auto counted = [&](const char* format, const PassReport& pass) {
        return Translated({format, {std::to_string(pass.copied), std::to_string(pass.found)}});
    };
    const auto listed = [&](const char* heading, const std::vector<CopyFailure>& failures) {
        std::string text = "\n\n" + Translated({heading, {}});
        for (std::size_t i = 0; i < failures.size() && i < kListedFailures; ++i)
            text += "\n" + failures[i].source + ": " + Translated(failures[i].cause);
        if (failures.size() > kListedFailures)
            text += "\n" + Translated({TIVOX_TR("%s more photos were not copied."),
                                       {std::to_string(failures.size() - kListedFailures)}});
        return text;
    };
    std::string message;
    if (restore)
        message = Translated(
            {complete ? TIVOX_TR("Finished restoring the photo folder from its backup.")
                      : TIVOX_TR("Restoring the photo folder from its backup did not complete."),
             {}});
    else
        message = Translated({complete ? TIVOX_TR("Finished copying.")
                                       : TIVOX_TR("Copying the photos did not complete."),
                              {}});
    message += "\n" + counted(TIVOX_TR("Photos copied and verified: %s of %s."), photos);
    if (photos.turned > 0)
        message += "\n" + Translated({TIVOX_TR("Photos turned upright: %s."),
                                      {std::to_string(photos.turned)}});
    if (!restore && m_createBackup)
        message += "\n" + (backupAborted ? Translated({TIVOX_TR("No backup was made."), {}})
                                         : counted(TIVOX_TR("Copied and verified into the "
                                                            "backup folder: %s of %s."),
                                                   backup));
    if (!photos.failures.empty()) {
        message += listed(TIVOX_TR("Not copied:"), photos.failures);
        message += "\n\n" + Translated({restore ? TIVOX_TR("The backup folder still holds these "
                                                           "photos.")
                                                : TIVOX_TR("The camera card still holds these "
                                                           "photos: do not erase it yet."),
                                        {}});
    }
    if (!backup.failures.empty())
        message += listed(TIVOX_TR("Not copied into the backup folder:"), backup.failures);
    Ask({"%s", {message}}, complete ? PromptIcon::Information : PromptIcon::Warning,
        PromptButtons::Ok, PromptAnswer::Ok);
    if (backupAborted)
        return TransferOutcome::BackupAborted;
    return complete ? TransferOutcome::Finished : TransferOutcome::Incomplete;
}

int CPhotoTransfer::CopyTree(const std::string& from, const std::string& to, PassReport& report,
                             bool upright) {
    m_copies.SetTurnUpright(upright);
    CPhotoCopier copier(".jpg");
    copier.m_owner = this;
    copier.m_targetFolder = to;
    m_pass = &report;
    const int found = copier.Walk(from);
    FlushCopies();
    m_copies.SetTurnUpright(false);
    // The names given (and the renames by the rule) last only once flushed.
    UiText cause;
    if (report.copied > 0 && !m_copies.SyncNames(to, cause))
        report.failures.push_back({to, cause});
    m_pass = nullptr;
    return found;
}

bool CPhotoTransfer::EnsureFolder(const std::string& path, const char* cannotCreate,
                                  const char* isFile) {
    struct stat st {};
    const bool found = !path.empty() && path.back() != '/' && stat(path.c_str(), &st) == 0;
    if (found && S_ISDIR(st.st_mode))
        return true;
    if (found) {
        Tell(isFile, PromptIcon::Stop);
        return false;
    }
    // One level only: a missing base folder is not made.
    if (!path.empty() && mkdir(path.c_str(), 0777) == 0)
        return true;
    Tell(cannotCreate, PromptIcon::Stop);
    return false;
}

void CPhotoTransfer::CopyPhoto(const std::string& source, const std::string& name,
                               const std::string& targetFolder) {
    UiText cause;
    if (!m_copies.Stage(source, targetFolder, name, cause)) {
        if (m_pass)
            m_pass->failures.push_back({source, cause});
        return;
    }
    if (m_copies.Count() >= kBatchFiles || m_copies.Bytes() >= kBatchBytes)
        FlushCopies(false);
}

void CPhotoTransfer::FlushCopies(bool all) {
    const auto linked = [&](const std::string& path, bool turned) {
        if (m_pass) {
            ++m_pass->copied;
            m_pass->turned += turned ? 1 : 0;
        }
        if (!m_renamingRule.empty())
            RenamePhoto(path);
        else if (m_pass)
            ++m_pass->keptName;
    };
    const auto failed = [&](const std::string& source, const UiText& cause) {
        if (m_pass)
            m_pass->failures.push_back({source, cause});
    };
    if (all)
        m_copies.Finish(linked, failed);
    else
        m_copies.Commit(linked, failed);
}

void CPhotoTransfer::RenamePhoto(const std::string& path) {
    bool renamed = false;
    {
        std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
        // A copy that can't be opened keeps its camera name.
        if (!file) {
            if (m_pass)
                ++m_pass->keptName;
            return;
        }
        CExifReader reader(nullptr);
        reader.ReadSections(file.get());
        file.reset();
        std::string folder, name, rule;
        if (reader.record->IsExif && SplitFolderPath(path, folder, name)) {
            CExifTags(reader).ExpandRule(m_renamingRule, rule);
            AppendBackslash(folder);
            // The rule's own text isn't filtered; a separator in it must not
            // move the photo out of its folder.
            const RenameResult result = rule.find('/') == std::string::npos
                                            ? RenameNoReplace(path, folder + rule + ".jpg")
                                            : RenameResult::OtherFailure;
            if (result == RenameResult::Ok) {
                renamed = true;
            } else if (result == RenameResult::AccessDenied) {
                const std::string numbered =
                    folder + rule + "_" + std::to_string(m_renameCounter) + ".jpg";
                ++m_renameCounter;
                renamed = RenameNoReplace(path, numbered) == RenameResult::Ok;
            }
        }
    }
    if (m_pass)
        ++(renamed ? m_pass->renamed : m_pass->keptName);
}

} // namespace tivox
