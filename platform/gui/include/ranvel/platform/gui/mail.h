// Sending the report by mail. Two ways out: the desktop's own mail program
// is handed the message with its attachment (the user sends it from there),
// or, when the user has set up a mail server, the message goes to that
// server directly by SMTP (STARTTLS when the server offers it), without a
// window of any mail program.
#pragma once

#include <string>

namespace ranvel {

struct MailMessage {
    std::string to;
    std::string subject;
    std::string body;
    std::string attachmentPath;  // empty for none
    std::string attachmentName;
    // The attachment's bytes as they were written to attachmentPath; when
    // given, a transport that reads the attachment itself sends these, so
    // that the file can't be changed under it.
    std::string attachmentData;
};

class MailTransport {
public:
    virtual ~MailTransport() = default;
    // False, with the reason, when the message did not leave.
    virtual bool Send(const MailMessage& message, std::string& error) = 0;
    // How the message leaves, in the user's words.
    virtual std::string Description() const = 0;
    // True when Send delivers the message; false when it hands it to a
    // program that sends it later, which still needs the attachment.
    virtual bool Delivers() const { return true; }
};

// The desktop's mail program, through xdg-email.
class DesktopMailClient : public MailTransport {
public:
    bool Send(const MailMessage& message, std::string& error) override;
    std::string Description() const override;
    bool Delivers() const override { return false; }
};

// A mail server of the user's. Security: "starttls" asks the server to
// switch to TLS and refuses to go on without it, "ssl" speaks TLS from
// the start, "none" sends in the clear (a server on this machine).
struct MailServer {
    std::string host;
    int port = 587;
    std::string security = "starttls";
    std::string user;
    std::string password;
    std::string from;
    bool savePassword = false;
    // The longest wait, in seconds, for the connection, the server's
    // greeting, each of its replies and a stalled upload; the whole
    // exchange gets three times this.
    int wait = 20;
    bool Configured() const { return !host.empty(); }
};

// Send blocks its caller for at most the server's waits; it touches
// nothing but the message and the server, so it may run on a thread of its
// own while the window stays alive. A refusal is told in the server's own
// words.
class SmtpMail : public MailTransport {
public:
    explicit SmtpMail(MailServer server);
    bool Send(const MailMessage& message, std::string& error) override;
    std::string Description() const override;

private:
    MailServer server_;
};

// The server settings of the user: ~/.config/Ranvel/mail.ini (or under
// $XDG_CONFIG_HOME), a file only its owner can read, since it may hold the
// password. Without savePassword the password is not written: it is kept
// for this run of the program alone.
std::string MailSettingsPath();
MailServer LoadMailServer();
bool SaveMailServer(const MailServer& server, std::string& error);

// The way out in use: the server when one is set up, else the desktop's
// mail program. Tests install their own.
MailTransport& Mailer();
void SetMailer(MailTransport* mailer);  // nullptr restores the choice by settings

}  // namespace ranvel
