// The print commands of the main window.
#include "ranvel/app/mdiMother.h"

namespace ranvel {

void mdiMother::PrintIt() {}

void mdiMother::PrintCurrentTopic() {}

void mdiMother::PrinterSetup() {}

}  // namespace ranvel
