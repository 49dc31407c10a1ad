#include "ranvel/output/Kundali.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

struct Box {
    double left, top, width, height;
};
struct Segment {
    double x1, y1, x2, y2;
};

// The three shapes in the 1000 by 1000 space, by style: North, East, South.
const Segment kLines[3][8] = {
    {{500, 0, 0, 500}, {500, 0, 1000, 500}, {0, 500, 500, 1000}, {500, 1000, 1000, 500}, {0, 0, 1000, 1000},
     {1000, 0, 0, 1000}, {0, 0, 0, 0}, {0, 0, 0, 0}},
    {{375, 0, 375, 1000}, {625, 0, 625, 1000}, {0, 375, 1000, 375}, {0, 625, 1000, 625}, {0, 0, 375, 375},
     {1000, 1000, 625, 625}, {625, 375, 1000, 0}, {0, 1000, 375, 625}},
    {{250, 0, 250, 1000}, {750, 0, 750, 1000}, {0, 250, 1000, 250}, {0, 750, 1000, 750}, {500, 0, 500, 250},
     {500, 750, 500, 1000}, {0, 500, 250, 500}, {750, 500, 1000, 500}},
};

const Box kPlanetBoxes[3][12] = {
    {{400, 100, 200, 300}, {150, 20, 210, 120}, {15, 160, 150, 180}, {150, 350, 200, 300}, {15, 660, 150, 180},
     {160, 840, 180, 145}, {400, 600, 200, 300}, {660, 830, 180, 150}, {840, 660, 150, 180}, {650, 350, 200, 300},
     {840, 160, 150, 180}, {640, 20, 220, 120}},
    {{385, 40, 225, 260}, {210, 20, 150, 190}, {10, 160, 150, 210}, {10, 390, 250, 200}, {10, 640, 160, 185},
     {210, 800, 150, 180}, {390, 690, 220, 270}, {640, 800, 150, 180}, {830, 640, 150, 190}, {690, 390, 290, 200},
     {840, 165, 150, 200}, {640, 10, 150, 200}},
    {{260, 70, 220, 170}, {510, 70, 220, 170}, {760, 70, 220, 170}, {760, 320, 220, 170}, {760, 570, 220, 170},
     {760, 820, 220, 170}, {510, 820, 220, 170}, {260, 820, 220, 170}, {10, 820, 220, 170}, {10, 570, 220, 170},
     {10, 320, 220, 170}, {10, 70, 220, 170}},
};

// Left and top of the number labels; a negative left is a hidden one.
const QPointF kNumbers[3][12] = {
    {{490, 40}, {70, 10}, {15, 60}, {50, 480}, {15, 880}, {70, 920}, {490, 910}, {890, 920}, {940, 880}, {920, 480},
     {940, 70}, {900, 10}},
    {{400, 315}, {-1, 0}, {-1, 0}, {330, 400}, {-1, 0}, {-1, 0}, {400, 630}, {-1, 0}, {-1, 0}, {635, 400}, {-1, 0},
     {-1, 0}},
    {{260, 10}, {510, 10}, {760, 10}, {760, 260}, {760, 510}, {760, 760}, {510, 760}, {260, 760}, {15, 760},
     {15, 510}, {15, 260}, {15, 10}},
};

// The size of a number label in the 1000 space.
constexpr double kNumberWidth = 60, kNumberHeight = 50;

// The boxes that the North chart draws by hand.
const Box kHandDrawn[3] = {{385, 140, 250, 300}, {150, 20, 210, 120}, {15, 160, 150, 180}};

void Colour(QWidget* w, QPalette::ColorRole role, const QColor& c)
{
    QPalette p = w->palette();
    p.setColor(role, c);
    w->setPalette(p);
}

}  // namespace

Kundali::Kundali(QWidget* parent) : QWidget(parent)
{
    setProperty("TypeName", "Kundali");
    setAttribute(Qt::WA_OpaquePaintEvent);
    backColor_ = palette().color(QPalette::Button);
    foreColor_ = palette().color(QPalette::ButtonText);
    houseFont_ = font();
    planetFont_ = font();

    for (int i = 0; i < 12; ++i) {
        auto* l = new QLabel(this);
        l->setObjectName(QString("lblPlanet(%1)").arg(i));
        l->setWordWrap(true);
        l->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        l->setTextFormat(Qt::PlainText);
        planets_[static_cast<std::size_t>(i)] = l;
        elements_.push_back(l);
    }
    squMain_ = new ShapeControl(this);
    squMain_->setObjectName("squMain");
    elements_.push_back(squMain_);
    for (int i = 0; i < 12; ++i) {
        auto* l = new QLabel(this);
        l->setObjectName(QString("lblHouseNo(%1)").arg(i));
        l->setAlignment(Qt::AlignCenter);
        l->setTextFormat(Qt::PlainText);
        numbers_[static_cast<std::size_t>(i)] = l;
        elements_.push_back(l);
    }
    imgCenter_ = new ImageControl(this);
    imgCenter_->setObjectName("imgCenter");
    elements_.push_back(imgCenter_);
    for (int n = 8; n >= 1; --n) {
        auto* line = new LineControl(this);
        line->setObjectName(QString("Line%1").arg(n));
        lines_[static_cast<std::size_t>(n - 1)] = line;
        elements_.push_back(line);
    }
    // On screen the lines and the square lie under the labels, so that the
    // East chart's numbers, which sit on lines, can hide them.
    for (LineControl* line : lines_) line->lower();
    squMain_->lower();
    for (QWidget* e : elements_) e->setAttribute(Qt::WA_TransparentForMouseEvents);

    BackColor(backColor_);
    LineColor(lineColor_);
    BorderColor(borderColor_);
    TextColor(textColor_);
    NumberColor(numberColor_);
    resize(300, 300);
    LayoutPass();
}

