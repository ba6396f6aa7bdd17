#pragma once
// The seams between the core's commands and the person using them. The Qt
// layer implements them with message boxes, folder dialogs, progress bars and
// the wait cursor; the batch front end with the terminal; tests with scripted
// answers. Every call comes from the thread that runs the command.

#include <string>

#include "platform/ui_text.h"

namespace tivox {

enum class PromptIcon { Stop, Warning, Question, Information };
enum class PromptButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class PromptAnswer { Ok, Cancel, Yes, No };

class IPrompt {
public:
    virtual ~IPrompt() = default;
    // Shows `text` and waits for the answer. `defaultAnswer` is the button
    // that Enter presses. A title may be empty: the program's name is used.
    virtual PromptAnswer Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                             PromptAnswer defaultAnswer, const UiText& title = {}) = 0;
};

class IFolderPicker {
public:
    virtual ~IFolderPicker() = default;
    // Lets the user pick a folder, starting at `startFolder`. False on cancel.
    virtual bool PickFolder(const UiText& title, const std::string& startFolder,
                            std::string& chosen) = 0;
};

class IProgressSink {
public:
    virtual ~IProgressSink() = default;
    virtual void SetRange(int lower, int upper) = 0;
    virtual void SetStep(int step) = 0;
    virtual void SetPos(int position) = 0;
};

class IBusyIndicator {
public:
    virtual ~IBusyIndicator() = default;
    virtual void BeginBusy() = 0;
    virtual void EndBusy() = 0;
};

// Counts work over many photos, one step at a time, and lets the user stop
// it. A caller that gets false from Step stops before its next step; what is
// done stays done.
class IStepProgress {
public:
    virtual ~IStepProgress() = default;
    // A run of `total` steps begins; `title` says what is being done.
    virtual void Begin(int total, const UiText& title) = 0;
    // `done` of the steps are finished. False once the user has cancelled.
    virtual bool Step(int done) = 0;
    virtual void End() = 0;
};

// One run of a step progress for a scope, also on early returns.
class StepScope {
public:
    StepScope(IStepProgress& progress, int total, const UiText& title) : m_progress(&progress) {
        m_progress->Begin(total, title);
    }
    ~StepScope() { End(); }
    StepScope(const StepScope&) = delete;
    StepScope& operator=(const StepScope&) = delete;
    bool Step(int done) { return m_progress == nullptr || m_progress->Step(done); }
    // Ends the run before the scope does (for a final message box).
    void End() {
        if (m_progress) {
            m_progress->End();
            m_progress = nullptr;
        }
    }

private:
    IStepProgress* m_progress;
};

// Holds the busy indicator for one scope, also on early returns.
class BusyScope {
public:
    explicit BusyScope(IBusyIndicator& busy) : m_busy(&busy) { m_busy->BeginBusy(); }
    ~BusyScope() { End(); }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;
    // Ends the busy state before the scope does (for a final message box).
    void End() {
        if (m_busy) {
            m_busy->EndBusy();
            m_busy = nullptr;
        }
    }

private:
    IBusyIndicator* m_busy;
};

// Seams that do nothing, for callers that have no user to ask.
class NullProgressSink final : public IProgressSink {
public:
    void SetRange(int, int) override {}
    void SetStep(int) override {}
    void SetPos(int) override {}
};

class NullStepProgress final : public IStepProgress {
public:
    void Begin(int, const UiText&) override {}
    bool Step(int) override { return true; }
    void End() override {}
};

class NullBusyIndicator final : public IBusyIndicator {
public:
    void BeginBusy() override {}
    void EndBusy() override {}
};

} // namespace tivox
