#include "ranvel/platform/gui/pdfbox.h"

// qpdf's own smart pointers are not used here.
#define POINTERHOLDER_TRANSITION 4
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>
#include <QTextOption>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "ranvel/platform/gui/qstr.h"

namespace ranvel {

namespace {

// 254 dots to the inch make a dot a tenth of a millimetre: the page's
// units are the writer's own.
constexpr int kDotsPerInch = 254;

// The document information as the reader shows it. Qt's writer puts only
// a title and the producer there.
void WriteInformation(const std::string& path, const std::string& author, const std::string& title,
                      const std::string& keywords)
{
    std::string bytes;
    {
        std::ifstream in(path, std::ios::binary);
        if (!in) throw PdfError("cannot read back '" + path + "'");
        bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    // Read from memory, so that the same file can be written again.
    QPDF pdf;
    pdf.processMemoryFile(path.c_str(), bytes.data(), bytes.size());
    QPDFObjectHandle trailer = pdf.getTrailer();
    QPDFObjectHandle info = trailer.getKey("/Info");
    if (!info.isDictionary()) {
        info = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
        trailer.replaceKey("/Info", info);
    }
    info.replaceKey("/Author", QPDFObjectHandle::newUnicodeString(author));
    info.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(title));
    info.replaceKey("/Keywords", QPDFObjectHandle::newUnicodeString(keywords));
    QPDFWriter writer(pdf, path.c_str());
    writer.write();
}

}  // namespace

PdfBox::PdfBox()
{
    font_ = QFont("Arial");
    font_.setPointSizeF(10);
}

PdfBox::~PdfBox() { AbortDoc(); }

std::string PdfBox::WorkNameFor(const std::string& fileName)
{
    const QFileInfo target(Q(fileName));
    return S(target.absoluteDir().filePath("." + target.fileName() + ".part"));
}

void PdfBox::EmbedFonts(bool on)
{
    if (!on) throw PdfError("fonts are always embedded");
    embedFonts_ = on;
}

void PdfBox::Password(const std::string& s)
{
    if (!s.empty()) throw PdfError("documents are not locked with a password");
    password_ = s;
}

void PdfBox::ScaleUnit(int unit)
{
    if (unit != 1) throw PdfError("the page is measured in tenths of a millimetre only");
    scaleUnit_ = unit;
}

void PdfBox::BeginDoc()
{
    AbortDoc();
    if (fileName_.empty()) throw PdfError("no file name");
    const QFileInfo target(Q(fileName_));
    if (target.exists() && (!target.isFile() || !target.isWritable()))
        throw PdfError("'" + fileName_ + "' can't be written");
    if (workName_.empty()) workName_ = WorkNameFor(fileName_);
    writer_ = std::make_unique<QPdfWriter>(Q(workName_));
    writer_->setResolution(kDotsPerInch);
    writer_->setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    writer_->setTitle(Q(title_));
    painter_ = std::make_unique<QPainter>();
    if (!painter_->begin(writer_.get())) {
        painter_.reset();
        writer_.reset();
        QFile::remove(Q(workName_));
        throw PdfError("'" + fileName_ + "' can't be written");
    }
    painter_->setRenderHint(QPainter::Antialiasing);
    pages_ = 1;
    x_ = y_ = 0;
}

void PdfBox::Finish()
{
    if (painter_) painter_->end();
    painter_.reset();
    writer_.reset();
}

void PdfBox::EndDoc()
{
    if (!painter_) return;
    Finish();
    try {
        WriteInformation(workName_, author_, title_, keywords_);
    } catch (const std::exception& e) {
        QFile::remove(Q(workName_));
        throw PdfError(std::string("the document could not be completed: ") + e.what());
    }
    // The finished document takes the target's place in one step.
    if (std::rename(workName_.c_str(), fileName_.c_str()) != 0) {
        QFile::remove(Q(workName_));
        throw PdfError("'" + fileName_ + "' can't be written");
    }
}

void PdfBox::AbortDoc()
{
    if (!painter_) return;
    Finish();
    QFile::remove(Q(workName_));
}

void PdfBox::NewPage()
{
    if (!painter_) return;
    writer_->newPage();
    ++pages_;
}

void PdfBox::LineTo(double x, double y)
{
    if (painter_) {
        painter_->setPen(QPen(penColor_, lineWidth_, Qt::SolidLine, Qt::RoundCap));
        painter_->drawLine(QPointF(x_, y_), QPointF(x, y));
    }
    x_ = x;
    y_ = y;
}

void PdfBox::Rectangle(double left, double top, double width, double height, bool filled)
{
    if (!painter_) return;
    painter_->setPen(QPen(penColor_, lineWidth_, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter_->setBrush(filled ? QBrush(fillColor_) : Qt::NoBrush);
    painter_->drawRect(QRectF(left, top, width, height));
}

void PdfBox::Circle(double centreX, double centreY, double radius, bool filled)
{
    if (!painter_) return;
    painter_->setPen(QPen(penColor_, lineWidth_));
    painter_->setBrush(filled ? QBrush(fillColor_) : Qt::NoBrush);
    painter_->drawEllipse(QPointF(centreX, centreY), radius, radius);
}

void PdfBox::Picture(const QPixmap& picture, double left, double top, double width, double height)
{
    if (!painter_ || picture.isNull()) return;
    painter_->setRenderHint(QPainter::SmoothPixmapTransform);
    painter_->drawPixmap(QRectF(left, top, width, height), picture, QRectF(picture.rect()));
}

void PdfBox::FontName(const QString& family)
{
    font_.setFamilies({family});
}

void PdfBox::FontSize(double points)
{
    if (points > 0) font_.setPointSizeF(points);
}

// Measured as the page lays the text out: on the writer while a document
// is open, else on the screen, scaled to the page's dots.
double PdfBox::TextWidth(const QString& text) const
{
    if (writer_) return QFontMetricsF(font_, writer_.get()).horizontalAdvance(text);
    const QFontMetricsF m(font_);
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double dpi = screen ? screen->logicalDotsPerInchY() : 96.0;
    return m.horizontalAdvance(text) * kDotsPerInch / dpi;
}

double PdfBox::LineHeight() const
{
    if (writer_) return QFontMetricsF(font_, writer_.get()).height();
    const QFontMetricsF m(font_);
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double dpi = screen ? screen->logicalDotsPerInchY() : 96.0;
    return m.height() * kDotsPerInch / dpi;
}

void PdfBox::TextBox(double left, double top, double width, double height, const QString& text, int alignment,
                     bool middle)
{
    if (!painter_ || text.isEmpty()) return;
    const int horizontal = alignment == 2 ? Qt::AlignHCenter : alignment == 1 ? Qt::AlignRight : Qt::AlignLeft;
    const int vertical = middle ? Qt::AlignVCenter : Qt::AlignTop;
    painter_->setFont(font_);
    painter_->setPen(fontColor_);
    painter_->drawText(QRectF(left, top, width, height), horizontal | vertical | Qt::TextWordWrap, text);
}

void PdfBox::TextOut(double x, double y, const QString& text)
{
    if (!painter_ || text.isEmpty()) return;
    painter_->setFont(font_);
    painter_->setPen(fontColor_);
    painter_->drawText(QRectF(x, y, kPageWidth, kPageHeight), Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, text);
}

}  // namespace ranvel