// ---- properties ----

void Kundali::BackColor(const QColor& c)
{
    backColor_ = c;
    Colour(this, QPalette::Window, c);
    for (QLabel* l : planets_) Colour(l, QPalette::Window, c);
    for (QLabel* l : numbers_) Colour(l, QPalette::Window, c);
    update();
}

void Kundali::ForeColor(const QColor& c)
{
    foreColor_ = c;
    LayoutPass();
}

void Kundali::HouseFont(const QFont& f)
{
    houseFont_ = f;
    for (QLabel* l : numbers_) l->setFont(f);
    LayoutPass();
}

void Kundali::PlanetFont(const QFont& f)
{
    planetFont_ = f;
    planetFontSet_ = true;
    for (QLabel* l : planets_) l->setFont(f);
    LayoutPass();
}

void Kundali::LineColor(const QColor& c)
{
    lineColor_ = c;
    for (LineControl* line : lines_) line->BorderColor(c);
    LayoutPass();
}

void Kundali::HouseNumber(std::int16_t n)
{
    houseNumber_ = n;
    LayoutPass();
}

void Kundali::LineWidth(std::int16_t w)
{
    lineWidth_ = w;
    // The setter reaches six of the lines; the layout pass all eight.
    for (int n = 1; n <= 6; ++n) Line(n)->BorderWidth(w);
    LayoutPass();
}

void Kundali::BorderWidth(std::int16_t w)
{
    borderWidth_ = w == 0 ? std::int16_t(1) : w;
    squMain_->BorderWidth(borderWidth_);
}

void Kundali::CentrePic(const QPixmap& p) { imgCenter_->Picture(p); }

void Kundali::TextColor(const QColor& c)
{
    textColor_ = c;
    for (QLabel* l : planets_) Colour(l, QPalette::WindowText, c);
}

void Kundali::ChartStyle(int style)
{
    chartStyle_ = style;
    LayoutPass();
}

void Kundali::BorderColor(const QColor& c)
{
    borderColor_ = c;
    squMain_->BorderColor(c);
}

void Kundali::NumberColor(const QColor& c)
{
    numberColor_ = c;
    for (QLabel* l : numbers_) Colour(l, QPalette::WindowText, c);
}

// ---- the layout pass ----

void Kundali::Put(QWidget* element, const QRectF& logical)
{
    element->setProperty("logical", logical);
    const double sx = width() / 1000.0, sy = height() / 1000.0;
    if (auto* line = qobject_cast<LineControl*>(element)) {
        line->SetUnit(sx, sy);
        line->SetEnds(logical.left(), logical.top(), logical.right(), logical.bottom());
        return;
    }
    // Each edge to its nearest pixel, and none beyond the control: the
    // square's far edges lie on 1000 itself.
    const int l = static_cast<int>(std::lround(logical.left() * sx));
    const int t = static_cast<int>(std::lround(logical.top() * sy));
    const int r = std::min(width(), static_cast<int>(std::lround(logical.right() * sx)));
    const int b = std::min(height(), static_cast<int>(std::lround(logical.bottom() * sy)));
    element->setGeometry(l, t, std::max(0, r - l), std::max(0, b - t));
}

QRectF Kundali::LogicalRect(const QWidget* element) const { return element->property("logical").toRectF(); }

void Kundali::PlaceScene()
{
    const int s = chartStyle_;
    Line(7)->setVisible(s != North);
    Line(8)->setVisible(s != North);
    const double bw = borderWidth_;
    Put(squMain_, QRectF(bw + 1, bw + 1, 999 - bw, 999 - bw));
    for (int n = 1; n <= 8; ++n) {
        const Segment& g = kLines[s][n - 1];
        // A line keeps its two ends as the corners of its rectangle.
        Put(Line(n), QRectF(QPointF(g.x1, g.y1), QPointF(g.x2, g.y2)));
    }
    Put(imgCenter_, QRectF(400, 400, 200, 200));
}

