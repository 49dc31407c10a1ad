#include "ranvel/app/ImageButton.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionFocusRect>

#include "ranvel/app/formkit.h"

namespace ranvel {

ImageButton::ImageButton(const QIcon& icon, const QString& caption, const QString& description, QWidget* parent)
    : QAbstractButton(parent), description_(description)
{
    setIcon(icon);
    setText(caption);
    setIconSize(QSize(32, 32));
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAccessibleName(ui::Plain(caption));
    setAccessibleDescription(description);
    setToolTip(description);
}

QSize ImageButton::sizeHint() const { return {236, 54}; }

void ImageButton::enterEvent(QEnterEvent* e)
{
    hover_ = true;
    update();
    QAbstractButton::enterEvent(e);
}

void ImageButton::leaveEvent(QEvent* e)
{
    hover_ = false;
    update();
    QAbstractButton::leaveEvent(e);
}

void ImageButton::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QPalette& pal = palette();
    const QRectF r = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    QColor fill = pal.color(QPalette::Base);
    QColor edge = pal.color(QPalette::Mid);
    if (isChecked()) {
        fill = pal.color(QPalette::Highlight).lighter(185);
        edge = pal.color(QPalette::Highlight);
    } else if (hover_ || isDown()) {
        fill = pal.color(QPalette::Highlight).lighter(205);
        edge = pal.color(QPalette::Highlight).lighter(130);
    }
    QPainterPath frame;
    frame.addRoundedRect(r, 5, 5);
    p.fillPath(frame, fill);
    p.setPen(QPen(edge, isChecked() ? 2.0 : 1.0));
    p.drawPath(frame);

    const int pad = 8;
    const QSize is = iconSize();
    const QRect iconRect(pad, (height() - is.height()) / 2, is.width(), is.height());
    icon().paint(&p, iconRect, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);

    const int tx = iconRect.right() + pad;
    const QRect textRect(tx, 5, width() - tx - pad, height() - 10);
    QFont bold = font();
    bold.setBold(true);
    p.setFont(bold);
    p.setPen(pal.color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    const QFontMetrics fmBold(bold);
    p.drawText(QRect(textRect.left(), textRect.top(), textRect.width(), fmBold.height()), Qt::AlignLeft | Qt::AlignVCenter,
               fmBold.elidedText(text(), Qt::ElideRight, textRect.width()));
    QFont small = font();
    small.setPointSizeF(font().pointSizeF() - 1);
    p.setFont(small);
    p.setPen(pal.color(QPalette::PlaceholderText));
    p.drawText(QRect(textRect.left(), textRect.top() + fmBold.height(), textRect.width(),
                     textRect.height() - fmBold.height()),
               Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, description_);

    if (hasFocus()) {
        QStyleOptionFocusRect o;
        o.initFrom(this);
        o.rect = rect().adjusted(3, 3, -3, -3);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &o, &p, this);
    }
}

}  // namespace ranvel
