#include "controls/hyper_link_static.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QMouseEvent>
#include <QUrl>

#include "platform/user_seams.h"

namespace tivox {
namespace {

const char* ErrorFormat(int code) {
    switch (code) {
    case 0:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "The operating system is out\nof memory or resources.");
    case 2:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic", "The specified file was not found.");
    case 3:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic", "The specified path was not found.");
    case 5:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "The operating system denied\naccess to the specified file.");
    case 8:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "There was not enough memory to complete the operation.");
    case 11:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "The .EXE file is invalid\n(non-Win32 .EXE or error in .EXE "
                                 "image).");
    case 26:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic", "A sharing violation occurred.");
    case 27:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "The filename association is\nincomplete or invalid.");
    case 28:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "The DDE transaction could not\nbe completed because the "
                                 "request timed out.");
    case 29:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic", "The DDE transaction failed.");
    case 30:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "The DDE transaction could not\nbe completed because other DDE "
                                 "transactions\nwere being processed.");
    case 31:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "There is no application associated\nwith the given filename "
                                 "extension.");
    case 32:
        return QT_TRANSLATE_NOOP("CHyperLinkStatic",
                                 "The specified dynamic-link library was not found.");
    default:
        return nullptr;
    }
}

} // namespace

QString HyperlinkErrorText(int code) {
    const char* format = ErrorFormat(code);
    const QString reason =
        format ? QCoreApplication::translate("CHyperLinkStatic", format)
               : QCoreApplication::translate("CHyperLinkStatic", "Unknown Error (%1) occurred.")
                     .arg(code);
    return QCoreApplication::translate("CHyperLinkStatic", "Unable to open hyperlink:\n\n") +
           reason;
}

CHyperLinkStatic::CHyperLinkStatic(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    ApplyLook();
    setToolTip(URL());
}

void CHyperLinkStatic::SetURL(const QString& url) {
    m_url = url;
    adjustSize();
    setToolTip(URL());
}

void CHyperLinkStatic::SetVisited(bool visited) {
    m_visited = visited;
    ApplyLook();
}

void CHyperLinkStatic::SetUnderline(int mode) {
    m_underline = mode;
    ApplyLook();
}

QColor CHyperLinkStatic::CurrentColor() const {
    if (m_overControl)
        return m_hoverColor;
    return m_visited ? m_visitedColor : m_linkColor;
}

void CHyperLinkStatic::ApplyLook() {
    QPalette pal = palette();
    pal.setColor(QPalette::WindowText, CurrentColor());
    setPalette(pal);
    QFont f = font();
    f.setUnderline(m_underline == 1 || (m_underline == -1 && m_overControl));
    setFont(f);
    update();
}

// Qt tells us when the mouse comes and goes, so no polling timer is needed.
void CHyperLinkStatic::enterEvent(QEnterEvent* event) {
    QLabel::enterEvent(event);
    m_overControl = true;
    ApplyLook();
}

void CHyperLinkStatic::leaveEvent(QEvent* event) {
    QLabel::leaveEvent(event);
    m_overControl = false;
    ApplyLook();
}

int CHyperLinkStatic::OpenLink(const QString& url) {
    // 31: no application to open it with.
    return QDesktopServices::openUrl(QUrl::fromUserInput(url)) ? 33 : 31;
}

void CHyperLinkStatic::mouseReleaseEvent(QMouseEvent* event) {
    QLabel::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint()))
        return;
    m_overControl = false;
    const int result = m_opener ? m_opener(URL()) : OpenLink(URL());
    if (result > 32) {
        SetVisited(true);
        return;
    }
    ApplyLook();
    QApplication::beep();
    const QString message = HyperlinkErrorText(result);
    if (m_prompt)
        m_prompt->Ask({message.toStdString(), {}}, PromptIcon::Warning, PromptButtons::Ok,
                      PromptAnswer::Ok);
    else
        QMessageBox::warning(window(), QStringLiteral("TivoxPlus"), message);
}

} // namespace tivox
