// The place and settings editor: cities and countries of the place store,
// and the settings of the reckoning and of the user (ayanamsha, Rahu and
// Ketu's motion, the user's name and address). The Settings menu opens it
// on the tab of the command chosen.
#pragma once

#include <QDialog>

class QTabWidget;

namespace ranvel {

class frmEditLongLat : public QDialog {
    Q_OBJECT
public:
    enum class Tab { City, Country, Ayanamsh, RahuKetu, Details };
    explicit frmEditLongLat(Tab tab = Tab::City, QWidget* parent = nullptr);
    ~frmEditLongLat() override;

    void ShowTab(Tab tab);

private:
    struct Impl;
    Impl* d_;
};

}  // namespace ranvel
