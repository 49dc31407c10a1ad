#include "ranvel/output/walk.h"

#include <QWidget>

#include "ranvel/output/Kundali.h"
#include "ranvel/output/controls.h"

namespace ranvel {

namespace {

void Collect(QWidget* parent, const QPoint& offset, bool visibleOnly, std::vector<WalkItem>& out)
{
    for (QObject* child : parent->children()) {
        auto* w = qobject_cast<QWidget*>(child);
        if (!w) continue;
        const QString type = TypeName(w);
        if (type.isEmpty()) continue;
        if (visibleOnly && w->isHidden()) continue;
        WalkItem item;
        item.control = w;
        item.type = type;
        if (auto* line = qobject_cast<LineControl*>(w)) {
            item.x1 = line->X1() + offset.x();
            item.y1 = line->Y1() + offset.y();
            item.x2 = line->X2() + offset.x();
            item.y2 = line->Y2() + offset.y();
        }
        item.twips = TwipsOf(w).translated(offset);
        out.push_back(item);
        // A frame places what it holds: its left and top are added.
        if (type == "Frame") Collect(w, offset + TwipsOf(w).topLeft(), visibleOnly, out);
    }
}

}  // namespace

std::vector<WalkItem> FormControls(QWidget* form, bool visibleOnly)
{
    std::vector<WalkItem> out;
    Collect(form, QPoint(0, 0), visibleOnly, out);
    return out;
}

std::vector<WalkItem> ChartElements(const Kundali& chart, QSize controlTwips, bool visibleOnly)
{
    const double sx = controlTwips.width() / 1000.0, sy = controlTwips.height() / 1000.0;
    std::vector<WalkItem> out;
    for (QWidget* e : chart.Elements()) {
        if (visibleOnly && e->isHidden()) continue;
        const QRectF r = chart.LogicalRect(e);
        WalkItem item;
        item.control = e;
        item.type = TypeName(e);
        if (qobject_cast<LineControl*>(e)) {
            item.x1 = r.left() * sx;
            item.y1 = r.top() * sy;
            item.x2 = r.right() * sx;
            item.y2 = r.bottom() * sy;
        }
        item.twips = QRectF(r.left() * sx, r.top() * sy, r.width() * sx, r.height() * sy).toRect();
        out.push_back(item);
    }
    return out;
}

}  // namespace ranvel
