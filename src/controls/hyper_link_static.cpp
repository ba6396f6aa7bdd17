#include "controls/hyper_link_static.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QMouseEvent>
#include <QUrl>

#include "platform/user_seams.h"

namespace tivox {
QString HyperlinkErrorText(const QString& url) {
    return QCoreApplication::translate("CHyperLinkStatic", "Unable to open hyperlink:\n\n") +
           QCoreApplication::translate("CHyperLinkStatic", "No program on this computer opens %1.")
               .arg(url);
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

bool CHyperLinkStatic::OpenLink(const QString& url) {
    return QDesktopServices::openUrl(QUrl::fromUserInput(url));
}

void CHyperLinkStatic::mouseReleaseEvent(QMouseEvent* event) {
    QLabel::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint()))
        return;
    m_overControl = false;
    if (m_opener ? m_opener(URL()) : OpenLink(URL())) {
        SetVisited(true);
        return;
    }
    ApplyLook();
    QApplication::beep();
    const QString message = HyperlinkErrorText(URL());
    if (m_prompt)
        m_prompt->Ask({message.toStdString(), {}}, PromptIcon::Warning, PromptButtons::Ok,
                      PromptAnswer::Ok);
    else
        QMessageBox::warning(window(), QStringLiteral("TivoxPlus"), message);
}

} // namespace tivox
