// A colour swatch: shows one colour and, when clicked (or pressed with the
// space bar), opens the colour dialog at that colour. A colour the user
// picks is shown at once and announced; nothing is stored by the swatch.
#pragma once

#include <QAbstractButton>
#include <QColor>

#include "ranvel/app/formkit.h"

namespace ranvel {

class Swatch : public QAbstractButton {
    Q_OBJECT
public:
    explicit Swatch(QWidget* parent = nullptr);

    QColor Color() const { return colour_; }
    // Shows a colour without announcing it.
    void SetColor(const QColor& c);
    // The colour as the settings keep it.
    long Setting() const;
    void SetSetting(long value);

    QSize sizeHint() const override;

signals:
    // The user picked a colour in the dialog.
    void Chosen(const QColor& colour);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    void Pick();
    QColor colour_ = Qt::black;
};

namespace ui {
// A swatch at a fixed place, carrying its name; spoken as the words of the
// label that names it (see Names).
Swatch* ColorSwatch(QWidget* parent, const char* name, Box at);
}  // namespace ui

}  // namespace ranvel
