// The about box: the program, its release, and whose work it stands on.
#pragma once

#include <QDialog>

namespace ranvel {

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);
};

}  // namespace ranvel
