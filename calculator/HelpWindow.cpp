#include "HelpWindow.h"

#include "CloseKeys.h"

#include <QAction>
#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QKeyEvent>
#include <QRegularExpression>

namespace vantrel {

HelpWindow::HelpWindow(QWidget* parent) : QTextBrowser(parent) {
    // A window of its own that goes with the calculator's, not a view inside it.
    setWindowFlag(Qt::Window);
    setWindowTitle(tr("Vantrel Help"));
    setAttribute(Qt::WA_QuitOnClose, false);
    setOpenExternalLinks(true);
    resize(760, 640);
    // Closed as the desktop closes a document window.
    auto* close = new QAction(this);
    close->setShortcuts(closeWindowKeys());
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
}

// And with Esc, as a help viewer is; the text browser itself has no use for the key.
void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        close();
        return;
    }
    QTextBrowser::keyPressEvent(event);
}

QVariant HelpWindow::loadResource(int type, const QUrl& name) {
    static const QString kDrawingScheme = QStringLiteral("vantrel-drawing");
    if (type == QTextDocument::ImageResource && name.scheme() == kDrawingScheme) {
        // Through Qt's SVG image plug-in, loaded with the first drawing: the calculator itself
        // never needs an SVG renderer.
        QByteArray drawing = m_drawings.value(name.path().toInt()).toUtf8();
        QBuffer source(&drawing);
        QImageReader reader(&source, "svg");
        reader.setScaledSize(reader.size() * devicePixelRatio());
        QImage image = reader.read();
        image.setDevicePixelRatio(devicePixelRatio());
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
