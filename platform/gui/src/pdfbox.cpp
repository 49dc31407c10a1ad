#include "ranvel/platform/gui/pdfbox.h"

// qpdf's own smart pointers are not used here.
#define POINTERHOLDER_TRANSITION 4
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDFWriter.hh>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>
#include <QTextOption>
#include <cerrno>
#include <cstdio>

#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/gui/wholefile.h"

namespace ranvel {

namespace {

// 254 dots to the inch make a dot a tenth of a millimetre: the page's
// units are the writer's own.
constexpr int kDotsPerInch = 254;

// The document as Qt's writer left it, with its information as the reader
// shows it (Qt's writer puts only a title and the producer there): the
// bytes of the complete file.
std::string WithInformation(const QByteArray& written, const std::string& name, const std::string& author,
                            const std::string& title, const std::string& keywords)
{
    QPDF pdf;
    pdf.processMemoryFile(name.c_str(), written.constData(), static_cast<std::size_t>(written.size()));
    QPDFObjectHandle trailer = pdf.getTrailer();
    QPDFObjectHandle info = trailer.getKey("/Info");
    if (!info.isDictionary()) {
        info = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
        trailer.replaceKey("/Info", info);
    }
    info.replaceKey("/Author", QPDFObjectHandle::newUnicodeString(author));
    info.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(title));
    info.replaceKey("/Keywords", QPDFObjectHandle::newUnicodeString(keywords));
    QPDFWriter writer(pdf);
    writer.setOutputMemory();
    writer.write();
    const std::shared_ptr<Buffer> out = writer.getBufferSharedPointer();
    return std::string(reinterpret_cast<const char*>(out->getBuffer()), out->getSize());
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
    // The work file is taken now, so that a folder that can't be written
    // is known before anything is drawn; it is filled at the end.
    ::unlink(workName_.c_str());
    workFd_ = ::open(workName_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (workFd_ < 0) throw PdfError("'" + fileName_ + "' can't be written: " + WriteFailureReason(errno));
    // The pages are drawn into memory: what reaches the disk is the
    // complete document, and a write that fails is seen as it fails.
    buffer_ = std::make_unique<QBuffer>();
    buffer_->open(QIODevice::WriteOnly);
    writer_ = std::make_unique<QPdfWriter>(buffer_.get());
    writer_->setResolution(kDotsPerInch);
    writer_->setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    writer_->setTitle(Q(title_));
    painter_ = std::make_unique<QPainter>();
    if (!painter_->begin(writer_.get())) {
        Finish();
        DropWork();
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

void PdfBox::DropWork()
{
    buffer_.reset();
    if (workFd_ >= 0) {
        ::close(workFd_);
        workFd_ = -1;
        ::unlink(workName_.c_str());
    }
}

void PdfBox::EndDoc()
{
    if (!painter_) return;
    Finish();
    std::string bytes;
    try {
        bytes = WithInformation(buffer_->data(), workName_, author_, title_, keywords_);
    } catch (const std::exception& e) {
        DropWork();
        throw PdfError(std::string("the document could not be completed: ") + e.what());
    }
    buffer_.reset();

    // The complete document onto the disk, then in the target's place in
    // one step. A target that was there keeps its permissions, and stays
    // as it was when anything on the way fails.
    struct stat old {};
    const bool replacing = ::stat(fileName_.c_str(), &old) == 0;
    const int fd = workFd_;
    workFd_ = -1;
    std::string reason;
    if (!PutInPlace(fd, workName_, fileName_, bytes, reason))
        throw PdfError("The PDF file '" + fileName_ + "' could not be written: " + reason + "." +
                       (replacing ? " The file that was there is kept as it was." : ""));
}

void PdfBox::AbortDoc()
{
    Finish();
    DropWork();
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
