#include "batch/terminal_prompt.h"

#include <cstdio>

namespace tivox::batch {

PromptAnswer TerminalPrompt::Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                                 PromptAnswer defaultAnswer, const UiText&) {
    std::FILE* out = icon == PromptIcon::Information ? stdout : stderr;
    std::fprintf(out, "%s", RenderUiText(text).c_str());
    if (buttons == PromptButtons::Ok) {
        std::fprintf(out, "\n");
        return PromptAnswer::Ok;
    }
    if (m_answerYes) {
        std::fprintf(out, " [--yes] Yes\n");
        return PromptAnswer::Yes;
    }
    const bool yesFirst = defaultAnswer == PromptAnswer::Yes;
    std::fprintf(out, " %s ", yesFirst ? "[Y/n]" : "[y/N]");
    std::fflush(out);
    char line[64];
    if (!std::fgets(line, sizeof(line), stdin))
        return PromptAnswer::No;
    if (line[0] == 'y' || line[0] == 'Y')
        return PromptAnswer::Yes;
    if (line[0] == 'n' || line[0] == 'N')
        return PromptAnswer::No;
    return yesFirst ? PromptAnswer::Yes : PromptAnswer::No;
}

} // namespace tivox::batch
