// Reads the head of every file named on the command line with CExifReader,
// as the rename step does, and prints per file its size, the bytes the reader
// consumed (up to the start of the scan), the bytes actually fetched from the
// kernel (stdio reads whole buffers) and the date it found. The last line
// holds the totals and the time spent reading.

#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "exif/exif_reader.h"

namespace {

// Bytes this process has read through read() so far.
long long BytesFetched() {
    std::ifstream io("/proc/self/io");
    std::string key;
    long long value = 0;
    while (io >> key >> value)
        if (key == "rchar:")
            return value;
    return 0;
}

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

struct Row {
    std::string path;
    long long size = 0;
    long long consumed = 0;
    long long fetched = 0;
    std::string date;
};

} // namespace

int main(int argc, char** argv) {
    using Clock = std::chrono::steady_clock;
    const bool quiet = argc > 1 && std::string(argv[1]) == "--quiet";
    std::vector<Row> rows;
    Clock::duration spent{};
    // Reading /proc/self/io counts itself; measure that once and take it off.
    const long long probe = BytesFetched();
    const long long overhead = quiet ? 0 : BytesFetched() - probe;
    for (int i = quiet ? 2 : 1; i < argc; ++i) {
        Row row;
        row.path = argv[i];
        struct stat st {};
        if (stat(argv[i], &st) == 0)
            row.size = st.st_size;
        const long long before = quiet ? 0 : BytesFetched();
        const auto start = Clock::now();
        {
            std::unique_ptr<std::FILE, FileCloser> file(std::fopen(argv[i], "rb"));
            if (!file) {
                std::fprintf(stderr, "bench_exif: cannot open %s\n", argv[i]);
                continue;
            }
            tivox::CExifReader reader(nullptr);
            reader.ReadSections(file.get());
            row.consumed = std::ftell(file.get());
            if (reader.record->IsExif)
                row.date = reader.record->DateTime;
        }
        spent += Clock::now() - start;
        if (!quiet)
            row.fetched = BytesFetched() - before - overhead;
        rows.push_back(row);
    }

    long long size = 0, consumed = 0, fetched = 0;
    for (const Row& r : rows) {
        if (!quiet)
            std::printf("%10lld %8lld %8lld  %-19s  %s\n", r.size, r.consumed, r.fetched,
                        r.date.c_str(), r.path.c_str());
        else
            std::printf("%s: %s\n", r.path.c_str(), r.date.c_str());
        size += r.size;
        consumed += r.consumed;
        fetched += r.fetched;
    }
    const double ms = std::chrono::duration<double, std::milli>(spent).count();
    std::fprintf(quiet ? stderr : stdout,
                 "total: %zu files, %lld bytes, head %lld bytes (%.2f%%), fetched %lld bytes "
                 "(%.2f%%), %.3f ms reading\n",
                 rows.size(), size, consumed, size ? 100.0 * double(consumed) / double(size) : 0.0,
                 fetched, size ? 100.0 * double(fetched) / double(size) : 0.0, ms);
    return 0;
}
