// The drawing controls of the page forms, and what the printing and export
// walks need to know of every control: its kind ("Label", "Line", "Shape",
// "Image", "Frame", "Kundali"), and where it stands in twips. A page form
// lays its controls out in twips (1440 to the inch); on screen a twip is a
// fifteenth of a pixel, and the twips themselves are kept on the control so
// that paper and PDF get them exactly.
#pragma once

#include <QColor>
#include <QLabel>
#include <QPixmap>
#include <QRect>
#include <QWidget>

namespace ranvel {

// Twips in a pixel of the screen.
inline constexpr int kTwipsPerPixel = 15;

// A colour as the settings keep it: a whole number with red in the low
// byte, then green, then blue.
QColor ColorFromSetting(long value);
long ColorToSetting(const QColor& colour);
// The same from a setting's text; text that is not a number gives the
// default.
QColor ColorFromText(const std::string& text, long deflt);

// The kind of a control as the walks know it; "" for any other widget.
QString TypeName(const QWidget* control);

// Places a control in its parent, in twips, and keeps the twips on it.
void SetTwips(QWidget* control, int left, int top, int width, int height);
// Where a control stands in its parent, in twips: what SetTwips gave it, or
// its pixel rectangle turned into twips.
QRect TwipsOf(const QWidget* control);

// A label placed in twips. Alignment as the page forms give it: 0 left,
// 1 right, 2 centre.
QLabel* TwipLabel(QWidget* parent, const QString& name, const QString& caption, int left, int top, int width,
                  int height, int alignment = 0);
// The alignment of a label as 0, 1 or 2.
int LabelAlignment(const QLabel* label);

// A straight line from X1, Y1 to X2, Y2 in its container's units, drawn in
// BorderColor at BorderWidth. It lies over its container and takes no
// pointer events: those go to what lies below.
class LineControl : public QWidget {
    Q_OBJECT
public:
    explicit LineControl(QWidget* parent = nullptr);
    // The line's ends in the container's units, and the size of those
    // units in pixels.
    void SetEnds(double x1, double y1, double x2, double y2);
    void SetUnit(double xPixels, double yPixels);
    double X1() const { return x1_; }
    double Y1() const { return y1_; }
    double X2() const { return x2_; }
    double Y2() const { return y2_; }
    QColor BorderColor() const { return color_; }
    void BorderColor(const QColor& c);
    int BorderWidth() const { return width_; }
    void BorderWidth(int w);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    void Fit();
    double x1_ = 0, y1_ = 0, x2_ = 0, y2_ = 0;
    double ux_ = 1, uy_ = 1;
    QColor color_ = Qt::black;
    int width_ = 1;
};

// A line placed on a form by its ends in twips.
LineControl* TwipLine(QWidget* parent, const QString& name, int x1, int y1, int x2, int y2);

// A rectangle (Shape 0) or a circle (Shape 3) with a border and, when its
// BackStyle is opaque, a fill.
class ShapeControl : public QWidget {
    Q_OBJECT
public:
    enum Kind { Rectangle = 0, Square = 1, Oval = 2, Circle = 3 };
    explicit ShapeControl(QWidget* parent = nullptr);
    int Shape() const { return shape_; }
    void Shape(int s);
    QColor BorderColor() const { return border_; }
    void BorderColor(const QColor& c);
    int BorderWidth() const { return borderWidth_; }
    void BorderWidth(int w);
    QColor FillColor() const { return fill_; }
    void FillColor(const QColor& c);
    bool Filled() const { return filled_; }
    void Filled(bool on);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    int shape_ = Rectangle;
    QColor border_ = Qt::black;
    int borderWidth_ = 1;
    QColor fill_ = Qt::white;
    bool filled_ = false;
};

// A picture stretched over the control.
class ImageControl : public QWidget {
    Q_OBJECT
public:
    explicit ImageControl(QWidget* parent = nullptr);
    const QPixmap& Picture() const { return picture_; }
    void Picture(const QPixmap& p);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    QPixmap picture_;
};

}  // namespace ranvel
