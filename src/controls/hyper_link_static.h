#pragma once
// A label that is a link: coloured by its state, underlined under the mouse,
// with the hand cursor; a click opens the target with the desktop's browser.

#include <QColor>
#include <QLabel>
#include <functional>

namespace tivox {

class IPrompt;

class CHyperLinkStatic : public QLabel {
    Q_OBJECT
public:
    // Opens a link; false when nothing on the desktop could open it.
    using Opener = std::function<bool(const QString& url)>;

    explicit CHyperLinkStatic(const QString& text = {}, QWidget* parent = nullptr);

    void SetURL(const QString& url);
    QString URL() const { return m_url.isEmpty() ? text() : m_url; }
    void SetVisited(bool visited);
    // 1 always, 0 never, -1 only under the mouse.
    void SetUnderline(int mode);
    // Opens `url` with the desktop's browser.
    static bool OpenLink(const QString& url);

    // Seams for tests: how links open and where the failure message goes.
    void SetOpener(Opener opener) { m_opener = std::move(opener); }
    void SetPrompt(IPrompt* prompt) { m_prompt = prompt; }

    bool IsVisited() const { return m_visited; }
    bool IsOverControl() const { return m_overControl; }
    // The colour the text has now.
    QColor CurrentColor() const;

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void ApplyLook();

    QColor m_linkColor{0, 0, 238};
    QColor m_visitedColor{85, 26, 139};
    QColor m_hoverColor{255, 0, 0};
    bool m_overControl = false;
    bool m_visited = false;
    int m_underline = -1;
    QString m_url;
    Opener m_opener;
    IPrompt* m_prompt = nullptr;
};

// "Unable to open hyperlink:" and why, naming the link.
QString HyperlinkErrorText(const QString& url);

} // namespace tivox
