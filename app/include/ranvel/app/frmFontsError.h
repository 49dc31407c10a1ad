// The dialog that names the display fonts the start could not register.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

namespace ranvel {

class frmFontsError : public QDialog {
    Q_OBJECT
public:
    frmFontsError(const std::vector<std::string>& failed, QWidget* parent = nullptr);
};

}  // namespace ranvel
