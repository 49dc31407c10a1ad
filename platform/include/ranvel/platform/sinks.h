// What the core shows a user goes through these two sinks: a message box
// (title, text, icon, buttons, and the answer) and the progress dialog (two
// texts and a percent). The desktop puts up real dialogs; the command line
// and the tests use the headless sinks, which write to stderr and keep what
// they were given.
#pragma once

#include <string>
#include <vector>

namespace ranvel {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { OK, OKCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
enum class MsgAnswer { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

struct Message {
    std::string title;
    std::string text;
    MsgIcon icon = MsgIcon::None;
    MsgButtons buttons = MsgButtons::OK;
};

class MessageSink {
public:
    virtual ~MessageSink() = default;
    virtual MsgAnswer Show(const Message& message) = 0;
};

class ProgressSink {
public:
    virtual ~ProgressSink() = default;
    // caption: what is being done; detail: the step; percent 0 to 100.
    virtual void Progress(const std::string& caption, const std::string& detail, int percent) = 0;
    // The long operation is over; the dialog goes away.
    virtual void Done() {}
};

// Writes each message to stderr (unless quiet) and keeps it. Answers with
// the first button of the set (OK, Yes, Abort, Retry) unless told otherwise.
class HeadlessMessageSink : public MessageSink {
public:
    explicit HeadlessMessageSink(bool quiet = false) : quiet_(quiet) {}
    MsgAnswer Show(const Message& message) override;

    const std::vector<Message>& Messages() const { return messages_; }
    void Clear() { messages_.clear(); }
    // The answer given to every following question; unset means the first
    // button.
    void SetAnswer(MsgAnswer answer) { answer_ = answer; hasAnswer_ = true; }

private:
    bool quiet_;
    bool hasAnswer_ = false;
    MsgAnswer answer_ = MsgAnswer::OK;
    std::vector<Message> messages_;
};

struct ProgressStep {
    std::string caption;
    std::string detail;
    int percent = 0;
};

// Keeps every step; draws a bar on stderr when stderr is a terminal and
// drawing is asked for.
class HeadlessProgressSink : public ProgressSink {
public:
    explicit HeadlessProgressSink(bool drawBar = false) : drawBar_(drawBar) {}
    void Progress(const std::string& caption, const std::string& detail, int percent) override;
    void Done() override;
    const std::vector<ProgressStep>& Steps() const { return steps_; }

private:
    bool drawBar_;
    std::vector<ProgressStep> steps_;
};

// The process-wide sinks. Until something else is installed these are
// headless sinks that write to stderr.
MessageSink& Messages();
ProgressSink& Progress();
void SetMessageSink(MessageSink* sink);    // nullptr restores the default
void SetProgressSink(ProgressSink* sink);  // nullptr restores the default

// Shorthand for a plain message box.
MsgAnswer MsgBox(const std::string& text, MsgButtons buttons = MsgButtons::OK, const std::string& title = "Ranvel",
                 MsgIcon icon = MsgIcon::None);

}  // namespace ranvel
