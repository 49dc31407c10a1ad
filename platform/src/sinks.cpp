#include "ranvel/platform/sinks.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace ranvel {

namespace {

MsgAnswer FirstButton(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::AbortRetryIgnore: return MsgAnswer::Abort;
    case MsgButtons::YesNoCancel:
    case MsgButtons::YesNo: return MsgAnswer::Yes;
    case MsgButtons::RetryCancel: return MsgAnswer::Retry;
    case MsgButtons::OK:
    case MsgButtons::OKCancel: break;
    }
    return MsgAnswer::OK;
}

MessageSink* g_messages = nullptr;
ProgressSink* g_progress = nullptr;

HeadlessMessageSink& DefaultMessages()
{
    static HeadlessMessageSink sink;
    return sink;
}

HeadlessProgressSink& DefaultProgress()
{
    static HeadlessProgressSink sink;
    return sink;
}

}  // namespace

MsgAnswer HeadlessMessageSink::Show(const Message& message)
{
    messages_.push_back(message);
    if (!quiet_) std::fprintf(stderr, "%s: %s\n", message.title.c_str(), message.text.c_str());
    return hasAnswer_ ? answer_ : FirstButton(message.buttons);
}

void HeadlessProgressSink::Progress(const std::string& caption, const std::string& detail, int percent)
{
    percent = std::clamp(percent, 0, 100);
    steps_.push_back({caption, detail, percent});
    if (!drawBar_ || !isatty(STDERR_FILENO)) return;
    constexpr int width = 30;
    const int filled = percent * width / 100;
    std::string bar(static_cast<std::size_t>(filled), '#');
    bar.append(static_cast<std::size_t>(width - filled), '.');
    std::string label = caption.empty() ? detail : (detail.empty() ? caption : caption + " " + detail);
    if (label.size() > 40) label.resize(40);
    // \x1b[K clears what a longer previous line left behind.
    std::fprintf(stderr, "\r[%s] %3d%% %s\x1b[K", bar.c_str(), percent, label.c_str());
    std::fflush(stderr);
}

void HeadlessProgressSink::Done()
{
    if (drawBar_ && !steps_.empty() && isatty(STDERR_FILENO)) {
        std::fputs("\r\x1b[K", stderr);
        std::fflush(stderr);
    }
}

MessageSink& Messages() { return g_messages ? *g_messages : DefaultMessages(); }
ProgressSink& Progress() { return g_progress ? *g_progress : DefaultProgress(); }
void SetMessageSink(MessageSink* sink) { g_messages = sink; }
void SetProgressSink(ProgressSink* sink) { g_progress = sink; }

MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, const std::string& title, MsgIcon icon)
{
    return Messages().Show(Message{title, text, icon, buttons});
}

}  // namespace ranvel
