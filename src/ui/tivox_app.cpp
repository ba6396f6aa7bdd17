#include "ui/tivox_app.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QLibraryInfo>

#include "ui/fullscreen_editing.h"
#include "ui/tivox_dlg.h"

namespace tivox {

CTivoxApp::CTivoxApp(QApplication& app) : m_app(app) {}

CTivoxApp::~CTivoxApp() {
    if (m_languageLoaded) {
        QCoreApplication::removeTranslator(&m_qtTexts);
        QCoreApplication::removeTranslator(&m_language);
    }
}

QStringList CTivoxApp::LanguageFolders() {
    const QString program = QCoreApplication::applicationDirPath();
    // An installation moved to another prefix finds its file relative to bin/.
    return {program, program + QStringLiteral("/../share/tivoxplus/translations"),
            QStringLiteral(TIVOX_TRANSLATIONS_DIR)};
}

bool CTivoxApp::LoadLanguage(const QStringList& folders) {
    for (const QString& folder : folders) {
        if (!m_language.load(QStringLiteral("locGerman.qm"), folder))
            continue;
        QCoreApplication::installTranslator(&m_language);
        // The standard buttons of message boxes and the folder picker.
        if (m_qtTexts.load(QStringLiteral("qtbase_de"),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
            QCoreApplication::installTranslator(&m_qtTexts);
        m_languageLoaded = true;
        return true;
    }
    return false;
}

int CTivoxApp::Run() {
    LoadLanguage(LanguageFolders());
    CTivoxDlg dialog;
    CFullScreenEditing fullScreen(dialog);
    return RunDialog(dialog);
}

int CTivoxApp::RunDialog(QDialog& dialog) {
    QEventLoop loop;
    QObject::connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit);
    dialog.show();
    loop.exec();
    return 0;
}

} // namespace tivox
