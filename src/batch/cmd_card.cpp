// tivox-batch make-card DIR [--count N]: a generated camera card.

#include <cstdio>
#include <string>
#include <vector>

#include "batch/batch_command.h"
#include "batch/sample_card.h"

namespace tivox::batch {

int RunMakeCard(const Args& arguments) {
    Args args = arguments;
    int count = kDefaultCardPhotos;
    std::string countText;
    if (TakeOption(args, "--count", countText)) {
        if (!ParseInt(countText, count) || count < 1 || count > 9000)
            return UsageError("make-card");
    } else if (TakeFlag(args, "--count")) {
        return UsageError("make-card");
    }
    if (args.size() != 1 || args[0].empty() || args[0][0] == '-')
        return UsageError("make-card");

    std::vector<CardFile> written;
    std::string error;
    const bool ok = WriteSampleCard(args[0], count, written, error);
    for (const CardFile& f : written)
        std::printf("%-28s %s\n", f.path.c_str(), f.description.c_str());
    if (!ok) {
        std::fprintf(stderr, "tivox-batch make-card: %s\n", error.c_str());
        return kExitFailure;
    }
    std::printf("%zu files written to %s\n", written.size(), args[0].c_str());
    return kExitOk;
}

} // namespace tivox::batch
