#include "HelpWindow.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

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
    static const QString kDrawingScheme = QStringLiteral("vantrel-drawing");
    if (type == QTextDocument::ImageResource && name.scheme() == kDrawingScheme) {
        QSvgRenderer renderer(m_drawings.value(name.path().toInt()).toUtf8());
        QImage image(renderer.defaultSize() * devicePixelRatio(),
                     QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(devicePixelRatio());
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        return image;
    }
    const QVariant resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::HtmlResource) return resource;
    QString html = resource.typeId() == QMetaType::QByteArray
                       ? QString::fromUtf8(resource.toByteArray())
                       : resource.toString();
    static const QRegularExpression drawing(QStringLiteral("<svg\\b.*?</svg>"),
                                            QRegularExpression::DotMatchesEverythingOption);
    m_drawings.clear();
    QString shown;
    qsizetype copied = 0;
    for (auto match = drawing.globalMatch(html); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        shown += html.mid(copied, found.capturedStart() - copied);
        shown += QStringLiteral("<img src=\"%1:%2\"/>").arg(kDrawingScheme).arg(m_drawings.size());
        m_drawings << found.captured();
        copied = found.capturedEnd();
    }
    return shown + html.mid(copied);
}

void HelpWindow::showPage(const QUrl& page) {
    setSource(page);
    show();
    raise();
    activateWindow();
}

}  // namespace vantrel
