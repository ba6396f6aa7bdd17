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

#include "acquire/mount_table.h"
#include "acquire/safe_copy.h"
#include "platform/user_seams.h"

namespace tivox {

// What one pass (the copy from the card, the backup, or a restore) did.
struct PassReport {
    int found = 0;    // files that passed the ".jpg" filter
    int copied = 0;   // copies that got their name
    int failed = 0;   // copies that failed and were skipped
    int renamed = 0;  // copies renamed by the rule
    int keptName = 0; // copies that kept their name (no EXIF, or the rename failed)
};

struct TransferReport {
    PassReport photos; // the card into the photo folder, or the backup into it
    PassReport backup; // the photo folder into the backup folder
};

enum class TransferOutcome {
    Finished,      // ended with the finish message
    BackupAborted, // the photos are in place, the backup couldn't be made
    Aborted,       // stopped before anything was deleted or copied
};

class CPhotoTransfer {
public:
    CPhotoTransfer(IPrompt& prompt, IProgressSink& progress, IBusyIndicator& busy);
    CPhotoTransfer(const CPhotoTransfer&) = delete;
    CPhotoTransfer& operator=(const CPhotoTransfer&) = delete;

    // The dialog's fields this command works on.
    std::string m_cameraDrive; // mount point of the camera; empty: none chosen
    std::string m_baseFolder;
    std::string m_photoFolder;
    std::string m_renamingRule = "%Date%_%Time%";
    int m_createBackup = 1;
    int m_renameCounter = 1; // running number of collision names

    // The dialog's "read the controls" step, run first by OnGetPhotos (not by
    // OnRestore, which works on the fields as they stand). May be empty.
    std::function<void()> m_readControls;
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
    // Names every copy made so far and renames it by the rule.
    void FlushCopies();
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
    int CopyTree(const std::string& from, const std::string& to, PassReport& report);

    IPrompt& m_prompt;
    IProgressSink& m_progress;
    IBusyIndicator& m_busy;
    bool m_busyOn = false;
    CStagedCopies m_copies;
    PassReport* m_pass = nullptr;
    TransferReport m_report;
};

} // namespace tivox
