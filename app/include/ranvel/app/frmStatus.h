// The progress dialog of a long operation (a search, later printing and
// export): its caption, a line saying what is being done, a bar, and the
// waiting animation. It is the program's progress sink while it lives; it
// lets pending events through at every step, so the window stays drawn and
// the animation turns, while the rest of the program is held modal.
#pragma once

#include <QDialog>

#include "ranvel/platform/gui/animation.h"
#include "ranvel/platform/sinks.h"

class QLabel;
class QProgressBar;
class QTimer;

namespace ranvel {

class frmStatus : public QDialog, public ProgressSink {
    Q_OBJECT
public:
    explicit frmStatus(QWidget* parent = nullptr);
    ~frmStatus() override;

    void Progress(const std::string& caption, const std::string& detail, int percent) override;
    void Done() override;

private:
    void NextFrame();

    QLabel* aniWait_;
    QLabel* lblStatus_;
    QProgressBar* prgStatus_;
    QTimer* timer_;
    Animation animation_;
    std::size_t frame_ = 0;
};

}  // namespace ranvel
