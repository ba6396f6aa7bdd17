#include "ui/tab_basic.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/icon_button.h"
#include "imageops/operation.h"
#include "imageops/selection_pass.h"
#include "ui/fullscreen_wnd.h"
#include "ui/image_ops_dlg.h"
#include "ui/qt_seams.h"

namespace tivox {
namespace {

QString Tr(const char* text) {
    return QCoreApplication::translate("CBasicPage", text);
}

CIconButton* MakeButton(QWidget* parent, const QString& caption, const char* icon) {
    auto* button = new CIconButton(caption, parent);
    button->SetIcon(QString::fromLatin1(icon), 32, 32);
    return button;
}

} // namespace

CBasicPage::CBasicPage(CImageOpsDlg* dlg) : m_dlg(dlg) {
    auto* layout = new QVBoxLayout(this);
    auto* rotate = new QGroupBox(Tr("Rotate"), this);
    auto* rotateRow = new QHBoxLayout(rotate);
    m_buttons[0] = MakeButton(rotate, Tr("Left 90°"), ":/imageops/rotate_left.svg");
    m_buttons[1] = MakeButton(rotate, Tr("Right 90°"), ":/imageops/rotate_right.svg");
    m_buttons[2] = MakeButton(rotate, Tr("180°"), ":/imageops/rotate_180.svg");
    for (int i = 0; i < 3; ++i) {
        rotateRow->addWidget(m_buttons[i]);
    }
    auto* mirror = new QGroupBox(Tr("Mirror"), this);
    auto* mirrorRow = new QHBoxLayout(mirror);
    m_buttons[3] = MakeButton(mirror, Tr("Horizontal"), ":/imageops/mirror_horizontal.svg");
    m_buttons[4] = MakeButton(mirror, Tr("Vertical"), ":/imageops/mirror_vertical.svg");
    mirrorRow->addWidget(m_buttons[3]);
    mirrorRow->addWidget(m_buttons[4]);
    m_buttons[5] = MakeButton(this, Tr("Delete Photos"), ":/imageops/delete.svg");
    layout->addWidget(rotate);
    layout->addWidget(mirror);
    layout->addWidget(m_buttons[5]);
    layout->addStretch();

    const std::int32_t codes[5] = {opRotateLeft, opRotateRight, opRotate180, opMirrorHorizontal,
                                   opMirrorVertical};
    for (int i = 0; i < 5; ++i) {
        const std::int32_t code = codes[i];
        connect(m_buttons[i], &QPushButton::clicked, this,
                [this, code] { m_dlg->ApplyCode(code); });
    }
    connect(m_buttons[5], &QPushButton::clicked, this, &CBasicPage::OnDelete);
}

void CBasicPage::OnDelete() {
    // The question counts the photos that the "Process:" boxes choose and
    // names the colours, so that nobody sends more to the Trash than meant.
    CFullScreenWnd* window = m_dlg->Window();
    const ProcessScope scope = m_dlg->Scope();
    const int count = CountChosen(scope, *window);
    if (count == 0) {
        return;
    }
    const Translator translate = CoreTranslator();
    std::string colours;
    const std::pair<bool, const char*> markers[] = {{scope.red, TIVOX_TR("red")},
                                                    {scope.green, TIVOX_TR("green")},
                                                    {scope.blue, TIVOX_TR("blue")}};
    for (const auto& [chosen, name] : markers) {
        if (chosen && !scope.all && !scope.current) {
            colours += (colours.empty() ? "" : ", ") + translate(name);
        }
    }
    const std::string number = std::to_string(count);
    UiText question;
    if (colours.empty()) {
        question = count == 1 ? UiText{TIVOX_TR("Move 1 photo to the Trash?"), {}}
                              : UiText{TIVOX_TR("Move %s photos to the Trash?"), {number}};
    } else {
        question = count == 1
                       ? UiText{TIVOX_TR("Move 1 photo (%s) to the Trash?"), {colours}}
                       : UiText{TIVOX_TR("Move %s photos (%s) to the Trash?"), {number, colours}};
    }
    const PromptAnswer answer =
        window->Prompt().Ask(question, PromptIcon::Question, PromptButtons::YesNo, PromptAnswer::No,
                             UiText{TIVOX_TR("Confirm"), {}});
    if (answer == PromptAnswer::Yes) {
        m_dlg->ApplyCode(opDelete);
    }
}

} // namespace tivox
