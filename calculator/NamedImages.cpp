#include "NamedImages.h"

#include <QApplication>
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
    explicit NamedImageEngine(QString path) : m_path(std::move(path)) {}

    QIconEngine* clone() const override { return new NamedImageEngine(*this); }
    QString key() const override { return QStringLiteral("vantrel-named-image"); }

    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const QSize own = picture().defaultSize();
        return own.isEmpty() ? QSize() : own.scaled(size, Qt::KeepAspectRatio);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QSize drawn = actualSize(size, mode, state);
        if (drawn.isEmpty()) return {};
        const QString cacheKey = QStringLiteral("vantrel:%1:%2x%3:%4")
                                     .arg(m_path)
                                     .arg(drawn.width())
                                     .arg(drawn.height())
                                     .arg(mode);
        QPixmap result;
        if (QPixmapCache::find(cacheKey, &result)) return result;
        result = render(drawn);
        // Disabled and selected looks are the style's, as for any other icon.
        if (mode != QIcon::Normal) {
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
    // Shared by the copies Qt makes of an icon: read once for all of them.
    std::shared_ptr<QSvgRenderer> m_picture;
};

}  // namespace

QIcon namedImage(const QString& name) {
    return QIcon(new NamedImageEngine(QStringLiteral(":/images/%1.svg").arg(name)));
}

}  // namespace vantrel
