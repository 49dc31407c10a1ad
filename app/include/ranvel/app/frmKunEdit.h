// The chart style: North, East or South Indian.
#pragma once

#include <QDialog>

namespace ranvel {

class frmKunEdit : public QDialog {
    Q_OBJECT
public:
    explicit frmKunEdit(QWidget* parent = nullptr);
};

}  // namespace ranvel
