#pragma once
// Helpers of the gallery tests: folders of stand-in pictures and the page
// checker. The scripted user (ScriptedPrompt,
// CountingBusy) comes from the acquisition tests.

#include <string>
#include <vector>

#include "acquire_fixture.h"
#include "support/batch_runner.h"

namespace tivox::test {

// gallery/pics and gallery/pics/thumbs with one small JPEG of each name.
void MakePictureFolders(const std::string& gallery, const std::vector<std::string>& names);
std::vector<std::string> NumberedNames(int count); // "IMG_0001.jpg" ...

std::string ReadText(const std::string& path);
bool Exists(const std::string& path);
std::vector<std::string> HtmlPages(const std::string& folder); // sorted names
int CountOf(const std::string& text, const std::string& needle);

// Runs check_pages.py over the gallery: every page parses, nests properly
// and every href and src leads to a file. Skips when python3 is missing.
void ExpectPagesValid(const std::string& gallery);

} // namespace tivox::test
