// PdfBox: the PDF drawing component the report export draws with. A page
// of letter paper measured in tenths of a millimetre from its top left
// corner, a pen with a current position, a font, and text that stays real
// text (searchable, its faces embedded as subsets).
//
// The pages are drawn into memory. Only when the document has been ended,
// and its author, title and keywords written into it, is it written to a
// work file beside the target, forced onto the disk and moved over the
// target: a failure on the way (a full disk) leaves the target as it was
// and no work file, and says why.
//
// The drawing operations are virtual so that a test can watch what the
// export asks for while the document is still written.
#pragma once

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QString>
#include <memory>
#include <stdexcept>
#include <string>

class QBuffer;
class QPainter;
class QPdfWriter;

namespace ranvel {

// A document that could not be begun or completed.
class PdfError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class PdfBox {
public:
    // Letter paper in tenths of a millimetre.
    static constexpr double kPageWidth = 2159;
    static constexpr double kPageHeight = 2794;

    PdfBox();
    virtual ~PdfBox();
    PdfBox(const PdfBox&) = delete;
    PdfBox& operator=(const PdfBox&) = delete;

    // ---- the file ----
    const std::string& FileName() const { return fileName_; }
    void FileName(const std::string& path) { fileName_ = path; }
    // Where the document is written until it is complete.
    const std::string& WorkName() const { return workName_; }
    void WorkName(const std::string& path) { workName_ = path; }
    // The work name the box would choose for the file name: a hidden
    // file in the same folder, so that the last move stays on one disk.
    static std::string WorkNameFor(const std::string& fileName);

    // ---- the document information, written at the end ----
    const std::string& Author() const { return author_; }
    void Author(const std::string& s) { author_ = s; }
    const std::string& Title() const { return title_; }
    void Title(const std::string& s) { title_ = s; }
    const std::string& Keywords() const { return keywords_; }
    void Keywords(const std::string& s) { keywords_ = s; }
    // Faces are always embedded as subsets; an empty password leaves the
    // document open. Both are kept as asked; other values are refused.
    bool EmbedFonts() const { return embedFonts_; }
    void EmbedFonts(bool on);
    const std::string& Password() const { return password_; }
    void Password(const std::string& s);

    // ---- the document ----
    // Opens the work file and the first page. Throws PdfError when the
    // target can't be written.
    virtual void BeginDoc();
    // Closes the document, writes it with its information to the work file
    // and moves that over the target. Throws PdfError on failure (its text
    // names the file and the system's reason), after removing the work
    // file. A box with no open document does nothing.
    virtual void EndDoc();
    // Ends the document and drops the work file, leaving the target alone.
    void AbortDoc();
    bool Printing() const { return painter_ != nullptr; }
    virtual void NewPage();
    int PageCount() const { return pages_; }

    // ---- the pen ----
    double LineWidth() const { return lineWidth_; }
    void LineWidth(double w) { lineWidth_ = w; }
    // The unit of all coordinates; 1 is the tenth of a millimetre, the
    // only one this box draws in.
    int ScaleUnit() const { return scaleUnit_; }
    void ScaleUnit(int unit);
    QColor PenColor() const { return penColor_; }
    void PenColor(const QColor& c) { penColor_ = c; }
    // What fills a rectangle or circle drawn filled.
    QColor FillColor() const { return fillColor_; }
    void FillColor(const QColor& c) { fillColor_ = c; }
    double CurrentX() const { return x_; }
    void CurrentX(double x) { x_ = x; }
    double CurrentY() const { return y_; }
    void CurrentY(double y) { y_ = y; }

    // A line from the current position; the position moves to its end.
    virtual void LineTo(double x, double y);
    virtual void Rectangle(double left, double top, double width, double height, bool filled = false);
    virtual void Circle(double centreX, double centreY, double radius, bool filled = false);
    virtual void Picture(const QPixmap& picture, double left, double top, double width, double height);

    // ---- text ----
    QString FontName() const { return font_.family(); }
    void FontName(const QString& family);
    double FontSize() const { return font_.pointSizeF(); }
    void FontSize(double points);
    bool FontBold() const { return font_.bold(); }
    void FontBold(bool on) { font_.setBold(on); }
    bool FontItalic() const { return font_.italic(); }
    void FontItalic(bool on) { font_.setItalic(on); }
    bool FontStrikethru() const { return font_.strikeOut(); }
    void FontStrikethru(bool on) { font_.setStrikeOut(on); }
    bool FontUnderline() const { return font_.underline(); }
    void FontUnderline(bool on) { font_.setUnderline(on); }
    QColor FontColor() const { return fontColor_; }
    void FontColor(const QColor& c) { fontColor_ = c; }
    const QFont& Font() const { return font_; }

    // The width of a text in the current font, and the height of one line.
    double TextWidth(const QString& text) const;
    double LineHeight() const;
    // Text in a box: alignment 0 left, 1 right, 2 centre; at the box's top,
    // or in its middle when asked. Lines wrap at blanks when the text is
    // wider than the box, and what falls outside the box is cut off, as on
    // screen.
    virtual void TextBox(double left, double top, double width, double height, const QString& text, int alignment,
                         bool middle = false);
    // Text at a point, the point being the top left of its first line.
    virtual void TextOut(double x, double y, const QString& text);

private:
    void Finish();
    void DropWork();
    QFont PageFont() const;

    std::string fileName_, workName_;
    std::string author_, title_, keywords_;
    bool embedFonts_ = true;
    std::string password_;
    int workFd_ = -1;
    std::unique_ptr<QBuffer> buffer_;
    std::unique_ptr<QPdfWriter> writer_;
    std::unique_ptr<QPainter> painter_;
    int pages_ = 0;
    double lineWidth_ = 1;
    int scaleUnit_ = 1;
    QColor penColor_ = Qt::black;
    QColor fillColor_ = Qt::white;
    double x_ = 0, y_ = 0;
    QFont font_;
    QColor fontColor_ = Qt::black;
};

}  // namespace ranvel
