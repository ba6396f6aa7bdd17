#pragma once
// The user seams of the core, done with Qt: message boxes, the shared folder
// picker, the dialog's progress bar and the wait cursor. Core texts are
// translated here (context "Tivox") before their arguments go in.

#include <QPointer>
#include <QProgressBar>
#include <QProgressDialog>
#include <QString>
#include <QWidget>
#include <memory>

#include "platform/user_seams.h"

namespace tivox {

class CFolderBrowser;

// Turns an English core text into the user's language (context "Tivox").
Translator CoreTranslator();
// The text of a core message in the user's language.
QString TranslateUiText(const UiText& text);

class QtPrompt final : public IPrompt {
public:
    explicit QtPrompt(QWidget* parent) : m_parent(parent) {}
    PromptAnswer Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                     PromptAnswer defaultAnswer, const UiText& title = {}) override;

private:
    QPointer<QWidget> m_parent;
};

// Runs the one CFolderBrowser of the dialog, made at first need.
class QtFolderPicker final : public IFolderPicker {
public:
    explicit QtFolderPicker(QWidget* parent);
    ~QtFolderPicker() override;
    bool PickFolder(const UiText& title, const std::string& startFolder,
                    std::string& chosen) override;
    CFolderBrowser* Browser() const { return m_browser.get(); }

private:
    QWidget* m_parent;
    std::unique_ptr<CFolderBrowser> m_browser;
};

// Swallows the user's input while it lives, so that no command starts while
// another runs on the GUI thread; closing a window from the window manager
// counts as input. Windows that open meanwhile (a question of the running
// command) and the window `allowed` still take input; paint and timer events
// pass.
class QtInputBlocker final : public QObject {
public:
    explicit QtInputBlocker(QWidget* allowed = nullptr);
    ~QtInputBlocker() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsAllowed(QObject* target) const;

    QPointer<QWidget> m_modalAtStart;
    QPointer<QWidget> m_allowed;
};

// Moves the progress bar and lets the windows repaint while a long command
// runs on the GUI thread; the user's input is refused meanwhile.
class QtProgressSink final : public IProgressSink {
public:
    explicit QtProgressSink(QProgressBar* bar) : m_bar(bar) {}
    void SetRange(int lower, int upper) override;
    void SetStep(int step) override { m_step = step; }
    void SetPos(int position) override;
    int Step() const { return m_step; }

private:
    QtInputBlocker m_blocker;
    QPointer<QProgressBar> m_bar;
    int m_step = 10;
};

// A progress dialog with the count and Cancel, window-modal to `parent`, over
// work of more than one step that lasts a moment. The windows keep painting
// between the steps; all other input is refused meanwhile.
class QtStepProgress final : public IStepProgress {
public:
    explicit QtStepProgress(QWidget* parent) : m_parent(parent) {}
    ~QtStepProgress() override;
    void Begin(int total, const UiText& title) override;
    bool Step(int done) override;
    void End() override;
    // The dialog of the run, for tests; null between runs and for one step.
    QProgressDialog* Dialog() const { return m_dialog.get(); }

private:
    QString Count(int done) const;

    QPointer<QWidget> m_parent;
    QString m_title;
    int m_total = 0;
    bool m_arrow = false; // an arrow cursor is set over the wait cursor
    std::unique_ptr<QProgressDialog> m_dialog;
    std::unique_ptr<QtInputBlocker> m_blocker;
};

// The wait cursor, as an override cursor.
class QtBusyIndicator final : public IBusyIndicator {
public:
    void BeginBusy() override;
    void EndBusy() override;

private:
    int m_depth = 0;
};

} // namespace tivox
