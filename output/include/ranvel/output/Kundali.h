// Kundali: the chart control. A retained scene of named elements (twelve
// box labels, the outer square, twelve number labels, the centre picture and
// eight lines) laid out in a logical space of 1000 by 1000 that is stretched
// over the control, in the North, East or South Indian shape. Text goes into
// the twelve boxes by sign or house. It knows nothing of astrology beyond
// twelve boxes and a rotation; printing and export walk the same elements.
#pragma once

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QWidget>
#include <array>
#include <cstdint>
#include <vector>

#include "ranvel/output/controls.h"

class QLabel;

namespace ranvel {

class Kundali : public QWidget {
    Q_OBJECT
public:
    enum Style { North = 0, East = 1, South = 2 };

    explicit Kundali(QWidget* parent = nullptr);

    // ---- properties ----
    QColor BackColor() const { return backColor_; }
    void BackColor(const QColor& c);
    QColor ForeColor() const { return foreColor_; }
    void ForeColor(const QColor& c);
    QFont HouseFont() const { return houseFont_; }
    void HouseFont(const QFont& f);
    QFont PlanetFont() const { return planetFont_; }
    void PlanetFont(const QFont& f);
    QColor LineColor() const { return lineColor_; }
    void LineColor(const QColor& c);
    std::int16_t HouseNumber() const { return houseNumber_; }
    void HouseNumber(std::int16_t n);
    std::int16_t LineWidth() const { return lineWidth_; }
    void LineWidth(std::int16_t w);
    std::int16_t BorderWidth() const { return borderWidth_; }
    void BorderWidth(std::int16_t w);
    QPixmap CentrePic() const { return imgCenter_->Picture(); }
    void CentrePic(const QPixmap& p);
    QColor TextColor() const { return textColor_; }
    void TextColor(const QColor& c);
    int ChartStyle() const { return chartStyle_; }
    void ChartStyle(int style);
    QColor BorderColor() const { return borderColor_; }
    void BorderColor(const QColor& c);
    QColor NumberColor() const { return numberColor_; }
    void NumberColor(const QColor& c);
    bool InvisHouseNum() const { return invisHouseNum_; }

    // ---- operations ----
    // Empties the twelve boxes.
    void Clear();
    // Appends a text to a box: in the North chart House is a sign, placed in
    // the house it makes from the ascendant's sign (HouseNumber); in the
    // East and South charts the box is the sign itself.
    void PlanetPlace(std::int16_t House, const QString& Text);
    // The text of box House - 1, for House 1 to 12; "" otherwise.
    QString HouseText(int House) const;
    // The number shown in the first number label.
    int LagnaNo() const;
    // Folds a number into 0 to 12 by whole twelves, and deliberately no
    // further: 12 stays 12, 24 gives 0, -12 gives 12.
    static int Expunger12(int Value);
    // Hides every number, for good: the layout passes keep them hidden.
    void MakeHouseInvisible();
    void Refresh();
    // Draws the boxes' text with the text routine: the East and South
    // charts place their labels anew; the North chart draws the text of its
    // first three boxes by hand onto the control.
    void DrawKundli();

    // ---- the elements, as the walks see them ----
    QLabel* lblPlanet(int i) const { return planets_.at(static_cast<std::size_t>(i)); }
    QLabel* lblHouseNo(int i) const { return numbers_.at(static_cast<std::size_t>(i)); }
    ShapeControl* squMain() const { return squMain_; }
    ImageControl* imgCenter() const { return imgCenter_; }
    // Line1 to Line8 by their number.
    LineControl* Line(int n) const { return lines_.at(static_cast<std::size_t>(n - 1)); }
    // Every element in the control's order: the boxes, the square, the
    // numbers, the picture, Line8 down to Line1.
    const std::vector<QWidget*>& Elements() const { return elements_; }
    // An element's rectangle in the 1000 by 1000 space (for a line, its two
    // ends as the corners).
    QRectF LogicalRect(const QWidget* element) const;

signals:
    void Click();
    void MouseDown(Qt::MouseButton button, QPointF at);
    void MouseMove(Qt::MouseButtons buttons, QPointF at);
    void MouseUp(Qt::MouseButton button, QPointF at);

protected:
    void resizeEvent(QResizeEvent*) override;
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;

private:
    void LayoutPass();
    void PlaceLabels(int style);
    void PlaceScene();
    void Put(QWidget* element, const QRectF& logical);
    QPointF Logical(const QPointF& pixel) const;

    std::array<QLabel*, 12> planets_{};
    std::array<QLabel*, 12> numbers_{};
    ShapeControl* squMain_ = nullptr;
    ImageControl* imgCenter_ = nullptr;
    std::array<LineControl*, 8> lines_{};
    std::vector<QWidget*> elements_;

    QColor backColor_, foreColor_;
    QFont houseFont_, planetFont_;
    bool planetFontSet_ = false;
    QColor lineColor_ = Qt::black;
    std::int16_t houseNumber_ = 1;
    std::int16_t lineWidth_ = 1;
    std::int16_t borderWidth_ = 1;
    QColor textColor_ = Qt::black;
    int chartStyle_ = North;
    QColor borderColor_ = Qt::black;
    QColor numberColor_ = Qt::black;
    bool invisHouseNum_ = false;
    bool numbersOpaque_ = false;
    bool handDrawn_ = false;
};

}  // namespace ranvel
