#include "ranvel/app/frmWizard.h"

namespace ranvel {

struct frmWizard::Impl {
    std::function<void()> onEnd;
};

frmWizard::frmWizard(std::function<void()> onEnd, QWidget* parent) : QDialog(parent), d_(new Impl{std::move(onEnd)})
{
    setObjectName("frmWizard");
}

frmWizard::~frmWizard() { delete d_; }

}  // namespace ranvel
