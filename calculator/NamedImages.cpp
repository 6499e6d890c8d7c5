#include "NamedImages.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>
#include <memory>

namespace vantrel {

namespace {

// Draws one of the application's pictures, reading it when it is first drawn. Qt's own SVG icons
// read the picture when the icon is made, to check it, and again for every size and mode they draw;
// the window makes its icons while it starts, before it is shown. A picture drawn at one size and
// mode is kept, under its name, for every icon of that name.
class NamedImageEngine : public QIconEngine {
public:
    NamedImageEngine(QString path, QList<QSize> sizes)
        : m_path(std::move(path)), m_sizes(std::move(sizes)) {}

    QIconEngine* clone() const override { return new NamedImageEngine(*this); }
    QString key() const override { return QStringLiteral("vantrel-named-image"); }
    // A misspelt name gives a null icon, as Qt's would; the resource table answers without reading.
    bool isNull() override { return !QFile::exists(m_path); }
    // The sizes to offer where a window manager wants a list; any other is drawn when asked for.
    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return m_sizes;
    }

    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return drawnSize(size);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
        // Looked up by the size asked for, so that a picture drawn before is found without reading.
        const QString cacheKey = QStringLiteral("vantrel:%1:%2x%3:%4")
                                     .arg(m_path)
                                     .arg(size.width())
                                     .arg(size.height())
                                     .arg(mode);
        QPixmap result;
        if (QPixmapCache::find(cacheKey, &result)) return result;
        const QSize drawn = drawnSize(size);
        if (drawn.isEmpty()) return {};
        result = render(drawn);
        // Disabled and selected looks are the style's, as for any other icon.
        if (mode != QIcon::Normal && qobject_cast<QApplication*>(QCoreApplication::instance())) {
            QStyleOption option;
            option.palette = QGuiApplication::palette();
            const QPixmap styled =
                QApplication::style()->generatedIconPixmap(mode, result, &option);
            if (!styled.isNull()) result = styled;
        }
        QPixmapCache::insert(cacheKey, result);
        return result;
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        QSize size = rect.size();
        if (painter->device()) size *= painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap(size, mode, state));
    }

private:
    // The picture keeps its proportions within the size asked for.
    QSize drawnSize(const QSize& size) {
        const QSize own = picture().defaultSize();
        if (own.isEmpty() || size.isEmpty()) return {};
        return own.scaled(size, Qt::KeepAspectRatio);
    }

    QSvgRenderer& picture() {
        if (!m_picture) m_picture = std::make_shared<QSvgRenderer>(m_path);
        return *m_picture;
    }

    QPixmap render(const QSize& size) {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        picture().render(&painter);
        painter.end();
        return QPixmap::fromImage(std::move(image));
    }

    QString m_path;
    QList<QSize> m_sizes;
    // Shared by the copies Qt makes of an icon: read once for all of them.
    std::shared_ptr<QSvgRenderer> m_picture;
};

}  // namespace

QIcon namedImage(const QString& name) {
    return QIcon(new NamedImageEngine(QStringLiteral(":/images/%1.svg").arg(name), {}));
}

QIcon applicationIcon() {
    QList<QSize> sizes;
    for (const int side : {16, 22, 24, 32, 48, 64, 128}) sizes.append({side, side});
    // Kept once drawn, as the other pictures are: on X11 every new top-level window, down to each
    // menu and tool tip, hands the window manager the application icon at every offered size.
    return QIcon(new NamedImageEngine(QStringLiteral(":/icons/com.glessik.Vantrel.svg"), sizes));
}

}  // namespace vantrel
