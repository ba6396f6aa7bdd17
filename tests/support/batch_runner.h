#pragma once
// Runs shell commands, tivox-batch and the card maker for the tests of the
// batch front end.
// Header only: the batch front end links the rest of this folder, not this.

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace tivox::test {

struct CommandRun {
    int exitCode = -1;
    std::string output; // standard output only, unless the command joins them
};

inline CommandRun Capture(const std::string& command) {
    CommandRun run;
    std::FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return run;
    std::array<char, 4096> buffer{};
    std::size_t n;
    while ((n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        run.output.append(buffer.data(), n);
    const int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

inline std::string ShellQuote(const std::string& text) {
    std::string quoted = "'";
    for (char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

// A program with these arguments and no input; standard error joins
// standard output.
inline CommandRun RunProgram(const char* program, const std::vector<std::string>& args) {
    std::string command = ShellQuote(program);
    for (const auto& arg : args)
        command += " " + ShellQuote(arg);
    return Capture(command + " </dev/null 2>&1");
}

inline CommandRun RunBatch(const std::vector<std::string>& args) {
    return RunProgram(TIVOX_BATCH_EXE, args);
}

// The same, for tests that look at the exit status first.
inline int RunBatch(const std::vector<std::string>& args, std::string& printed) {
    CommandRun run = RunBatch(args);
    printed = std::move(run.output);
    return run.exitCode;
}

// A generated camera card under `root` (tivox-make-card).
inline int MakeCard(const std::string& root, int count, std::string& printed) {
    CommandRun run = RunProgram(TIVOX_MAKE_CARD_EXE, {root, "--count", std::to_string(count)});
    printed = std::move(run.output);
    return run.exitCode;
}

} // namespace tivox::test
