// Draws one of the application's SVG pictures while building, at the sizes the window shows it:
// NAME.pixels at the picture's own size, NAME@2x.pixels at twice that, NAME-SIDE.pixels for each
// SIDE given. Each file is the width and the height as 32-bit numbers, then the rows of
// premultiplied ARGB32 pixels, all in this machine's byte order: the window takes them as they are,
// with neither an SVG renderer nor an image decoder and its plug-in search.
//
//   vantrel-render-pictures PICTURE.svg OUTPUT_FOLDER [SIDE...]

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdint>
#include <cstdio>

namespace {

bool drawInto(QSvgRenderer& picture, QSize size, const QString& path) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.render(&painter);
    painter.end();
    const std::uint32_t header[] = {static_cast<std::uint32_t>(size.width()),
                                    static_cast<std::uint32_t>(size.height())};
    const auto rowBytes = static_cast<qint64>(size.width()) * 4;
    QFile file(path);
    bool written =
        file.open(QIODevice::WriteOnly) &&
        file.write(reinterpret_cast<const char*>(header), sizeof header) == sizeof header;
    for (int y = 0; written && y < size.height(); ++y) {
        written =
            file.write(reinterpret_cast<const char*>(image.constScanLine(y)), rowBytes) == rowBytes;
    }
    if (written && file.flush()) return true;
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    return false;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 3) {
        std::fprintf(stderr,
                     "usage: vantrel-render-pictures PICTURE.svg OUTPUT_FOLDER [SIDE...]\n");
        return 2;
    }
    const QString source = QString::fromLocal8Bit(argv[1]);
    QSvgRenderer picture(source);
    if (!picture.isValid() || picture.defaultSize().isEmpty()) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    const QDir folder(QString::fromLocal8Bit(argv[2]));
    const QString name = QFileInfo(source).completeBaseName();
    const QSize own = picture.defaultSize();
    bool written = drawInto(picture, own, folder.filePath(name + QStringLiteral(".pixels"))) &&
                   drawInto(picture, own * 2, folder.filePath(name + QStringLiteral("@2x.pixels")));
    for (int i = 3; written && i < argc; ++i) {
        const int side = QString::fromLocal8Bit(argv[i]).toInt();
        if (side <= 0) {
            std::fprintf(stderr, "not a size: %s\n", argv[i]);
            return 2;
        }
        written = drawInto(picture, own.scaled(side, side, Qt::KeepAspectRatio),
                           folder.filePath(QStringLiteral("%1-%2.pixels").arg(name).arg(side)));
    }
    return written ? 0 : 1;
}
