#include "ranvel/platform/gui/qtsinks.h"

#include <QApplication>
#include <QMessageBox>

#include "ranvel/platform/gui/qstr.h"

namespace ranvel {

namespace {

QMessageBox::Icon IconOf(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::Critical: return QMessageBox::Critical;
    case MsgIcon::Question: return QMessageBox::Question;
    case MsgIcon::Exclamation: return QMessageBox::Warning;
    case MsgIcon::Information: return QMessageBox::Information;
    case MsgIcon::None: break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgButtons::AbortRetryIgnore: return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case MsgButtons::YesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MsgButtons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case MsgButtons::RetryCancel: return QMessageBox::Retry | QMessageBox::Cancel;
    case MsgButtons::OK: break;
    }
    return QMessageBox::Ok;
}

MsgAnswer AnswerOf(int button)
{
    switch (button) {
    case QMessageBox::Cancel: return MsgAnswer::Cancel;
    case QMessageBox::Abort: return MsgAnswer::Abort;
    case QMessageBox::Retry: return MsgAnswer::Retry;
    case QMessageBox::Ignore: return MsgAnswer::Ignore;
    case QMessageBox::Yes: return MsgAnswer::Yes;
    case QMessageBox::No: return MsgAnswer::No;
    default: break;
    }
    return MsgAnswer::OK;
}

}  // namespace

MsgAnswer QtMessageSink::Show(const Message& message)
{
    QMessageBox box(IconOf(message.icon), Q(message.title), Q(message.text), ButtonsOf(message.buttons),
                    QApplication::activeWindow());
    return AnswerOf(box.exec());
}

}  // namespace ranvel
