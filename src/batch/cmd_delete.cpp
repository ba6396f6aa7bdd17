// tivox-batch delete PHOTO... [--yes]
//
// Moves photos to the desktop Trash, as Delete Photos of the Image Operations
// window does, after a question on the terminal unless --yes answers it.

#include <cstdio>
#include <string>

#include "batch/batch_command.h"
#include "batch/terminal_prompt.h"
#include "platform/trash.h"

namespace tivox::batch {

int RunDelete(const Args& input) {
    Args args = input;
    const bool yes = TakeFlag(args, "--yes");
    if (args.empty())
        return UsageError("delete");
    for (const std::string& arg : args)
        if (arg.empty() || arg[0] == '-')
            return UsageError("delete");

    const UiText question = args.size() == 1 ? UiText{TIVOX_TR("Move 1 photo to the Trash?"), {}}
                                             : UiText{TIVOX_TR("Move %s photos to the Trash?"),
                                                      {std::to_string(args.size())}};
    TerminalPrompt prompt(yes);
    if (prompt.Ask(question, PromptIcon::Question, PromptButtons::YesNo, PromptAnswer::No) !=
        PromptAnswer::Yes) {
        std::fprintf(stderr, "Nothing was moved.\n");
        return kExitFailure;
    }
    int failed = 0;
    for (const std::string& photo : args) {
        std::string trashed;
        UiText error;
        if (MoveToTrash(photo, trashed, error)) {
            std::printf("moved %s to %s\n", photo.c_str(), trashed.c_str());
        } else {
            std::fprintf(stderr, "tivox-batch delete: %s\n", RenderUiText(error).c_str());
            ++failed;
        }
    }
    return failed == 0 ? kExitOk : kExitFailure;
}

} // namespace tivox::batch
