#include "ranvel/app/frmEditLongLat.h"

namespace ranvel {

struct frmEditLongLat::Impl {};

frmEditLongLat::frmEditLongLat(Tab tab, QWidget* parent) : QDialog(parent), d_(new Impl)
{
    setObjectName("frmEditLongLat");
    ShowTab(tab);
}

frmEditLongLat::~frmEditLongLat() { delete d_; }

void frmEditLongLat::ShowTab(Tab) {}

}  // namespace ranvel
