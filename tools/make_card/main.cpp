// tivox-make-card DIR [--count N]: a generated camera card, for the demo,
// the benchmarks and trials by hand.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "make_card/sample_card.h"

namespace {

int Usage() {
    std::fprintf(stderr, "usage: tivox-make-card DIR [--count N]  (N from 1 to 9000, default %d)\n",
                 tivox::kDefaultCardPhotos);
    return 2;
}

// A whole number from 1 to 9000, nothing else.
bool ParseCount(const char* text, int& count) {
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    if (end == text || *end != '\0' || value < 1 || value > 9000)
        return false;
    count = int(value);
    return true;
}

} // namespace

int main(int argc, char** argv) {
    int count = tivox::kDefaultCardPhotos;
    std::string root;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--count") {
            if (i + 1 >= argc || !ParseCount(argv[++i], count))
                return Usage();
        } else if (arg.empty() || arg[0] == '-' || !root.empty()) {
            return Usage();
        } else {
            root = arg;
        }
    }
    if (root.empty())
        return Usage();

    std::vector<tivox::CardFile> written;
    std::string error;
    const bool ok = tivox::WriteSampleCard(root, count, written, error);
    for (const tivox::CardFile& f : written)
        std::printf("%-28s %s\n", f.path.c_str(), f.description.c_str());
    if (!ok) {
        std::fprintf(stderr, "tivox-make-card: %s\n", error.c_str());
        return 1;
    }
    std::printf("%zu files written to %s\n", written.size(), root.c_str());
    return 0;
}
