// The walk that printing and export share: the controls of a page form in
// their order, each with its kind and its place in twips on the form, and
// the elements of a chart control with their places in twips on it. What
// goes to paper or PDF is thus what stands on the screen.
#pragma once

#include <QRect>
#include <QString>
#include <vector>

class QWidget;

namespace ranvel {

class Kundali;

struct WalkItem {
    QWidget* control = nullptr;
    QString type;  // "Label", "Line", "Shape", "Image", "Frame", "Kundali", ...
    // Left, top, width and height in twips; a control in a frame has the
    // frame's left and top added.
    QRect twips;
    // A line's ends, likewise in twips (a line has no rectangle of its own).
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

// The form's controls, frames and what they hold in order. With
// visibleOnly, a control whose own Visible is false is left out (a control
// in a hidden frame still counts as visible, as its own flag says).
std::vector<WalkItem> FormControls(QWidget* form, bool visibleOnly);

// The chart's elements in the control's order, their places in twips on
// the control, for a control of the given size in twips.
std::vector<WalkItem> ChartElements(const Kundali& chart, QSize controlTwips, bool visibleOnly);

}  // namespace ranvel
