// The outline of a chart in one of the three regional shapes, without
// planets: North Indian (the diamond), East Indian (the square of nine with
// split corners) and South Indian (the square of sixteen with an empty
// middle). Shows the user what a chart style choice looks like.
#pragma once

#include <QWidget>

namespace ranvel {

class ChartSketch : public QWidget {
    Q_OBJECT
public:
    explicit ChartSketch(QWidget* parent = nullptr);

    // 0 North, 1 East, 2 South; anything else draws the frame alone.
    int Style() const { return style_; }
    void SetStyle(int style);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    int style_ = 2;
};

}  // namespace ranvel
