// Helper of bench/transform: times the lossless quarter turn of one file in
// this process, split into reading, transforming and writing.
//   bench_transform FILE RUNS

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/atomic_file.h"
#include "platform/jpeg_codec.h"

using namespace tivox;

namespace {

double Now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: bench_transform FILE RUNS\n");
        return 2;
    }
    const std::string path = argv[1];
    const std::string out = path + ".turned";
    const int runs = std::max(1, std::atoi(argv[2]));
    double bestRead = 1e9, bestTurn = 1e9, bestWrite = 1e9;
    std::vector<std::uint8_t> in, turned;
    for (int i = 0; i < runs; ++i) {
        std::string error;
        bool perfect = false;
        const double a = Now();
        if (!ReadWholeFile(path, in, error))
            return std::fprintf(stderr, "%s\n", error.c_str()), 1;
        const double b = Now();
        if (!TransformJpeg(in.data(), in.size(), JpegTransform::Rotate90, turned, perfect, error))
            return std::fprintf(stderr, "%s\n", error.c_str()), 1;
        const double c = Now();
        if (!WriteWholeFile(out, turned.data(), turned.size(), error))
            return std::fprintf(stderr, "%s\n", error.c_str()), 1;
        const double d = Now();
        bestRead = std::min(bestRead, b - a);
        bestTurn = std::min(bestTurn, c - b);
        bestWrite = std::min(bestWrite, d - c);
    }
    std::printf("in process, best of %d: read %.4f s, transform %.4f s, write %.4f s\n", runs,
                bestRead, bestTurn, bestWrite);
    return 0;
}
