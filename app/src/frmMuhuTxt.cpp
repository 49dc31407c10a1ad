#include "ranvel/app/frmMuhuTxt.h"

#include <QLabel>
#include <QTextCursor>
#include <QTextEdit>

#include "ranvel/app/pagestyle.h"
#include "ranvel/data/textlookup.h"
#include "ranvel/engine/analysis.h"
#include "ranvel/engine/request.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

using page::Style;

namespace {

QTextCharFormat Format(Style style)
{
    QTextCharFormat f;
    f.setFont(page::Font(style));
    f.setForeground(page::Color(style));
    return f;
}

// Adds text at the end of the page in a format.
void Append(QTextEdit* t, const std::string& text, const QTextCharFormat& format)
{
    QTextCursor c(t->document());
    c.movePosition(QTextCursor::End);
    c.insertText(Q(text), format);
}

}  // namespace

frmMuhuTxt::frmMuhuTxt(QWidget* parent) : QWidget(parent)
{
    setObjectName("frmMuhuTxt");
    page::Paper(this);
    rtfText_ = new QTextEdit(this);
    rtfText_->setObjectName("rtfText");
    // The export flows it as the report's rich text.
    rtfText_->setProperty("TypeName", "TXTextControl");
    rtfText_->setReadOnly(true);
    rtfText_->setFrameShape(QFrame::NoFrame);
    rtfText_->setAccessibleName("Muhurtha Analysis");
    rtfText_->document()->setDocumentMargin(12);
}

void frmMuhuTxt::resizeEvent(QResizeEvent*)
{
    // The text follows the page: 200 twips in from its edge, 320 narrower
    // and 500 lower than it.
    const int w = width() * kTwipsPerPixel - 320, h = height() * kTwipsPerPixel - 500;
    SetTwips(rtfText_, 200, 200, std::max(0, w), std::max(0, h));
}

void frmMuhuTxt::Load()
{
    rtfText_->clear();
    WriteAnalysis();
    rtfText_->moveCursor(QTextCursor::Start);
}

void frmMuhuTxt::WriteAnalysis()
{
    clsMuhurtha& engine = Engine();
    clsPlanets& chart = *engine.MuhuChart;
    const std::string sep = GetSymbolText(4, chart.GetTxtDB().get());
    const QTextCharFormat heading = Format(Style::Heading);
    const QTextCharFormat sub = Format(Style::SubHeading);
    const QTextCharFormat body = Format(Style::Body);

    Append(rtfText_,
           "\n" + chart.GetHeadValue(1, "Muhurtha", "Muhurtha").ToTextOrEmpty() + " " + sep + " " +
               chart.GetHeadValue(10, engine.MuhuCode, "Muhuname").ToTextOrEmpty() + "\n",
           heading);
    Append(rtfText_, chart.GetHeadValue(1, "MuhuResult", "Muhurtha").ToTextOrEmpty() + "\n", sub);
    Append(rtfText_, "\n" + chart.GetHeadValue(1, "Score", "Gen").ToTextOrEmpty() + " " + sep + " ", sub);
    QTextCharFormat number = sub;
    number.setFont(QFont("Arial", 12));
    Append(rtfText_, " " + vb::CStr(engine.BestMuhuPercent()), number);
    Append(rtfText_, chart.GetHeadValue(1, "Percent", "Gen").ToTextOrEmpty() + "\n\n", sub);
    Append(rtfText_, engine.MuhuScoreText(engine.ScoreBand()).ToTextOrEmpty() + "\n\n", body);
    WriteElements();
}

void frmMuhuTxt::WriteElements()
{
    const QTextCharFormat sub = Format(Style::SubHeading);
    const QTextCharFormat body = Format(Style::Body);
    for (const ElementStatement& s : AnalyseElements(Engine())) {
        Append(rtfText_, s.heading + "\n", sub);
        if (s.hasSentence) Append(rtfText_, s.sentence + "\n\n", body);
    }
}

}  // namespace ranvel
