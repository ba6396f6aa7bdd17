// tivox-batch: the command-line front end over the same core as the window.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "batch/batch_command.h"

namespace tivox::batch {

int RunExif(const Args& args);
int RunName(const Args& args);
int RunTransfer(const Args& args);
int RunRestore(const Args& args);
int RunDrives(const Args& args);
int RunEdit(const Args& args);
int RunThumbs(const Args& args);
int RunShow(const Args& args);
int RunTransform(const Args& args);
int RunGallery(const Args& args);
int RunDelete(const Args& args);

namespace {

const BatchCommand kCommands[] = {
    {"help", "", nullptr},
    {"exif", "FILE...", RunExif},
    {"name", "RULE FILE...", RunName},
    {"transfer",
     "--card DIR --photos DIR [--rule RULE] [--backup|--no-backup] [--upright] [--yes]\n"
     "      --upright turns photos upright by their EXIF orientation, without loss (off unless "
     "given)",
     RunTransfer},
    {"restore", "--photos DIR [--rule RULE] [--yes]", RunRestore},
    {"drives", "[--mountinfo FILE] [--sysfs DIR] [--labels DIR]", RunDrives},
    {"edit",
     "FILE [--brightness B] [--contrast C] [--sharpness S] [--gamma G] [--saturation S] "
     "[--grayscale] [--negative] [--denoise] [--redeye X,Y]... [--crop X,Y,W,H] [--resize WxH] "
     "[--screen WxH] [--quality Q] [--out FILE]",
     RunEdit},
    {"thumbs", "DIR --box WxH --out DIR [--ext jpg|ppm|pam] [--quality Q]", RunThumbs},
    {"show", "FILE --screen WxH --out FILE [--quality Q]", RunShow},
    {"transform", "left|right|180|hflip|vflip FILE...", RunTransform},
    {"delete", "PHOTO... [--yes]", RunDelete},
    {"gallery",
     "--photos DIR --out DIR [--title T] [--photo WxH] [--thumb WxH] [--photo-tiles XxY] "
     "[--thumb-tiles XxY] [--quality Q] [--force]",
     RunGallery},
};

void PrintUsage(std::FILE* out) {
    std::fprintf(out, "usage: tivox-batch <command> [arguments]\ncommands:\n");
    for (const auto& c : kCommands)
        std::fprintf(out, "  %s %s\n", c.name, c.usage);
}

} // namespace

int UsageError(const BatchCommand& command) {
    std::fprintf(stderr, "usage: tivox-batch %s %s\n", command.name, command.usage);
    return kExitUsage;
}

int UsageError(const char* name) {
    for (const auto& c : kCommands)
        if (std::strcmp(c.name, name) == 0)
            return UsageError(c);
    PrintUsage(stderr);
    return kExitUsage;
}

bool TakeOption(Args& args, const std::string& name, std::string& value) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] != name)
            continue;
        if (i + 1 >= args.size())
            return false;
        value = args[i + 1];
        args.erase(args.begin() + long(i), args.begin() + long(i) + 2);
        return true;
    }
    return false;
}

bool TakeFlag(Args& args, const std::string& name) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == name) {
            args.erase(args.begin() + long(i));
            return true;
        }
    }
    return false;
}

bool ParseInt(const std::string& text, int& value) {
    if (text.empty())
        return false;
    char* end = nullptr;
    const long v = std::strtol(text.c_str(), &end, 10);
    if (*end != '\0' || v < -2147483647L || v > 2147483647L)
        return false;
    value = int(v);
    return true;
}

bool ParseFloat(const std::string& text, double& value) {
    if (text.empty())
        return false;
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    return *end == '\0';
}

bool ParseSize(const std::string& text, int& width, int& height) {
    const auto x = text.find('x');
    if (x == std::string::npos)
        return false;
    return ParseInt(text.substr(0, x), width) && ParseInt(text.substr(x + 1), height) &&
           width > 0 && height > 0;
}

} // namespace tivox::batch

int main(int argc, char** argv) {
    using namespace tivox::batch;
    if (argc < 2) {
        PrintUsage(stderr);
        return kExitUsage;
    }
    const std::string name = argv[1];
    if (name == "help" || name == "--help" || name == "-h") {
        PrintUsage(stdout);
        return kExitOk;
    }
    for (const auto& c : kCommands) {
        if (name == c.name && c.run) {
            Args args(argv + 2, argv + argc);
            return c.run(args);
        }
    }
    std::fprintf(stderr, "tivox-batch: unknown command '%s'\n", name.c_str());
    PrintUsage(stderr);
    return kExitUsage;
}
