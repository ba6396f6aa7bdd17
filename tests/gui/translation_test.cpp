// The German language file: it loads, it holds every text of the dialogs,
// and the dialogs come up in German with it.

#include <QAbstractButton>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTranslator>
#include <gtest/gtest.h>

#include "controls/icon_button.h"
#include "gui_fixture.h"
#include "ui/about_dlg.h"
#include "ui/drives_dlg.h"
#include "ui/qt_seams.h"
#include "ui/tivox_app.h"

namespace tivox::test {
namespace {

// Every caption, label and tool tip of a window, as shown.
std::vector<QString> Texts(QWidget& window) {
    std::vector<QString> texts{window.windowTitle()};
    for (QLabel* label : window.findChildren<QLabel*>())
        texts.push_back(label->text());
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        texts.push_back(button->text());
        texts.push_back(button->toolTip());
    }
    std::erase_if(texts, [](const QString& t) { return t.isEmpty() || t == "TivoxPlus"; });
    return texts;
}

class German : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QFile::exists(TIVOX_QM_FILE));
        ASSERT_TRUE(language.load(QStringLiteral(TIVOX_QM_FILE)));
    }
    void TearDown() override { QCoreApplication::removeTranslator(&language); }
    QTranslator language;
};

TEST_F(German, EveryTextOfTheDialogsHasATranslation) {
    DialogRig rig;
    rig.dlg->Commands().Fields().m_cameraDrive = "/media/card";
    rig.dlg->Commands().UpdateData(false);
    CDrivesDlg drives([] { return std::vector<CDriveInfo>{}; });
    CAboutDlg about;
    struct Window {
        QWidget* widget;
        const char* context;
    };
    for (const Window& w : {Window{rig.dlg.get(), "CTivoxDlg"}, Window{&drives, "CDrivesDlg"},
                            Window{&about, "CAboutDlg"}}) {
        for (const QString& text : Texts(*w.widget)) {
            if (text == "/media/card" || text.startsWith("https://"))
                continue;
            QString source = text;
            // Balloon tips are the text wrapped in a paragraph.
            if (source.startsWith("<p"))
                source = source.section('>', 1).section("</p>", 0, 0);
            const QString german = language.translate(w.context, source.toUtf8().constData());
            EXPECT_FALSE(german.isEmpty()) << w.context << ": " << source.toStdString();
        }
    }
}

TEST_F(German, CoreMessagesAreTranslatedBeforeTheirArgumentsGoIn) {
    QCoreApplication::installTranslator(&language);
    EXPECT_EQ(TranslateUiText(RangeMessage(2, 10)).toStdString(),
              "Bitte geben Sie eine ganze Zahl zwischen 2 und 10 ein.");
    const UiText unknown{"Not in the file: %s", {"x"}};
    EXPECT_EQ(TranslateUiText(unknown).toStdString(), "Not in the file: x");
}

TEST_F(German, TheDialogsComeUpInGerman) {
    QCoreApplication::installTranslator(&language);
    DialogRig rig;
    EXPECT_EQ(rig.dlg->Button("exit")->text(), "&Beenden");
    EXPECT_EQ(rig.dlg->Button("getPhotos")->text(), "Fotos &holen");
    EXPECT_EQ(rig.dlg->windowTitle(), "TivoxPlus");
    CDrivesDlg drives([] { return std::vector<CDriveInfo>{}; });
    EXPECT_EQ(drives.windowTitle(), "Laufwerke");
}

TEST(LanguageFile, TheAppFallsBackToEnglishWithoutTheFile) {
    TempDir empty;
    CTivoxApp app(*qApp);
    EXPECT_FALSE(app.LoadLanguage({QString::fromStdString(empty.path())}));
    EXPECT_FALSE(app.LanguageLoaded());
    EXPECT_EQ(QCoreApplication::translate("CTivoxDlg", "E&xit"), "E&xit");

    const QString folder = QFileInfo(QStringLiteral(TIVOX_QM_FILE)).absolutePath();
    {
        CTivoxApp german(*qApp);
        EXPECT_TRUE(german.LoadLanguage({QString::fromStdString(empty.path()), folder}));
        EXPECT_EQ(QCoreApplication::translate("CTivoxDlg", "E&xit"), "&Beenden");
    }
    EXPECT_EQ(QCoreApplication::translate("CTivoxDlg", "E&xit"), "E&xit");
}

} // namespace
} // namespace tivox::test
