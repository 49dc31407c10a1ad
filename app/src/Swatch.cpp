#include "ranvel/app/Swatch.h"

#include <QPainter>

#include "ranvel/output/controls.h"
#include "ranvel/platform/gui/dialogs.h"

namespace ranvel {

Swatch::Swatch(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    SetColor(colour_);
    connect(this, &QAbstractButton::clicked, this, &Swatch::Pick);
}

void Swatch::SetColor(const QColor& c)
{
    colour_ = c;
    // The colour in words too, for a reader who cannot see it.
    setAccessibleDescription(c.name(QColor::HexRgb));
    update();
}

long Swatch::Setting() const { return ColorToSetting(colour_); }
void Swatch::SetSetting(long value) { SetColor(ColorFromSetting(value)); }

QSize Swatch::sizeHint() const { return {48, 20}; }

void Swatch::Pick()
{
    std::optional<QColor> chosen;
    if (!ui::RunCommand([&] { chosen = Dialogs().Color(window(), colour_); }) || !chosen) return;
    SetColor(*chosen);
    emit Chosen(*chosen);
}

void Swatch::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const QRect outer = rect().adjusted(0, 0, -1, -1);
    // A dark edge and a light ring keep white and black swatches apart from
    // the dialog's own grey.
    p.setPen(palette().color(hasFocus() || underMouse() ? QPalette::Highlight : QPalette::Dark));
    p.setBrush(palette().color(QPalette::Base));
    p.drawRect(outer);
    if (hasFocus()) p.drawRect(outer.adjusted(1, 1, -1, -1));
    p.fillRect(rect().adjusted(3, 3, -3, -3), colour_);
    p.setPen(QColor(0, 0, 0, 60));
    p.setBrush(Qt::NoBrush);
    p.drawRect(rect().adjusted(3, 3, -4, -4));
}

namespace ui {

Swatch* ColorSwatch(QWidget* parent, const char* name, Box at)
{
    auto* s = new Swatch(parent);
    s->setObjectName(QString::fromUtf8(name));
    s->setGeometry(at.x, at.y, at.w, at.h);
    return s;
}

}  // namespace ui

}  // namespace ranvel
