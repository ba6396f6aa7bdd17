// tivox-batch transfer --card DIR --photos DIR [--rule RULE] [--backup|--no-backup] [--upright]
//                      [--yes]
// tivox-batch restore --photos DIR [--rule RULE] [--yes]
// tivox-batch drives [--mountinfo FILE] [--sysfs DIR] [--labels DIR]
//
// Get Photos and Restore from Backup Folder without the window. Questions go
// to the terminal unless --yes answers them all with Yes; a progress bar is
// drawn when standard error is a terminal.
//
// --upright stands the photos upright on arrival, as the window's box does.
// Unlike the box it is off unless asked for: a script that copied a card
// before still gets the camera's bytes, and the copies match the card's
// checksums.

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "acquire/drive_info.h"
#include "acquire/file_walker.h"
#include "acquire/photo_transfer.h"
#include "batch/batch_command.h"
#include "batch/terminal_prompt.h"

namespace tivox::batch {

namespace {

// A bar of 40 characters on standard error, redrawn when it moves.
class TerminalProgress final : public IProgressSink {
public:
    TerminalProgress() : m_enabled(isatty(STDERR_FILENO)) {}
    ~TerminalProgress() override { Finish(); }
    void SetRange(int lower, int upper) override {
        m_lower = lower;
        m_upper = upper;
    }
    void SetStep(int) override {}
    void SetPos(int position) override {
        if (!m_enabled || m_upper <= m_lower)
            return;
        const int width = 40;
        const int filled = int(long(position - m_lower) * width / (m_upper - m_lower));
        if (filled == m_drawn && position != 0)
            return;
        m_drawn = filled;
        if (position == 0) {
            Finish();
            return;
        }
        std::fprintf(stderr, "\r[%s%s] %d/%d", std::string(std::size_t(filled), '#').c_str(),
                     std::string(std::size_t(width - filled), ' ').c_str(), position, m_upper);
        std::fflush(stderr);
        m_open = true;
    }

private:
    void Finish() {
        if (m_open)
            std::fprintf(stderr, "\n");
        m_open = false;
    }
    bool m_enabled;
    bool m_open = false;
    int m_lower = 0;
    int m_upper = 0;
    int m_drawn = -1;
};

void PrintPass(const char* what, const PassReport& r, bool upright = false) {
    std::printf("%s: %d found, %d copied and verified, %zu failed, %d renamed, %d kept their "
                "name",
                what, r.found, r.copied, r.failures.size(), r.renamed, r.keptName);
    if (upright)
        std::printf(", %d turned upright", r.turned);
    std::printf("\n");
}

// Divides --photos into the base folder and the photo folder's name.
bool SplitPhotos(const std::string& photos, std::string& base, std::string& name) {
    std::error_code ec;
    const std::string absolute = std::filesystem::absolute(photos, ec).lexically_normal();
    if (ec || !SplitFolderPath(absolute, base, name)) {
        std::fprintf(stderr, "tivox-batch: %s is no photo folder below a base folder\n",
                     photos.c_str());
        return false;
    }
    return true;
}

// One command's transfer with the terminal as its user. False (after a
// message) when the photo folder can't be divided into base and name.
struct TerminalTransfer {
    explicit TerminalTransfer(bool yes) : prompt(yes) {}
    bool SetFolders(const std::string& photos, const std::string& rule) {
        transfer.m_renamingRule = rule;
        return SplitPhotos(photos, transfer.m_baseFolder, transfer.m_photoFolder);
    }
    TerminalPrompt prompt;
    TerminalProgress progress;
    NullBusyIndicator busy;
    CPhotoTransfer transfer{prompt, progress, busy};
};

// The questions need a terminal when --yes doesn't answer them.
bool CanAsk(bool yes, const char* command) {
    if (yes || isatty(STDIN_FILENO))
        return true;
    std::fprintf(stderr, "tivox-batch %s: no terminal to ask on; add --yes to answer Yes\n",
                 command);
    return false;
}

} // namespace

int RunTransfer(const Args& arguments) {
    Args args = arguments;
    std::string card, photos, rule = "%Date%_%Time%";
    const bool haveCard = TakeOption(args, "--card", card);
    const bool havePhotos = TakeOption(args, "--photos", photos);
    const bool haveRule = TakeOption(args, "--rule", rule);
    if (!haveRule && TakeFlag(args, "--rule"))
        return UsageError("transfer");
    const bool backup = TakeFlag(args, "--backup");
    const bool noBackup = TakeFlag(args, "--no-backup");
    const bool upright = TakeFlag(args, "--upright");
    const bool yes = TakeFlag(args, "--yes");
    if (!haveCard || !havePhotos || !args.empty() || (backup && noBackup))
        return UsageError("transfer");
    if (!CanAsk(yes, "transfer"))
        return kExitUsage;

    TerminalTransfer session(yes);
    if (!session.SetFolders(photos, rule))
        return kExitUsage;
    CPhotoTransfer& transfer = session.transfer;
    transfer.m_cameraDrive = std::filesystem::path(card).lexically_normal().string();
    if (transfer.m_cameraDrive.size() > 1 && transfer.m_cameraDrive.back() == '/')
        transfer.m_cameraDrive.pop_back();
    transfer.m_cardMayBeAnyFolder = true;
    transfer.m_createBackup = noBackup ? 0 : 1;
    transfer.m_turnUpright = upright ? 1 : 0;

    const TransferOutcome outcome = transfer.OnGetPhotos();
    if (outcome == TransferOutcome::Aborted)
        return kExitFailure;
    PrintPass("photos", transfer.Report().photos, upright);
    if (transfer.m_createBackup)
        PrintPass("backup", transfer.Report().backup);
    return outcome == TransferOutcome::Finished ? kExitOk : kExitFailure;
}

int RunRestore(const Args& arguments) {
    Args args = arguments;
    std::string photos, rule = "%Date%_%Time%";
    const bool havePhotos = TakeOption(args, "--photos", photos);
    const bool haveRule = TakeOption(args, "--rule", rule);
    if (!haveRule && TakeFlag(args, "--rule"))
        return UsageError("restore");
    const bool yes = TakeFlag(args, "--yes");
    if (!havePhotos || !args.empty())
        return UsageError("restore");
    if (!CanAsk(yes, "restore"))
        return kExitUsage;

    TerminalTransfer session(yes);
    if (!session.SetFolders(photos, rule))
        return kExitUsage;
    const TransferOutcome outcome = session.transfer.OnRestore();
    if (outcome == TransferOutcome::Aborted)
        return kExitFailure;
    PrintPass("restored", session.transfer.Report().photos);
    return outcome == TransferOutcome::Finished ? kExitOk : kExitFailure;
}

int RunDrives(const Args& arguments) {
    Args args = arguments;
    DriveSources sources;
    TakeOption(args, "--mountinfo", sources.mountInfo);
    TakeOption(args, "--sysfs", sources.sysfs);
    TakeOption(args, "--labels", sources.labels);
    if (!args.empty())
        return UsageError("drives");
    for (const CDriveInfo& drive : ListDrives(sources)) {
        std::printf("%s\n", GetListText(drive).c_str());
        std::string description = drive.m_description;
        std::size_t start = 0;
        for (;;) {
            const auto end = description.find('\n', start);
            const std::string line = description.substr(start, end - start);
            std::printf(line.empty() ? "\n" : "    %s\n", line.c_str());
            if (end == std::string::npos)
                break;
            start = end + 1;
        }
        std::printf("\n");
    }
    return kExitOk;
}

} // namespace tivox::batch
