// The mail commands of the main window: the report exported to PDF, then
// the mail dialog with it.
#include "ranvel/app/formkit.h"
#include "ranvel/app/frmEmail.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/output/clsPDFExporter.h"

namespace ranvel {

void mdiMother::MailPDF()
{
    // The export gives the user back the topic they were on.
    if (ExportPDF()) SendMailPDF();
}

void mdiMother::SendMailHTML()
{
    ui::RunCommand([this] {
        MailKind() = 1;
        frmEmail dialog(PDFExporter().filename(), this);
        dialog.exec();
    });
}

void mdiMother::SendMailPDF()
{
    ui::RunCommand([this] {
        MailKind() = 2;
        frmEmail dialog(PDFExporter().filename(), this);
        dialog.exec();
    });
}

}  // namespace ranvel
