// The first window on screen: it checks what the program needs, in a fixed
// order with a status line for each step, opens the main window and goes
// away. Every step either ends the program or lets it go on; there is no
// repair.
#pragma once

#include <QWidget>

class QLabel;

namespace ranvel {

class frmSplash : public QWidget {
    Q_OBJECT
public:
    explicit frmSplash(QWidget* parent = nullptr);
    ~frmSplash() override;

    // The splash's own sequence: the decimal symbol, the release, the
    // first-run wizard or DoLoad. False when the program must end.
    bool Load();
    // The checks and the main window, with the splash's status line when
    // there is a splash. Also run by the wizard when it ends. False when the
    // program must end (the reason was shown).
    static bool DoLoad();
    // Kept in memory only: DoLoad has run from the splash.
    static bool& SplashDone();

private:
    static void Status(const QString& text);
    QLabel* lblStatus_;
    QLabel* lblVerNo_;
};

}  // namespace ranvel
