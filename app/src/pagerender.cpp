#include "ranvel/app/pagerender.h"

#include <QApplication>
#include <QImageWriter>
#include <QLabel>
#include <QPixmap>

#include "ranvel/app/frmDaySheet.h"
#include "ranvel/app/frmMuhuCover.h"
#include "ranvel/app/frmMuhuTxt.h"
#include "ranvel/app/startup.h"
#include "ranvel/data/themes.h"
#include "ranvel/output/clsPDFExporter.h"
#include "ranvel/platform/gui/pdfbox.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/gui/systemzones.h"

namespace ranvel {

void EnsureOffscreenApplication()
{
    if (QApplication::instance()) return;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "ranvel";
    static char* argv[] = {name, nullptr};
    static QApplication* app = new QApplication(argc, argv);
    PrepareLook(*app);
    UseSystemZones();
    CheckFonts();
}

bool RenderCoverPng(const std::string& path, std::string& error)
{
    EnsureOffscreenApplication();
    LoadActiveColors();
    frmMuhuCover cover;
    cover.Load();
    // Drawn at twice the screen's size, so that the page reads well when it
    // is looked at closely.
    QPixmap picture(cover.size() * 2);
    picture.setDevicePixelRatio(2);
    picture.fill(Qt::white);
    cover.render(&picture);
    QImageWriter writer(Q(path), "png");
    if (!writer.write(picture.toImage())) {
        error = "cannot write the picture to '" + path + "': " + S(writer.errorString());
        return false;
    }
    return true;
}

namespace {

// The main window's two result pages, each filled as showing it fills it,
// with its page number as the topic list gives it.
class OffscreenTopics : public ReportTopics {
public:
    int TopicCount() override { return 2; }
    QWidget* ShowTopic(int index) override
    {
        QWidget* form = index == 0 ? static_cast<QWidget*>(&cover_) : &analysis_;
        if (index == 0) cover_.Load();
        else analysis_.Load();
        if (auto* pageNo = form->findChild<QLabel*>("lblPageNo")) pageNo->setText(QString::number(index + 1));
        return form;
    }

private:
    frmMuhuCover cover_;
    frmMuhuTxt analysis_;
};

}  // namespace

namespace {

// The topics through the exporter into the file; the file is put in its
// place only when the whole of it was written.
bool ExportTopics(ReportTopics& topics, const std::string& path, std::string& error)
{
    PdfBox box;
    clsPDFExporter exporter(box);
    exporter.filename(path);
    if (!exporter.StartExport()) {
        error = "cannot write the PDF file '" + path + "'";
        return false;
    }
    try {
        exporter.ExportHoroscope(topics);
        exporter.FinishFile();
    } catch (const std::exception& e) {
        box.AbortDoc();
        // A writer's own message already names the file.
        const std::string why = e.what();
        error = why.find(path) != std::string::npos ? why : "cannot write the PDF file '" + path + "': " + why;
        return false;
    }
    return true;
}

// One page form as the whole report.
class OnePage : public ReportTopics {
public:
    explicit OnePage(QWidget* page) : page_(page) {}
    int TopicCount() override { return 1; }
    QWidget* ShowTopic(int) override { return page_; }

private:
    QWidget* page_;
};

}  // namespace

bool RenderReportPdf(const std::string& path, std::string& error)
{
    EnsureOffscreenApplication();
    LoadActiveColors();
    OffscreenTopics topics;
    return ExportTopics(topics, path, error);
}

bool ExportPagePdf(QWidget* page, const std::string& path, std::string& error)
{
    OnePage topics(page);
    return ExportTopics(topics, path, error);
}

bool RenderDaySheetPdf(const DaySheet& sheet, const std::string& path, std::string& error)
{
    EnsureOffscreenApplication();
    LoadActiveColors();
    frmDayPage page(sheet);
    return ExportPagePdf(&page, path, error);
}

}  // namespace ranvel