void Kundali::PlaceLabels(int style)
{
    for (int i = 0; i < 12; ++i) {
        const Box& b = kPlanetBoxes[style][i];
        Put(lblPlanet(i), QRectF(b.left, b.top, b.width, b.height));
        const QPointF at = kNumbers[style][i];
        if (at.x() >= 0) Put(lblHouseNo(i), QRectF(at.x(), at.y(), kNumberWidth, kNumberHeight));
    }
}

void Kundali::LayoutPass()
{
    if (chartStyle_ >= North && chartStyle_ <= South) {
        PlaceScene();
        PlaceLabels(chartStyle_);
        for (int i = 0; i < 12; ++i) {
            QLabel* n = lblHouseNo(i);
            switch (chartStyle_) {
            case North:
                n->setText(QString::number(Expunger12(houseNumber_ + i)));
                n->setAutoFillBackground(false);
                if (!invisHouseNum_) n->setVisible(true);
                break;
            case East:
                if (i % 3 == 0) {
                    n->setText(QString::number(i + 1));
                    n->setAutoFillBackground(true);
                } else {
                    n->setVisible(false);
                }
                break;
            case South:
                // The numbers are set, but none is shown again here: what an
                // earlier style hid stays hidden.
                n->setText(QString::number(i + 1));
                break;
            }
        }
    }
    if (borderWidth_ == 0) borderWidth_ = 1;
    squMain_->BorderWidth(borderWidth_);
    if (lineWidth_ == 0) lineWidth_ = 1;
    for (LineControl* line : lines_) line->BorderWidth(lineWidth_);
    if (planetFontSet_) {
        for (int i = 0; i < 12; ++i) {
            Colour(lblHouseNo(i), QPalette::Window, backColor_);
            lblPlanet(i)->setFont(planetFont_);
            lblHouseNo(i)->setFont(houseFont_);
        }
    }
    update();
}

// ---- operations ----

void Kundali::Clear()
{
    for (QLabel* l : planets_) l->clear();
}

int Kundali::Expunger12(int Value)
{
    if (Value > 12) {
        do {
            Value -= 12;
        } while (!(Value < 12));
    }
    if (Value < 0) {
        do {
            Value += 12;
        } while (!(Value > 0));
    }
    return Value;
}

void Kundali::PlanetPlace(std::int16_t House, const QString& Text)
{
    const int box = chartStyle_ == North ? Expunger12(House - houseNumber_) : House - 1;
    if (box < 0 || box > 11) throw vb::RuntimeError("Subscript out of range");
    QLabel* l = lblPlanet(box);
    l->setText(Q(vb::Trim(S(l->text() + Text))) + " ");
}

QString Kundali::HouseText(int House) const
{
    if (House < 1 || House > 12) return {};
    return lblPlanet(House - 1)->text();
}

int Kundali::LagnaNo() const { return vb::CInt(vb::Val(S(lblHouseNo(0)->text()))); }

void Kundali::MakeHouseInvisible()
{
    invisHouseNum_ = true;
    for (QLabel* l : numbers_) l->setVisible(false);
}

void Kundali::Refresh() { update(); }

void Kundali::DrawKundli()
{
    switch (chartStyle_) {
    case East:
    case South:
        PlaceLabels(chartStyle_);
        break;
    case North:
        handDrawn_ = true;
        break;
    default: break;
    }
    Refresh();
}

// ---- drawing and the pointer ----

void Kundali::resizeEvent(QResizeEvent*) { LayoutPass(); }

void Kundali::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.fillRect(rect(), backColor_);
    if (!handDrawn_ || chartStyle_ != North) return;
    p.setFont(lblPlanet(0)->font());
    p.setPen(foreColor_);
    const double sx = width() / 1000.0, sy = height() / 1000.0;
    for (int i = 0; i < 3; ++i) {
        const Box& b = kHandDrawn[i];
        p.drawText(QRectF(b.left * sx, b.top * sy, b.width * sx, b.height * sy),
                   Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, lblPlanet(i)->text());
    }
}

QPointF Kundali::Logical(const QPointF& pixel) const
{
    return {pixel.x() * 1000.0 / std::max(1, width()), pixel.y() * 1000.0 / std::max(1, height())};
}

void Kundali::mousePressEvent(QMouseEvent* e) { emit MouseDown(e->button(), Logical(e->position())); }

void Kundali::mouseMoveEvent(QMouseEvent* e) { emit MouseMove(e->buttons(), Logical(e->position())); }

void Kundali::mouseReleaseEvent(QMouseEvent* e)
{
    emit MouseUp(e->button(), Logical(e->position()));
    if (rect().contains(e->position().toPoint())) emit Click();
}

}  // namespace ranvel
