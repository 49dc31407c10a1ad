#include "ranvel/output/controls.h"

#include <QGroupBox>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "ranvel/platform/vbmath.h"

namespace ranvel {

QColor ColorFromSetting(long value)
{
    return QColor(static_cast<int>(value & 0xFF), static_cast<int>((value >> 8) & 0xFF),
                  static_cast<int>((value >> 16) & 0xFF));
}

long ColorToSetting(const QColor& colour)
{
    return static_cast<long>(colour.red()) | static_cast<long>(colour.green()) << 8 |
           static_cast<long>(colour.blue()) << 16;
}

QColor ColorFromText(const std::string& text, long deflt)
{
    if (!vb::IsNumeric(text)) return ColorFromSetting(deflt);
    return ColorFromSetting(static_cast<long>(vb::ParseNumber(text)));
}

QString TypeName(const QWidget* control)
{
    if (!control) return {};
    const QVariant kind = control->property("TypeName");
    if (kind.isValid()) return kind.toString();
    if (qobject_cast<const QLabel*>(control)) return "Label";
    if (qobject_cast<const LineControl*>(control)) return "Line";
    if (qobject_cast<const ShapeControl*>(control)) return "Shape";
    if (qobject_cast<const ImageControl*>(control)) return "Image";
    if (qobject_cast<const QGroupBox*>(control)) return "Frame";
    return {};
}

void SetTwips(QWidget* control, int left, int top, int width, int height)
{
    control->setProperty("twips", QRect(left, top, width, height));
    auto px = [](int t) { return static_cast<int>(std::lround(t / static_cast<double>(kTwipsPerPixel))); };
    control->setGeometry(px(left), px(top), px(width), px(height));
}

QRect TwipsOf(const QWidget* control)
{
    const QVariant kept = control->property("twips");
    if (kept.isValid()) return kept.toRect();
    const QRect g = control->geometry();
    return {g.x() * kTwipsPerPixel, g.y() * kTwipsPerPixel, g.width() * kTwipsPerPixel, g.height() * kTwipsPerPixel};
}

QLabel* TwipLabel(QWidget* parent, const QString& name, const QString& caption, int left, int top, int width,
                  int height, int alignment)
{
    auto* l = new QLabel(caption, parent);
    l->setObjectName(name);
    l->setTextFormat(Qt::PlainText);
    l->setWordWrap(true);
    l->setAlignment((alignment == 2 ? Qt::AlignHCenter : alignment == 1 ? Qt::AlignRight : Qt::AlignLeft) |
                    Qt::AlignTop);
    SetTwips(l, left, top, width, height);
    return l;
}

int LabelAlignment(const QLabel* label)
{
    const Qt::Alignment a = label->alignment();
    if (a & Qt::AlignHCenter) return 2;
    if (a & Qt::AlignRight) return 1;
    return 0;
}

// ---- Line ----

LineControl::LineControl(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

void LineControl::SetEnds(double x1, double y1, double x2, double y2)
{
    x1_ = x1, y1_ = y1, x2_ = x2, y2_ = y2;
    Fit();
}

void LineControl::SetUnit(double xPixels, double yPixels)
{
    ux_ = xPixels, uy_ = yPixels;
    Fit();
}

void LineControl::BorderColor(const QColor& c)
{
    color_ = c;
    update();
}

void LineControl::BorderWidth(int w)
{
    width_ = w;
    Fit();
}

// The widget covers the line's bounding box, widened by the pen.
void LineControl::Fit()
{
    const double pad = width_ / 2.0 + 1;
    const double left = std::min(x1_, x2_) * ux_ - pad, right = std::max(x1_, x2_) * ux_ + pad;
    const double top = std::min(y1_, y2_) * uy_ - pad, bottom = std::max(y1_, y2_) * uy_ + pad;
    setGeometry(static_cast<int>(std::floor(left)), static_cast<int>(std::floor(top)),
                static_cast<int>(std::ceil(right - std::floor(left))), static_cast<int>(std::ceil(bottom - std::floor(top))));
    update();
}

void LineControl::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(color_, std::max(1, width_), Qt::SolidLine, Qt::SquareCap));
    const QPointF origin = geometry().topLeft();
    p.drawLine(QPointF(x1_ * ux_, y1_ * uy_) - origin, QPointF(x2_ * ux_, y2_ * uy_) - origin);
}

// ---- Shape ----

ShapeControl::ShapeControl(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

void ShapeControl::Shape(int s)
{
    shape_ = s;
    update();
}

void ShapeControl::BorderColor(const QColor& c)
{
    border_ = c;
    update();
}

void ShapeControl::BorderWidth(int w)
{
    borderWidth_ = w;
    update();
}

void ShapeControl::FillColor(const QColor& c)
{
    fill_ = c;
    update();
}

void ShapeControl::Filled(bool on)
{
    filled_ = on;
    update();
}

void ShapeControl::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const double w = std::max(1, borderWidth_);
    const QRectF r = QRectF(rect()).adjusted(w / 2, w / 2, -w / 2, -w / 2);
    p.setPen(QPen(border_, w));
    p.setBrush(filled_ ? QBrush(fill_) : Qt::NoBrush);
    if (shape_ == Circle || shape_ == Oval) {
        QRectF c = r;
        if (shape_ == Circle) {
            const double d = std::min(r.width(), r.height());
            c = QRectF(r.center().x() - d / 2, r.center().y() - d / 2, d, d);
        }
        p.drawEllipse(c);
    } else {
        p.drawRect(r);
    }
}

// ---- Image ----

ImageControl::ImageControl(QWidget* parent) : QWidget(parent) {}

void ImageControl::Picture(const QPixmap& p)
{
    picture_ = p;
    update();
}

void ImageControl::paintEvent(QPaintEvent*)
{
    if (picture_.isNull()) return;
    QPainter p(this);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawPixmap(rect(), picture_);
}

LineControl* TwipLine(QWidget* parent, const QString& name, int x1, int y1, int x2, int y2)
{
    auto* line = new LineControl(parent);
    line->setObjectName(name);
    line->SetUnit(1.0 / kTwipsPerPixel, 1.0 / kTwipsPerPixel);
    line->SetEnds(x1, y1, x2, y2);
    return line;
}

}  // namespace ranvel
