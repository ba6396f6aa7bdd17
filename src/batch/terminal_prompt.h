#pragma once
// Questions of the batch commands on the terminal, or all answered with Yes.

#include "platform/user_seams.h"

namespace tivox::batch {

// Every message is printed: finish messages on standard output, the others
// on standard error. A question waits on the same line for y or n; Enter,
// other input and the end of input take the default answer (No when the end
// of input comes).
class TerminalPrompt final : public IPrompt {
public:
    explicit TerminalPrompt(bool answerYes) : m_answerYes(answerYes) {}
    PromptAnswer Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                     PromptAnswer defaultAnswer, const UiText& title = {}) override;

private:
    bool m_answerYes;
};

} // namespace tivox::batch
