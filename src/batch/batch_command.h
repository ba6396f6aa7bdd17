#pragma once
// The command table of tivox-batch. Each group of commands lives in its own
// file (cmd_<group>.cpp) and is listed in main.cpp.

#include <string>
#include <vector>

namespace tivox::batch {

using Args = std::vector<std::string>;

// Exit codes shared by all commands.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

struct BatchCommand {
    const char* name;
    const char* usage; // the argument synopsis, printed after the name
    int (*run)(const Args& args);
};

// Prints "usage: tivox-batch <name> <usage>" to standard error and returns
// kExitUsage, for commands that were called wrongly.
int UsageError(const BatchCommand& command);
int UsageError(const char* name);

// Small argument helpers. Options may come in any order, with their value as
// the next argument. They return false when the value is missing or malformed.
bool TakeOption(Args& args, const std::string& name, std::string& value);
bool TakeFlag(Args& args, const std::string& name);
bool ParseSize(const std::string& text, int& width, int& height); // "WxH"
bool ParseInt(const std::string& text, int& value);
bool ParseFloat(const std::string& text, double& value);

} // namespace tivox::batch
