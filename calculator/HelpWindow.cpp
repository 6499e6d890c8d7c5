#include "HelpWindow.h"

#include <QRegularExpression>

namespace vantrel {

HelpWindow::HelpWindow(QWidget* parent) : QTextBrowser(parent) {
    // A window of its own that goes with the calculator's, not a view inside it.
    setWindowFlag(Qt::Window);
    setWindowTitle(tr("Vantrel Help"));
    setAttribute(Qt::WA_QuitOnClose, false);
    setOpenExternalLinks(true);
    resize(760, 640);
}

QVariant HelpWindow::loadResource(int type, const QUrl& name) {
    const QVariant resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::HtmlResource) return resource;
    QString html = resource.typeId() == QMetaType::QByteArray
                       ? QString::fromUtf8(resource.toByteArray())
                       : resource.toString();
    static const QRegularExpression drawing(QStringLiteral("<svg\\b.*?</svg>"),
                                            QRegularExpression::DotMatchesEverythingOption);
    return html.remove(drawing);
}

void HelpWindow::showPage(const QUrl& page) {
    setSource(page);
    show();
    raise();
    activateWindow();
}

}  // namespace vantrel
