// The looks of the result pages: three label styles (field names, headings,
// values) in the language's faces and sizes and the user's page colours,
// and the colours by name. Read at need, so a saved theme shows the next
// time a page is built.
#pragma once

#include <QColor>
#include <QFont>

class QLabel;
class QWidget;

namespace ranvel::page {

enum class Style { Caption, Heading, SubHeading, Value, Body };

QFont Font(Style style);
QColor Color(Style style);
// Sets a label's font and text colour to the style.
void Apply(QLabel* label, Style style);
// Makes a page form white paper whose controls take their colours from it,
// not from the grey of the window around it.
void Paper(QWidget* form);
// A label's text colour and, for an opaque label, its background.
void Paint(QLabel* label, const QColor& text, const QColor* background = nullptr);

}  // namespace ranvel::page
