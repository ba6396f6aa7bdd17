#pragma once
// Helpers of the gallery tests: folders of stand-in pictures, the page
// checker (Python's HTML parser) and a runner of commands. The scripted user
// (ScriptedPrompt, CountingBusy) comes from the acquisition tests.

#include <string>
#include <vector>

#include "acquire_fixture.h"

namespace tivox::test {

// Creates gallery/pics and gallery/pics/thumbs with one small file of each
// name in both.
void MakePictureFolders(const std::string& gallery, const std::vector<std::string>& names);
// "IMG_0001.jpg" ... for count names.
std::vector<std::string> NumberedNames(int count);

std::string ReadText(const std::string& path);
bool Exists(const std::string& path);
// The names of the .html files in a folder, sorted.
std::vector<std::string> HtmlPages(const std::string& folder);
// How often `needle` stands in `text`.
int CountOf(const std::string& text, const std::string& needle);

// Output and exit code of a shell command (standard output only).
struct CommandRun {
    int exitCode = -1;
    std::string output;
};
CommandRun Capture(const std::string& command);
// The text in single quotes for the shell.
std::string ShellQuote(const std::string& text);
// tivox-batch with these arguments; standard error joins standard output.
CommandRun RunBatch(const std::vector<std::string>& args);

struct PageCheck {
    bool ran = false; // false when python3 is missing
    int exitCode = -1;
    std::string output; // "page images=N" lines, then "FAULT ..." lines
};
// Parses every page of the gallery and resolves every href and src.
PageCheck CheckPages(const std::string& gallery);

} // namespace tivox::test
