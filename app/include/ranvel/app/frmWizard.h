// The first-run wizard: welcome, the user's name and address, Rahu's
// motion, the ayanamsha, the chart style, the Varna and Manglik
// reckonings. "Finish" writes every choice; leaving it early keeps the
// defaults. Either way the setup counts as done, and onEnd runs.
#pragma once

#include <QDialog>
#include <functional>

namespace ranvel {

class frmWizard : public QDialog {
    Q_OBJECT
public:
    explicit frmWizard(std::function<void()> onEnd = {}, QWidget* parent = nullptr);
    ~frmWizard() override;

private:
    struct Impl;
    Impl* d_;
};

}  // namespace ranvel
