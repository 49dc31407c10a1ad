#include "ranvel/app/pagestyle.h"

#include <QLabel>

#include "ranvel/data/datafiles.h"
#include "ranvel/data/themes.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/gui/qstr.h"

namespace ranvel::page {

namespace {

QFont Face(const std::string& family, int size, bool bold)
{
    QFont f(Q(family.empty() ? std::string("Arial") : family));
    f.setStyleHint(QFont::SansSerif);
    f.setPointSize(size > 0 ? size : 10);
    f.setBold(bold);
    return f;
}

}  // namespace

QFont Font(Style style)
{
    const LanguageSettings& s = LangSettings();
    switch (style) {
    case Style::Heading: return Face(s.headerfont, s.HeaderSize, s.HeadBold);
    case Style::SubHeading: return Face(s.SubHeadFont, s.TextHeadSize, s.SubHeadBold);
    case Style::Caption: return Face(s.SubHeadFont, s.NormalSize, s.SubHeadBold);
    case Style::Body: return Face(s.NormalFont, s.TextSize, false);
    case Style::Value: break;
    }
    return Face(s.NormalFont, s.NormalSize, false);
}

QColor Color(Style style)
{
    const PageColors& c = ActivePageColors();
    switch (style) {
    case Style::Heading: return ColorFromSetting(c.HeadingCol);
    case Style::SubHeading:
    case Style::Caption: return ColorFromSetting(c.SubHeadCol);
    case Style::Value:
    case Style::Body: break;
    }
    return ColorFromSetting(c.NormTextCol);
}

void Paper(QWidget* form)
{
    form->setAutoFillBackground(true);
    QPalette paper = form->palette();
    paper.setColor(QPalette::Window, Qt::white);
    form->setPalette(paper);
    form->setBackgroundRole(QPalette::Window);
    form->setForegroundRole(QPalette::WindowText);
}

void Paint(QLabel* label, const QColor& text, const QColor* background)
{
    QPalette p = label->palette();
    p.setColor(QPalette::WindowText, text);
    if (background) {
        p.setColor(QPalette::Window, *background);
        label->setAutoFillBackground(true);
    }
    label->setPalette(p);
}

void Apply(QLabel* label, Style style)
{
    label->setFont(Font(style));
    Paint(label, Color(style));
}

}  // namespace ranvel::page
