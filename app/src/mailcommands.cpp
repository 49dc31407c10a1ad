// The mail commands of the main window.
#include "ranvel/app/mdiMother.h"

namespace ranvel {

void mdiMother::MailPDF() {}

void mdiMother::SendMailHTML() {}

void mdiMother::SendMailPDF() {}

}  // namespace ranvel
