// The regional reckonings: Varna and Manglik, each North or South.
#pragma once

#include <QDialog>

namespace ranvel {

class frmCalcOptions : public QDialog {
    Q_OBJECT
public:
    explicit frmCalcOptions(QWidget* parent = nullptr);
};

}  // namespace ranvel
