#pragma once
// The user of the tests: answers questions from a script and records every
// message with its icon and title, and presses Cancel in a progress.

#include <string>
#include <vector>

#include "platform/user_seams.h"

namespace tivox::test {

class ScriptedPrompt final : public IPrompt {
public:
    std::vector<PromptAnswer> answers; // used in order; Yes when it runs out
    struct Shown {
        std::string text; // rendered
        PromptIcon icon;
        PromptAnswer defaultAnswer;
        std::string title;
    };
    std::vector<Shown> shown;

    PromptAnswer Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                     PromptAnswer defaultAnswer, const UiText& title) override {
        shown.push_back({RenderUiText(text), icon, defaultAnswer, RenderUiText(title)});
        if (buttons == PromptButtons::Ok)
            return PromptAnswer::Ok;
        if (answers.empty())
            return PromptAnswer::Yes;
        const PromptAnswer a = answers.front();
        answers.erase(answers.begin());
        return a;
    }
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const Shown& s : shown)
            texts.push_back(s.text);
        return texts;
    }
};

// Records each run of a progress with its steps, and cancels once
// `cancelAfter` steps are done (never when negative).
class ScriptedProgress final : public IStepProgress {
public:
    int cancelAfter = -1;
    struct Run {
        int total;
        std::string title;
        std::vector<int> steps;
        bool ended = false;
    };
    std::vector<Run> runs;

    void Begin(int total, const UiText& title) override {
        runs.push_back({total, RenderUiText(title), {}});
    }
    bool Step(int done) override {
        runs.back().steps.push_back(done);
        return cancelAfter < 0 || done < cancelAfter;
    }
    void End() override { runs.back().ended = true; }
};

} // namespace tivox::test
