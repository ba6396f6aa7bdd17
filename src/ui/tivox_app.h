#pragma once
// The process: the language file, the main dialog, and the end.

#include <QString>
#include <QStringList>
#include <QTranslator>

class QApplication;
class QDialog;

namespace tivox {

class CTivoxApp {
public:
    explicit CTivoxApp(QApplication& app);
    ~CTivoxApp();

    // Loads the language file, runs the main dialog until it ends. The result
    // is the process's exit code.
    int Run();
    // Shows `dialog` and returns when it has ended. Not QDialog::exec: that
    // makes the dialog application-modal, and the full-screen window, which
    // runs beside it as a window of its own, would get no input at all.
    static int RunDialog(QDialog& dialog);

    // The folders searched for "locGerman.qm", in order: beside the program,
    // then the translations folder of the installation.
    static QStringList LanguageFolders();
    // Installs the language file from the first folder that has it (and Qt's
    // own German texts for its standard buttons). False when there is none;
    // the built-in English texts then stand.
    bool LoadLanguage(const QStringList& folders);
    bool LanguageLoaded() const { return m_languageLoaded; }

private:
    QApplication& m_app;
    QTranslator m_language;
    QTranslator m_qtTexts;
    bool m_languageLoaded = false;
};

} // namespace tivox
