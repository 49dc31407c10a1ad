// The print commands of the main window.
#include <QPrintDialog>
#include <QPrinter>
#include <QTextEdit>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/app/frmPrint.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/data/messages.h"
#include "ranvel/output/clsPrintMaker.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {

void mdiMother::PrintIt()
{
    // Before a generation there is no report to print.
    if (TopicCount() == 0) return;
    ui::RunCommand([this] {
        frmPrint dialog(1, this);
        dialog.exec();
    });
}

void mdiMother::PrintCurrentTopic()
{
    const int index = CurrentTopic();
    if (index < 0 || index >= TopicCount()) return;
    PageCounter() = 0;
    PrintCancel() = false;
    try {
        QWidget* page = TopicForm(index);
        QPrinter& device = ReportPrinter();
        UseReportSheet(device);
        PrintSurface printer(device);
        if (auto* text = page->findChild<QTextEdit*>("rtfText")) {
            PrintRichText(text, printer);
            printer.NewPage();
        } else {
            clsPrintMaker(printer).PrintForm(page);
        }
        printer.EndDoc();
    } catch (const std::exception&) {
        MsgBox(Msg(12), MsgButtons::OK, AppTitle(), MsgIcon::Exclamation);
    }
}

void mdiMother::PrinterSetup()
{
    // The choice stays with the report printer for the rest of the session.
    ui::RunCommand([this] {
        QPrintDialog dialog(&ReportPrinter(), this);
        dialog.setWindowTitle("Printer Setup");
        dialog.exec();
    });
}

}  // namespace ranvel
