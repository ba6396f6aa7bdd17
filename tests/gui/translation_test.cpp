// The German language file: it loads, it holds every text of the dialogs,
// and the windows come up in German with it.

#include <QAbstractButton>
#include <QFileInfo>
#include <QLabel>
#include <QTranslator>
#include <gtest/gtest.h>

#include "controls/icon_button.h"
#include "gui_fixture.h"
#include "ui/about_dlg.h"
#include "ui/drives_dlg.h"
#include "ui/fullscreen_wnd.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_seams.h"
#include "ui/tab_color.h"
#include "ui/tivox_app.h"

namespace tivox::test {
namespace {

class German : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(language.load(QStringLiteral(TIVOX_QM_FILE))); }
    void TearDown() override { QCoreApplication::removeTranslator(&language); }
    QTranslator language;
};

TEST_F(German, EveryTextOfTheDialogsHasATranslation) {
    DialogRig rig;
    CDrivesDlg drives([] { return std::vector<CDriveInfo>{}; });
    CAboutDlg about;
    const std::pair<QWidget*, const char*> windows[] = {
        {rig.dlg.get(), "CTivoxDlg"}, {&drives, "CDrivesDlg"}, {&about, "CAboutDlg"}};
    for (const auto& [window, context] : windows) {
        // Every caption, label and tool tip, as shown.
        QStringList texts{window->windowTitle()};
        for (QLabel* label : window->findChildren<QLabel*>())
            texts << label->text();
        for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
            texts << button->text() << button->toolTip();
        for (QString text : texts) {
            if (text.isEmpty() || text == "TivoxPlus" || text.startsWith("https://"))
                continue;
            // Balloon tips are the text wrapped in a paragraph.
            if (text.startsWith("<p"))
                text = text.section('>', 1).section("</p>", 0, 0);
            EXPECT_FALSE(language.translate(context, text.toUtf8().constData()).isEmpty())
                << context << ": " << text.toStdString();
        }
    }
}

TEST_F(German, TheWindowsComeUpInGerman) {
    QCoreApplication::installTranslator(&language);
    // Core messages are translated before their arguments go in.
    EXPECT_EQ(TranslateUiText(RangeMessage(2, 10)).toStdString(),
              "Bitte geben Sie eine ganze Zahl zwischen 2 und 10 ein.");
    EXPECT_EQ(TranslateUiText({"Not in the file: %s", {"x"}}).toStdString(), "Not in the file: x");
    DialogRig rig;
    EXPECT_EQ(rig.dlg->Button("exit")->text(), "&Beenden");
    EXPECT_EQ(rig.dlg->Button("getPhotos")->text(), "Fotos &holen");
    EXPECT_EQ(CDrivesDlg([] { return std::vector<CDriveInfo>{}; }).windowTitle(), "Laufwerke");

    CFullScreenWnd window; // the Image Operations window and its pages
    CImageOpsDlg ops(&window);
    EXPECT_EQ(ops.windowTitle(), "Bildbearbeitung");
    EXPECT_EQ(ops.Tab()->tabText(1), "Farbe");
    EXPECT_EQ(ops.CommitButton()->text(), QString::fromUtf8("Ü&bernehmen"));
    QStringList labels;
    for (QLabel* label : ops.Tab()->m_color->findChildren<QLabel*>())
        labels << label->text();
    EXPECT_TRUE(labels.contains(QString::fromUtf8("Sättigung")));
}

TEST(LanguageFile, TheAppFallsBackToEnglishWithoutTheFile) {
    TempDir empty;
    CTivoxApp app(*qApp);
    EXPECT_FALSE(app.LoadLanguage({QString::fromStdString(empty.path())}));
    EXPECT_FALSE(app.LanguageLoaded());
    EXPECT_EQ(QCoreApplication::translate("CTivoxDlg", "E&xit"), "E&xit");
    {
        CTivoxApp german(*qApp);
        const QString folder = QFileInfo(QStringLiteral(TIVOX_QM_FILE)).absolutePath();
        EXPECT_TRUE(german.LoadLanguage({QString::fromStdString(empty.path()), folder}));
        EXPECT_EQ(QCoreApplication::translate("CTivoxDlg", "E&xit"), "&Beenden");
    }
    EXPECT_EQ(QCoreApplication::translate("CTivoxDlg", "E&xit"), "E&xit");
}

} // namespace
} // namespace tivox::test
