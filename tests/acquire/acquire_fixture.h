#pragma once
// Helpers of the acquisition tests: folder trees, a scripted user, a progress
// recorder, checksums of a card, and child processes that run with fewer
// rights or a file-size limit.

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/user_seams.h"
#include "support/scripted_prompt.h"
#include "photo_writer/test_jpeg.h"

namespace tivox::test {

// Writes a file (and its folders) with the given bytes or text.
void PutFile(const std::string& path, const std::string& text);
void PutFile(const std::string& path, const Bytes& bytes);
void MakeFolder(const std::string& path);

// The names below folder, relative and sorted, folders marked with a trailing
// "/". Hidden temporary files show up too, so a test sees leftovers.
std::vector<std::string> TreeNames(const std::string& folder);
// Names of the plain files directly in folder, sorted.
std::vector<std::string> FileNames(const std::string& folder);

// Path -> content hash, modification time and mode of everything below folder.
std::map<std::string, std::string> TreeChecksums(const std::string& folder);

// A photo with EXIF of the given date ("2004:07:31 12:00:00"; empty: none),
// in the given byte order.
Bytes PhotoShotAt(const std::string& dateTime, bool bigEndian = false);

class RecordingProgress final : public IProgressSink {
public:
    int upper = -1;
    std::vector<int> positions;
    void SetRange(int, int u) override { upper = u; }
    void SetStep(int) override {}
    void SetPos(int p) override { positions.push_back(p); }
};

class CountingBusy final : public IBusyIndicator {
public:
    int depth = 0;
    int begun = 0;
    void BeginBusy() override {
        ++depth;
        ++begun;
    }
    void EndBusy() override { --depth; }
};

struct ChildLimits {
    bool unprivileged = false; // drop root to "nobody" (uid 65534) first
    long fileSizeLimit = -1;   // RLIMIT_FSIZE in bytes; SIGXFSZ is ignored
};
// Runs body in a forked child with the limits and gives back its exit code
// (body's result), or -1 when the child died otherwise.
int RunInChild(const ChildLimits& limits, const std::function<int()>& body);

// Makes the folder and everything below it reachable and writable for all,
// so that an unprivileged child can work in a test's temporary folder.
void OpenToAll(const std::string& folder);

} // namespace tivox::test
