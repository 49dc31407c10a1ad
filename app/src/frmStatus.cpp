#include "ranvel/app/frmStatus.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>

#include "ranvel/app/formkit.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/qstr.h"

namespace ranvel {

frmStatus::frmStatus(QWidget* parent) : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
{
    setObjectName("frmStatus");
    setFixedSize(420, 120);
    setWindowModality(Qt::ApplicationModal);
    aniWait_ = ui::Label(this, "aniWait", QString(), {16, 20, 48, 48});
    aniWait_->setAlignment(Qt::AlignCenter);
    lblStatus_ = ui::Label(this, "lblStatus", QString(), {76, 16, 328, 52});
    lblStatus_->setWordWrap(true);
    lblStatus_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    prgStatus_ = new QProgressBar(this);
    prgStatus_->setObjectName("prgStatus");
    prgStatus_->setGeometry(16, 80, 388, 20);
    prgStatus_->setRange(0, 100);
    prgStatus_->setTextVisible(true);
    prgStatus_->setAccessibleName("Progress");

    animation_ = ReadAvi(AppPath("EPHE\\COMMON\\Wait.avi"));
    timer_ = new QTimer(this);
    timer_->setInterval(animation_.millisecondsPerFrame);
    connect(timer_, &QTimer::timeout, this, &frmStatus::NextFrame);
    NextFrame();
    SetProgressSink(this);
}

frmStatus::~frmStatus()
{
    if (&ranvel::Progress() == this) SetProgressSink(nullptr);
}

void frmStatus::NextFrame()
{
    if (animation_.frames.empty()) return;
    aniWait_->setPixmap(QPixmap::fromImage(animation_.frames[frame_ % animation_.frames.size()]));
    ++frame_;
}

void frmStatus::Progress(const std::string& caption, const std::string& detail, int percent)
{
    setWindowTitle(Q(caption));
    lblStatus_->setText(Q(detail));
    prgStatus_->setValue(percent);
    if (!isVisible()) {
        if (parentWidget()) {
            const QRect p = parentWidget()->window()->geometry();
            move(p.center() - rect().center());
        }
        show();
        raise();
        timer_->start();
    }
    QApplication::processEvents();
}

void frmStatus::Done()
{
    timer_->stop();
    hide();
    QApplication::processEvents();
}

}  // namespace ranvel
