// The PDF commands of the main window.
#include "ranvel/app/mdiMother.h"

namespace ranvel {

bool mdiMother::GetPDFFile() { return false; }

bool mdiMother::ExportPDF() { return false; }

}  // namespace ranvel
