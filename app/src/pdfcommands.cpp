// The PDF commands of the main window.

#include "ranvel/app/formkit.h"
#include "ranvel/app/frmStatus.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/output/clsPDFExporter.h"
#include "ranvel/platform/gui/dialogs.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {

namespace {

std::string NameOf(const std::shared_ptr<clsPlanets>& chart) { return chart ? chart->clsPerson().Name() : std::string(); }

// The name the save dialog offers, after the mode and the person.
std::string SuggestedPdfName()
{
    switch (Horomode()) {
    case 1: return NameOf(PersonChart()) + "-Horoscope.PDF";
    case 4: return NameOf(PersonChart()) + "-Varshaphala.PDF";
    case 3: return MarriageRequest() ? "MarriageMuhurat.PDF" : NameOf(PersonChart()) + "-Muhurtha.PDF";
    default: return NameOf(BoyChart()) + " & " + NameOf(GirlChart()) + "-Match.PDF";
    }
}

}  // namespace

bool mdiMother::GetPDFFile()
{
    const std::string path = Dialogs().SaveFile(this, "Save", "Portable Document Format (.PDF)|*.PDF|", ".PDF",
                                                SuggestedPdfName());
    if (path.empty()) return false;
    PDFExporter().filename(path);
    return true;
}

bool mdiMother::ExportPDF()
{
    // Before a generation there is no report to export.
    if (TopicCount() == 0) return false;
    bool exported = false;
    ui::RunCommand([&] {
        if (!GetPDFFile()) return;
        clsPDFExporter& exporter = PDFExporter();
        if (!exporter.StartExport()) {
            MsgBox("Could not write to file. File could be open or set to 'Read Only' attribute.", MsgButtons::OK,
                   "Error Writing File", MsgIcon::Critical);
            exporter.FinishFile();
            return;
        }

        // The topics as the list shows them, each brought to the front.
        class Topics : public ReportTopics {
        public:
            explicit Topics(mdiMother& w) : w_(w) {}
            int TopicCount() override { return w_.TopicCount(); }
            QWidget* ShowTopic(int index) override
            {
                w_.SelectTopic(index);
                return w_.TopicForm(index);
            }

        private:
            mdiMother& w_;
        } topics(*this);

        // The export brings every topic to the front in turn; the user is
        // given back the one they were reading, however the export ended.
        struct Return {
            mdiMother& w;
            int topic;
            ~Return()
            {
                if (topic >= 0 && topic < w.TopicCount() && w.CurrentTopic() != topic)
                    ui::RunCommand([this] { w.SelectTopic(topic); });
            }
        } back{*this, CurrentTopic()};

        frmStatus status(this);
        status.setWindowFlag(Qt::WindowStaysOnTopHint);
        // A fault on the way ends the command with its box; the file is
        // closed whatever happened.
        const bool walked = ui::RunCommand([&] { exporter.ExportHoroscope(topics); });
        // A file that could not be put on the disk (a full disk) is told
        // with the system's reason; the file that was there stays.
        bool closed = false;
        try {
            exporter.FinishFile();
            closed = true;
        } catch (const PdfError& e) {
            MsgBox(e.what(), MsgButtons::OK, "Error Writing File", MsgIcon::Critical);
        } catch (const std::exception& e) {
            ui::ShowFault(e);
        }
        exported = walked && closed;
    });
    return exported;
}

}  // namespace ranvel
