#include "ui/qt_seams.h"

#include <QApplication>
#include <QCoreApplication>
#include <QCursor>
#include <QMessageBox>
#include <QProgressBar>
#include <QProgressDialog>
#include <QWindow>

#include "controls/folder_browser.h"

namespace tivox {

Translator CoreTranslator() {
    return [](const std::string& english) {
        return QCoreApplication::translate("Tivox", english.c_str()).toStdString();
    };
}

QString TranslateUiText(const UiText& text) {
    return QString::fromStdString(RenderUiText(text, CoreTranslator()));
}

namespace {

QMessageBox::StandardButton ToButton(PromptAnswer answer) {
    switch (answer) {
    case PromptAnswer::Ok:
        return QMessageBox::Ok;
    case PromptAnswer::Cancel:
        return QMessageBox::Cancel;
    case PromptAnswer::Yes:
        return QMessageBox::Yes;
    case PromptAnswer::No:
        return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon ToIcon(PromptIcon icon) {
    switch (icon) {
    case PromptIcon::Stop:
        return QMessageBox::Critical;
    case PromptIcon::Warning:
        return QMessageBox::Warning;
    case PromptIcon::Question:
        return QMessageBox::Question;
    case PromptIcon::Information:
        return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ToButtons(PromptButtons buttons) {
    switch (buttons) {
    case PromptButtons::Ok:
        return QMessageBox::Ok;
    case PromptButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case PromptButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case PromptButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

} // namespace

PromptAnswer QtPrompt::Ask(const UiText& text, PromptIcon icon, PromptButtons buttons,
                           PromptAnswer defaultAnswer, const UiText& title) {
    // A message during a long command needs the normal cursor.
    const bool waiting = QApplication::overrideCursor() != nullptr;
    if (waiting)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    QMessageBox box(ToIcon(icon),
                    title.format.empty() ? QStringLiteral("TivoxPlus") : TranslateUiText(title),
                    TranslateUiText(text), ToButtons(buttons), m_parent);
    box.setDefaultButton(ToButton(defaultAnswer));
    const int result = box.exec();
    if (waiting)
        QApplication::restoreOverrideCursor();
    switch (result) {
    case QMessageBox::Yes:
        return PromptAnswer::Yes;
    case QMessageBox::No:
        return PromptAnswer::No;
    case QMessageBox::Cancel:
        return PromptAnswer::Cancel;
    default:
        return buttons == PromptButtons::YesNo ? PromptAnswer::No : PromptAnswer::Ok;
    }
}

QtFolderPicker::QtFolderPicker(QWidget* parent) : m_parent(parent) {}
QtFolderPicker::~QtFolderPicker() = default;

bool QtFolderPicker::PickFolder(const UiText& title, const std::string& startFolder,
                                std::string& chosen) {
    if (!m_browser) {
        m_browser = std::make_unique<CFolderBrowser>(m_parent, TranslateUiText(title));
        m_browser->SetFlags(CFolderBrowser::kReturnOnlyFsDirs | CFolderBrowser::kStatusText);
    }
    m_browser->SetTitle(TranslateUiText(title));
    m_browser->SetStartFolder(QString::fromStdString(startFolder));
    if (!m_browser->Run())
        return false;
    chosen = m_browser->GetPath().toStdString();
    return true;
}

QtInputBlocker::QtInputBlocker(QWidget* allowed)
    : m_modalAtStart(QApplication::activeModalWidget()), m_allowed(allowed) {
    qApp->installEventFilter(this);
}

QtInputBlocker::~QtInputBlocker() {
    qApp->removeEventFilter(this);
}

bool QtInputBlocker::IsAllowed(QObject* target) const {
    if (!m_allowed)
        return false;
    if (target == static_cast<QObject*>(m_allowed->windowHandle()))
        return true;
    // A widget, or what a widget holds (the Esc shortcut of a dialog).
    for (QObject* object = target; object; object = object->parent()) {
        if (const auto* widget = qobject_cast<QWidget*>(object))
            return widget->window() == m_allowed;
    }
    return false;
}

bool QtInputBlocker::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Close:
        if (!event->spontaneous())
            return false; // the program's own closing
        [[fallthrough]];
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride: {
        if (IsAllowed(watched))
            return false;
        QWidget* modal = QApplication::activeModalWidget();
        const bool blocked = modal == nullptr || modal == m_modalAtStart || modal == m_allowed;
        if (blocked)
            event->ignore(); // a refused close leaves the window open
        return blocked;
    }
    default:
        return false;
    }
}

void QtProgressSink::SetRange(int lower, int upper) {
    if (m_bar)
        m_bar->setRange(lower, upper);
}

void QtProgressSink::SetPos(int position) {
    if (!m_bar)
        return;
    m_bar->setValue(position);
    QCoreApplication::processEvents();
}

QtStepProgress::~QtStepProgress() {
    End();
}

QString QtStepProgress::Count(int done) const {
    return m_title + QLatin1Char('\n') +
           QCoreApplication::translate("QtStepProgress", "%1 of %2").arg(done).arg(m_total);
}

void QtStepProgress::Begin(int total, const UiText& title) {
    End();
    m_title = TranslateUiText(title);
    m_total = total;
    if (total > 1) {
        m_dialog = std::make_unique<QProgressDialog>(
            Count(0), QCoreApplication::translate("QtStepProgress", "Cancel"), 0, total, m_parent);
        m_dialog->setWindowTitle(QStringLiteral("TivoxPlus"));
        m_dialog->setWindowModality(Qt::WindowModal);
        m_dialog->setAutoReset(false);
        m_dialog->setAutoClose(false);
        // A quick run of a few photos does without it.
        m_dialog->setMinimumDuration(400);
        m_dialog->setValue(0);
    }
    m_blocker = std::make_unique<QtInputBlocker>(m_dialog.get());
}

bool QtStepProgress::Step(int done) {
    if (m_dialog) {
        m_dialog->setLabelText(Count(done));
        m_dialog->setValue(done);
        // Cancel is pressed with the arrow, not the wait cursor.
        if (!m_arrow && m_dialog->isVisible() && QApplication::overrideCursor()) {
            QApplication::setOverrideCursor(Qt::ArrowCursor);
            m_arrow = true;
        }
    }
    QCoreApplication::processEvents();
    return !m_dialog || !m_dialog->wasCanceled();
}

void QtStepProgress::End() {
    if (m_arrow)
        QApplication::restoreOverrideCursor();
    m_arrow = false;
    m_blocker.reset();
    m_dialog.reset();
}

void QtBusyIndicator::BeginBusy() {
    if (m_depth++ == 0)
        QApplication::setOverrideCursor(Qt::WaitCursor);
}

void QtBusyIndicator::EndBusy() {
    if (m_depth > 0 && --m_depth == 0)
        QApplication::restoreOverrideCursor();
}

} // namespace tivox
