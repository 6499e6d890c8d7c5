#include "NamedImages.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QResource>
#include <QStyle>
#include <QStyleOption>
#include <cstdint>
#include <cstring>
#include <optional>

namespace vantrel {

namespace {

// A picture drawn while building by vantrel-render-pictures: its width and height as 32-bit
// numbers, then its rows of premultiplied ARGB32 pixels. Read through Qt's image readers, a PNG
// would first have every image format plug-in looked up on disk.
class ReadyDrawing {
public:
    explicit ReadyDrawing(const QString& path) : m_bytes(QResource(path).uncompressedData()) {
        std::uint32_t header[2] = {};
        if (m_bytes.size() < kHeaderBytes) return;
        std::memcpy(header, m_bytes.constData(), sizeof header);
        if (header[0] == 0 || header[0] > kLargestSide || header[1] == 0 ||
            header[1] > kLargestSide) {
            return;
        }
        const QSize size(static_cast<int>(header[0]), static_cast<int>(header[1]));
        if (m_bytes.size() == kHeaderBytes + qsizetype{size.width()} * size.height() * 4) {
            m_size = size;
        }
    }

    // Empty where there is no such drawing, or no whole one.
    QSize size() const { return m_size; }

    // Rows of ARGB32 pixels are never padded: the drawing's pixels are the image's bytes.
    QImage image() const {
        QImage image(m_size, QImage::Format_ARGB32_Premultiplied);
        if (image.isNull() || image.sizeInBytes() != m_bytes.size() - kHeaderBytes) return {};
        std::memcpy(image.bits(), m_bytes.constData() + kHeaderBytes,
                    static_cast<std::size_t>(image.sizeInBytes()));
        return image;
    }

private:
    static constexpr qsizetype kHeaderBytes = 2 * sizeof(std::uint32_t);
    // Far beyond any picture of ours, and small enough that the size in bytes cannot overflow.
    static constexpr std::uint32_t kLargestSide = 32767;

    QByteArray m_bytes;
    QSize m_size;
};

// One of the application's pictures. The sizes the window shows it at were drawn from its SVG while
// building (under :/drawn, named by the picture's folder and name); any other size is drawn from
// the SVG when asked for, through Qt's SVG image plug-in, which is loaded only then. Qt's own SVG
// icons would link the SVG renderer into the program and read the picture when the icon is made. A
// picture drawn at one size and mode is kept, under its name, for every icon of that name, unless
// it is one that is only handed on.
class NamedImageEngine : public QIconEngine {
public:
    enum class Drawings { Kept, HandedOn };

    NamedImageEngine(const QString& folder, const QString& name, QList<QSize> sizes,
                     Drawings drawings)
        : m_path(QStringLiteral(":/%1/%2.svg").arg(folder, name)),
          m_drawnPrefix(QStringLiteral(":/drawn/%1/%2").arg(folder, name)),
          m_sizes(std::move(sizes)),
          m_drawings(drawings) {}

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
        if (m_drawings == Drawings::Kept && QPixmapCache::find(cacheKey, &result)) return result;
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
        if (m_drawings == Drawings::Kept) QPixmapCache::insert(cacheKey, result);
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
        const QSize own = ownSize();
        if (own.isEmpty() || size.isEmpty()) return {};
        return own.scaled(size, Qt::KeepAspectRatio);
    }

    // The drawing at the picture's own size tells it.
    QSize ownSize() {
        if (!m_ownSize) m_ownSize = ReadyDrawing(m_drawnPrefix + QStringLiteral(".pixels")).size();
        return *m_ownSize;
    }

    // Where a drawing of this size would have been made while building; a square picture is drawn
    // at the sides listed for it.
    QString readyDrawingPath(const QSize& size) {
        const QSize own = ownSize();
        if (size == own) return m_drawnPrefix + QStringLiteral(".pixels");
        if (size == own * 2) return m_drawnPrefix + QStringLiteral("@2x.pixels");
        return m_drawnPrefix + QStringLiteral("-%1.pixels").arg(size.width());
    }

    QPixmap render(const QSize& size) {
        const ReadyDrawing drawing(readyDrawingPath(size));
        if (drawing.size() == size) return QPixmap::fromImage(drawing.image());
        QImageReader picture(m_path);
        picture.setScaledSize(size);
        QPixmap drawn = QPixmap::fromImageReader(&picture);
        if (!drawn.isNull()) return drawn;
        // Without Qt's SVG plug-in the picture is still there, if less sharp: a blank button could
        // be neither seen nor found.
        qWarning("Cannot draw %s at %dx%d: %s", qPrintable(m_path), size.width(), size.height(),
                 qPrintable(picture.errorString()));
        const ReadyDrawing larger(m_drawnPrefix + QStringLiteral("@2x.pixels"));
        return QPixmap::fromImage(
            larger.image().scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }

    QString m_path;
    QString m_drawnPrefix;
    QList<QSize> m_sizes;
    Drawings m_drawings;
    std::optional<QSize> m_ownSize;
};

}  // namespace

QIcon namedImage(const QString& name) {
    return QIcon(
        new NamedImageEngine(QStringLiteral("images"), name, {}, NamedImageEngine::Drawings::Kept));
}

QIcon applicationIcon() {
    QList<QSize> sizes;
    for (const int side : {16, 22, 24, 32, 48, 64, 128}) sizes.append({side, side});
    // On X11 every new top-level window, down to each menu and tool tip, hands the window manager
    // the application icon at every offered size, and the window manager keeps its own copy. Taken
    // again from the drawings each time (a fraction of a millisecond), they need not stay here too:
    // 100 KB, four times that at two device pixels to a point.
    return QIcon(new NamedImageEngine(QStringLiteral("icons"),
                                      QStringLiteral("com.glessik.Vantrel"), sizes,
                                      NamedImageEngine::Drawings::HandedOn));
}

}  // namespace vantrel
