// The hicolor tree the build draws: every size a square of its own side on
// a transparent ground, the emblem filling it, and the scalable icon the
// program's own emblem unchanged.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QString>
#include <QStringList>

namespace {

const QString kDir = QStringLiteral(RANVEL_HICOLOR_DIR);
const QString kId = QStringLiteral(RANVEL_ID);

QByteArray ReadAll(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// The smallest rectangle holding every pixel that is not fully transparent.
QRect Inked(const QImage& image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0) box |= QRect(x, y, 1, 1);
    return box;
}

TEST(HicolorIcons, EachSizeIsTheEmblemOnATransparentSquareOfThatSide)
{
    const QStringList sizes = QStringLiteral(RANVEL_ICON_SIZES).split(',');
    ASSERT_GE(sizes.size(), 9);
    for (const QString& size : sizes) {
        const int n = size.toInt();
        SCOPED_TRACE(n);
        const QString path = QStringLiteral("%1/%2x%2/apps/%3.png").arg(kDir).arg(n).arg(kId);
        QImage image(path, "PNG");
        ASSERT_FALSE(image.isNull()) << path.toStdString();
        EXPECT_EQ(image.size(), QSize(n, n));
        ASSERT_TRUE(image.hasAlphaChannel());
        image = image.convertToFormat(QImage::Format_ARGB32);
        for (const QPoint corner : {QPoint(0, 0), QPoint(n - 1, 0), QPoint(0, n - 1), QPoint(n - 1, n - 1)})
            EXPECT_EQ(qAlpha(image.pixel(corner)), 0) << "corner " << corner.x() << "," << corner.y();
        // The lotus's heart is solid at every size.
        EXPECT_EQ(qAlpha(image.pixel(n / 2, n * 3 / 4)), 255);
        // Drawn to the square's size, not at the picture's own 32 pixels.
        const QRect inked = Inked(image);
        EXPECT_GE(inked.width(), n * 0.85);
        EXPECT_GE(inked.height(), n * 0.85);
    }
}

TEST(HicolorIcons, ScalableIconIsTheProgramsEmblem)
{
    const QByteArray emblem = ReadAll(QStringLiteral(RANVEL_EMBLEM));
    ASSERT_FALSE(emblem.isEmpty());
    EXPECT_EQ(ReadAll(QStringLiteral("%1/scalable/apps/%2.svg").arg(kDir, kId)), emblem);
}

}  // namespace
