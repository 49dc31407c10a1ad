#include "ranvel/app/frmCalcOptions.h"

namespace ranvel {

frmCalcOptions::frmCalcOptions(QWidget* parent) : QDialog(parent) { setObjectName("frmCalcOptions"); }

}  // namespace ranvel
