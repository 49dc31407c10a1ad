#include "ranvel/app/ChartSketch.h"

#include <QPainter>

namespace ranvel {

namespace {
QString StyleName(int style)
{
    const char* names[] = {"North Indian", "East Indian", "South Indian"};
    return style >= 0 && style <= 2 ? names[style] : "";
}
}  // namespace

ChartSketch::ChartSketch(QWidget* parent) : QWidget(parent)
{
    setAccessibleName("Sample chart");
    setAccessibleDescription(StyleName(style_));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ChartSketch::SetStyle(int style)
{
    if (style == style_) return;
    style_ = style;
    setAccessibleDescription(StyleName(style));
    update();
}

void ChartSketch::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.fillRect(rect(), palette().color(QPalette::Base));
    p.setRenderHint(QPainter::Antialiasing);

    const int side = qMin(width(), height()) - 24;
    const QRectF sq((width() - side) / 2.0, (height() - side) / 2.0, side, side);
    const double x0 = sq.left(), y0 = sq.top(), s = sq.width();
    auto at = [&](double fx, double fy) { return QPointF(x0 + fx * s, y0 + fy * s); };
    auto line = [&](double ax, double ay, double bx, double by) { p.drawLine(at(ax, ay), at(bx, by)); };

    p.setPen(QPen(palette().color(QPalette::Text), 1.6));
    p.drawRect(sq);
    switch (style_) {
    case 0:  // the two diagonals and the diamond on the sides' middles
        line(0, 0, 1, 1);
        line(1, 0, 0, 1);
        line(0.5, 0, 1, 0.5);
        line(1, 0.5, 0.5, 1);
        line(0.5, 1, 0, 0.5);
        line(0, 0.5, 0.5, 0);
        break;
    case 1:  // nine squares, the corner ones cut from the outer corner inwards
        for (double f : {1.0 / 3, 2.0 / 3}) {
            line(f, 0, f, 1);
            line(0, f, 1, f);
        }
        line(0, 0, 1.0 / 3, 1.0 / 3);
        line(1, 0, 2.0 / 3, 1.0 / 3);
        line(0, 1, 1.0 / 3, 2.0 / 3);
        line(1, 1, 2.0 / 3, 2.0 / 3);
        break;
    case 2:  // sixteen squares, the middle four left as one
        for (double f : {0.25, 0.75}) {
            line(f, 0, f, 1);
            line(0, f, 1, f);
        }
        line(0.5, 0, 0.5, 0.25);
        line(0.5, 0.75, 0.5, 1);
        line(0, 0.5, 0.25, 0.5);
        line(0.75, 0.5, 1, 0.5);
        break;
    default:
        break;
    }
}

}  // namespace ranvel
