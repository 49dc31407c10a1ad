// ranvel-icons: draws the program's emblem into the PNG sizes of the
// desktop's hicolor icon theme.
//
//   ranvel-icons --svg FILE --out DIR --name NAME --sizes 16,22,...
//
// writes DIR/<N>x<N>/apps/NAME.png for every size N: the picture scaled to
// fill the square (centred, its proportions kept when it is not square) on
// a transparent ground. Each file is written beside its target and renamed
// over it, so an interrupted run leaves no half-written picture behind.
//
// No application object is made: painting shapes onto an image needs no
// display, and the emblem holds no text that would need the font system.
#include <QBuffer>
#include <QByteArray>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QSaveFile>
#include <QString>
#include <QStringList>
#include <QSvgRenderer>

#include <cstdio>
#include <vector>

namespace {

struct Options {
    QString svg;
    QString out;
    QString name;
    std::vector<int> sizes;
};

void Usage()
{
    std::fputs("usage: ranvel-icons --svg FILE --out DIR --name NAME --sizes N[,N...]\n", stderr);
}

bool Parse(int argc, char** argv, Options& o)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        const QString key = QString::fromLocal8Bit(argv[i]);
        const QString value = QString::fromLocal8Bit(argv[i + 1]);
        if (key == "--svg") {
            o.svg = value;
        } else if (key == "--out") {
            o.out = value;
        } else if (key == "--name") {
            o.name = value;
        } else if (key == "--sizes") {
            for (const QString& part : value.split(',', Qt::SkipEmptyParts)) {
                bool ok = false;
                const int n = part.trimmed().toInt(&ok);
                if (!ok || n < 1 || n > 4096) {
                    std::fprintf(stderr, "ranvel-icons: '%s' is not a size in pixels\n", qPrintable(part));
                    return false;
                }
                o.sizes.push_back(n);
            }
        } else {
            std::fprintf(stderr, "ranvel-icons: unknown option '%s'\n", qPrintable(key));
            return false;
        }
    }
    if (argc % 2 == 0) {
        std::fprintf(stderr, "ranvel-icons: option '%s' needs a value\n", argv[argc - 1]);
        return false;
    }
    return !o.svg.isEmpty() && !o.out.isEmpty() && !o.name.isEmpty() && !o.sizes.empty();
}

// The square of side n that the picture fills, its proportions kept.
QRectF Frame(const QRectF& box, int n)
{
    if (box.width() <= 0 || box.height() <= 0) return QRectF(0, 0, n, n);
    const double scale = n / qMax(box.width(), box.height());
    const double w = box.width() * scale;
    const double h = box.height() * scale;
    return QRectF((n - w) / 2, (n - h) / 2, w, h);
}

QByteArray Render(QSvgRenderer& svg, int n)
{
    QImage image(n, n, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        svg.render(&painter, Frame(svg.viewBoxF(), n));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.convertToFormat(QImage::Format_ARGB32).save(&buffer, "PNG")) return {};
    return bytes;
}

bool Write(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

}  // namespace

int main(int argc, char** argv)
{
    Options o;
    if (!Parse(argc, argv, o)) {
        Usage();
        return 2;
    }
    QSvgRenderer svg(o.svg);
    if (!svg.isValid()) {
        std::fprintf(stderr, "ranvel-icons: %s is not a picture that can be drawn\n", qPrintable(o.svg));
        return 1;
    }
    for (const int n : o.sizes) {
        const QString dir = QStringLiteral("%1/%2x%2/apps").arg(o.out).arg(n);
        const QString path = dir + '/' + o.name + ".png";
        const QByteArray png = Render(svg, n);
        if (png.isEmpty() || !QDir().mkpath(dir) || !Write(path, png)) {
            std::fprintf(stderr, "ranvel-icons: cannot write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
