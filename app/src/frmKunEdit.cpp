#include "ranvel/app/frmKunEdit.h"

namespace ranvel {

frmKunEdit::frmKunEdit(QWidget* parent) : QDialog(parent) { setObjectName("frmKunEdit"); }

}  // namespace ranvel
