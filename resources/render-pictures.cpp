// Draws one of the application's SVG pictures into PNGs while building, at the sizes the window
// shows it: NAME.png at the picture's own size, NAME@2x.png at twice that, NAME-SIDE.png for each
// SIDE given. The window then reads ready pixels at start-up instead of loading an SVG renderer.
//
//   vantrel-render-pictures PICTURE.svg OUTPUT_FOLDER [SIDE...]

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

namespace {

bool drawInto(QSvgRenderer& picture, QSize size, const QString& path) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.render(&painter);
    painter.end();
    if (image.save(path, "PNG")) return true;
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
    bool written = drawInto(picture, own, folder.filePath(name + QStringLiteral(".png"))) &&
                   drawInto(picture, own * 2, folder.filePath(name + QStringLiteral("@2x.png")));
    for (int i = 3; written && i < argc; ++i) {
        const int side = QString::fromLocal8Bit(argv[i]).toInt();
        if (side <= 0) {
            std::fprintf(stderr, "not a size: %s\n", argv[i]);
            return 2;
        }
        written = drawInto(picture, own.scaled(side, side, Qt::KeepAspectRatio),
                           folder.filePath(QStringLiteral("%1-%2.png").arg(name).arg(side)));
    }
    return written ? 0 : 1;
}
