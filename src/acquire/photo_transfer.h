#pragma once
// Get Photos and Restore from Backup Folder, as plain logic over the main
// dialog's fields. The dialog (or the batch front end, or a test) fills the
// fields, supplies the seams to the user, and calls OnGetPhotos or OnRestore;
// both run to their end on the calling thread.
//
// Get Photos empties the photo folder (after a question that says how much
// will go), copies every ".jpg" of the camera drive flat into it, renames each
// copy by the rule from its EXIF data, and can copy the result into the
// backup folder beside it. Restore brings the backup back. The camera drive
// is only ever read.

#include <functional>
#include <string>
#include <vector>

#include "acquire/mount_table.h"
#include "acquire/safe_copy.h"
#include "platform/user_seams.h"

namespace tivox {

// A photo that was not copied, and why.
struct CopyFailure {
    std::string source; // the file that was to be copied
    UiText cause;
};

// What one pass (the copy from the card, the backup, or a restore) did.
struct PassReport {
    int found = 0;    // files that passed the ".jpg" filter
    int copied = 0;   // copies read back, found equal to their source, and named
    int renamed = 0;  // copies renamed by the rule
    int keptName = 0; // copies that kept their name (no EXIF, or the rename failed)
    int turned = 0;   // copies stood upright by their Orientation tag
    std::vector<CopyFailure> failures; // in the order of the walk
};

struct TransferReport {
    PassReport photos; // the card into the photo folder, or the backup into it
    PassReport backup; // the photo folder into the backup folder
};

enum class TransferOutcome {
    Finished,      // every photo copied and verified
    Incomplete,    // ran to its end, but some photos were not copied
    BackupAborted, // the photos are in place, the backup couldn't be made
    Aborted,       // stopped before anything was deleted or copied
};

class CPhotoTransfer {
public:
    // ops: the copies' writes and flushes, which tests make fail.
    CPhotoTransfer(IPrompt& prompt, IProgressSink& progress, IBusyIndicator& busy,
                   FileOps& ops = SystemFileOps());
    CPhotoTransfer(const CPhotoTransfer&) = delete;
    CPhotoTransfer& operator=(const CPhotoTransfer&) = delete;

    // The dialog's fields this command works on.
    std::string m_cameraDrive; // mount point of the camera; empty: none chosen
    std::string m_baseFolder;
    std::string m_photoFolder;
    std::string m_renamingRule = "%Date%_%Time%";
    int m_createBackup = 1;
    // Stands each photo from the card upright by its Orientation tag, where
    // the lossless turn is perfect; the backup and a restore copy as they are.
    int m_turnUpright = 1;
    int m_renameCounter = 1; // running number of collision names

    // The dialog's "read the controls" step, run first by both commands, so
    // that they work on what the window shows. May be empty.
    std::function<void()> m_readControls;
    // Turns the English texts of the final report into the user's language.
    Translator m_translate;
    // Where the mount table and sysfs are read from (tests fake them).
    DriveSources m_driveSources;
    // The batch front end may name any folder as the card; the window insists
    // on a mount point.
    bool m_cardMayBeAnyFolder = false;

    TransferOutcome OnGetPhotos();
    TransferOutcome OnRestore();

    // True when path is a folder now; else false after the fitting message.
    bool EnsureFolder(const std::string& path, const char* cannotCreate, const char* isFile);
    // Copies source as targetFolder/name, never replacing; the copy gets its
    // name, and is renamed by the rule, at the next FlushCopies.
    void CopyPhoto(const std::string& source, const std::string& name,
                   const std::string& targetFolder);
    // Flushes the copies made so far, checks them, names each that read back
    // equal to its source and renames it by the rule. With all false the
    // check of the newest ones runs on while the caller copies on.
    void FlushCopies(bool all = true);
    // Renames a new copy by the rule from its EXIF data. A collision takes
    // the next running number; any other failure leaves the camera name.
    void RenamePhoto(const std::string& path);

    IProgressSink& Progress() { return m_progress; }
    const TransferReport& Report() const { return m_report; }

private:
    PromptAnswer Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                     PromptAnswer defaultAnswer);
    void Tell(const char* text, PromptIcon icon) {
        Ask(UiText{text, {}}, icon, PromptButtons::Ok, PromptAnswer::Ok);
    }
    bool CameraDriveChosen() const;
    bool CameraLooksRemovable() const;
    int CopyTree(const std::string& from, const std::string& to, PassReport& report,
                 bool upright = false);
    std::string Translated(const UiText& text) const { return RenderUiText(text, m_translate); }
    // The closing message: the counts, every photo not copied with its
    // cause, and "Finished" only when nothing failed.
    TransferOutcome TellReport(bool restore, bool backupAborted);

    IPrompt& m_prompt;
    IProgressSink& m_progress;
    IBusyIndicator& m_busy;
    bool m_busyOn = false;
    CStagedCopies m_copies;
    PassReport* m_pass = nullptr;
    TransferReport m_report;
};

} // namespace tivox
