// The mail commands of the main window: the report exported to PDF, then
// the mail dialog with it.
#include "ranvel/app/frmEmail.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/output/clsPDFExporter.h"

namespace ranvel {

void mdiMother::MailPDF()
{
    if (ExportPDF()) SendMailPDF();
}

void mdiMother::SendMailHTML()
{
    MailKind() = 1;
    frmEmail dialog(PDFExporter().filename(), this);
    dialog.exec();
}

void mdiMother::SendMailPDF()
{
    MailKind() = 2;
    frmEmail dialog(PDFExporter().filename(), this);
    dialog.exec();
}

}  // namespace ranvel
