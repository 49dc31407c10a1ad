#include "ranvel/app/zonehint.h"

#include <QLabel>
#include <QLineEdit>
#include <algorithm>

#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {

ZoneHint::ZoneHint(QLabel* hint, QLineEdit* zoneField, NoteSource notes, const char* name)
    : QPushButton(hint->parentWidget()), hint_(hint), field_(zoneField), source_(std::move(notes))
{
    setObjectName(name);
    setGeometry(hint->geometry());
    setFlat(true);
    setAutoDefault(false);
    setCursor(Qt::PointingHandCursor);
    setStyleSheet("QPushButton { text-align: left; padding: 0 4px; color: #8a4b00; font-weight: bold; }"
                  "QPushButton:focus { border: 1px dotted palette(text); }");
    hide();
    connect(this, &QPushButton::clicked, this, &ZoneHint::Use);
}

void ZoneHint::Refresh()
{
    try {
        notes_ = source_();
    } catch (const std::exception&) {
        notes_.clear();  // a store that can't be asked leaves the field to itself
    }
    std::stable_partition(notes_.begin(), notes_.end(), [](const ZoneNote& n) { return !n.Offset.empty(); });
    if (notes_.empty()) {
        hide();
        hint_->show();
        return;
    }
    const ZoneNote& n = notes_.front();
    QString all;
    for (const ZoneNote& each : notes_) all += (all.isEmpty() ? "" : "\n") + Q(each.Text);
    setText(Q(n.Short));
    setToolTip(all + (n.Offset.empty() ? "" : "\n\nClick to put " + Q(n.Offset) + " in the field."));
    setAccessibleName(Q(n.Short));
    setAccessibleDescription(all);
    hint_->hide();
    show();
}

void ZoneHint::Use()
{
    if (notes_.empty()) return;
    const ZoneNote& n = notes_.front();
    if (n.Offset.empty()) {
        QString all;
        for (const ZoneNote& each : notes_) all += (all.isEmpty() ? "" : "\n\n") + Q(each.Text);
        MsgBox(S(all), MsgButtons::OK, "Time Zone", MsgIcon::Information);
        return;
    }
    field_->setText(Q(n.Offset));
    Refresh();
}

}  // namespace ranvel
