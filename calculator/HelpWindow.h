#pragma once

#include <QStringList>
#include <QTextBrowser>
#include <QUrl>

namespace vantrel {

/// The help page in a window of Vantrel's own, for a desktop that has no browser to open it in.
/// The page is local HTML, so a text browser shows it with its headings, tables and links.
class HelpWindow : public QTextBrowser {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    /// Shows the page, scrolled to its anchor, and brings the window to the front.
    void showPage(const QUrl& page);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// The page with each drawing as a picture: a text browser cannot draw inline SVG and would
    /// show its labels as loose words, so each drawing is drawn into an image of its own.
    QVariant loadResource(int type, const QUrl& name) override;

private:
    QStringList m_drawings;
};

}  // namespace vantrel
