#include "ranvel/platform/gui/mail.h"

#include <curl/curl.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <tuple>

#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/ini.h"

namespace ranvel {

namespace fs = std::filesystem;

namespace {

MailTransport* g_mailer = nullptr;

const char* const kSection = "MailServer";

// A password the user chose not to keep: it serves until the program ends.
std::string& SessionPassword()
{
    static std::string password;
    return password;
}

// Mail lines end in CR LF.
std::string CrLf(const std::string& text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) out += '\r';
        out += text[i];
    }
    return out;
}

// A header text, as MIME words when it isn't plain ASCII.
std::string HeaderText(const std::string& text)
{
    bool ascii = true;
    for (unsigned char c : text) ascii = ascii && c < 128 && c != '\r' && c != '\n';
    if (ascii) return text;
    return "=?UTF-8?B?" + QByteArray::fromStdString(text).toBase64().toStdString() + "?=";
}

}  // namespace

// ---- the desktop's mail program ----

bool DesktopMailClient::Send(const MailMessage& message, std::string& error)
{
    QStringList args = {"--utf8", "--subject", Q(message.subject), "--body", Q(message.body)};
    if (!message.attachmentPath.empty()) args << "--attach" << Q(message.attachmentPath);
    args << Q(message.to);
    QProcess p;
    p.start("xdg-email", args);
    if (!p.waitForStarted(5000)) {
        error = "The desktop's mail program could not be started (xdg-email is missing).";
        return false;
    }
    p.waitForFinished(60000);
    if (p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        const QString said = QString::fromLocal8Bit(p.readAllStandardError()).trimmed();
        error = "The desktop's mail program did not take the message" + (said.isEmpty() ? std::string(".") : ": " + S(said));
        return false;
    }
    return true;
}

std::string DesktopMailClient::Description() const { return "Your mail program opens with the message ready to send."; }

// ---- SMTP ----

namespace {

// The server's replies as libcurl passes them on: the last whole reply is
// kept, its continuation lines joined, so that a refusal can be told in
// the server's own words.
struct Replies {
    std::string pending, last;
};

int Listen(CURL*, curl_infotype type, char* data, std::size_t size, void* user)
{
    if (type != CURLINFO_HEADER_IN) return 0;
    auto* r = static_cast<Replies*>(user);
    std::string line(data, size);
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
    if (line.empty()) return 0;
    // "554-..." goes on in the next line; "554 ..." ends the reply.
    const bool more = line.size() > 3 && line[3] == '-';
    r->pending += (r->pending.empty() ? "" : " ") + (r->pending.empty() || line.size() < 4 ? line : line.substr(4));
    if (!more) {
        r->last = r->pending;
        r->pending.clear();
    }
    return 0;
}

// A reply that says no: a transient (4xx) or permanent (5xx) refusal.
bool Refusal(const std::string& reply)
{
    const auto digit = [&](std::size_t i) { return std::isdigit(static_cast<unsigned char>(reply[i])) != 0; };
    return reply.size() >= 3 && (reply[0] == '4' || reply[0] == '5') && digit(1) && digit(2);
}

}  // namespace

SmtpMail::SmtpMail(MailServer server) : server_(std::move(server))
{
    // The library's global set-up is done once, here on the window's
    // thread, before any sending thread can need it.
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    (void)ready;
}

bool SmtpMail::Send(const MailMessage& message, std::string& error)
{
    std::unique_ptr<CURL, void (*)(CURL*)> curl(curl_easy_init(), curl_easy_cleanup);
    if (!curl) {
        error = "The mail library could not start.";
        return false;
    }
    CURL* c = curl.get();
    const std::string scheme = server_.security == "ssl" ? "smtps://" : "smtp://";
    const std::string url = scheme + server_.host + ":" + std::to_string(server_.port);
    curl_easy_setopt(c, CURLOPT_URL, url.c_str());
    if (server_.security == "starttls") curl_easy_setopt(c, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    if (!server_.user.empty()) {
        curl_easy_setopt(c, CURLOPT_USERNAME, server_.user.c_str());
        curl_easy_setopt(c, CURLOPT_PASSWORD, server_.password.c_str());
    }
    const std::string from = "<" + (server_.from.empty() ? server_.user : server_.from) + ">";
    const std::string to = "<" + message.to + ">";
    curl_easy_setopt(c, CURLOPT_MAIL_FROM, from.c_str());
    std::unique_ptr<curl_slist, void (*)(curl_slist*)> rcpt(curl_slist_append(nullptr, to.c_str()), curl_slist_free_all);
    curl_easy_setopt(c, CURLOPT_MAIL_RCPT, rcpt.get());

    curl_slist* headers = nullptr;
    const std::string hFrom = "From: " + from;
    const std::string hTo = "To: " + to;
    const std::string hSubject = "Subject: " + HeaderText(message.subject);
    for (const std::string* h : {&hFrom, &hTo, &hSubject}) headers = curl_slist_append(headers, h->c_str());
    std::unique_ptr<curl_slist, void (*)(curl_slist*)> ownHeaders(headers, curl_slist_free_all);
    curl_easy_setopt(c, CURLOPT_HTTPHEADER, headers);

    std::unique_ptr<curl_mime, void (*)(curl_mime*)> mime(curl_mime_init(c), curl_mime_free);
    curl_mimepart* text = curl_mime_addpart(mime.get());
    const std::string body = CrLf(message.body);
    curl_mime_data(text, body.c_str(), body.size());
    curl_mime_type(text, "text/plain; charset=UTF-8");
    curl_mime_encoder(text, "quoted-printable");
    if (!message.attachmentPath.empty() || !message.attachmentData.empty()) {
        curl_mimepart* file = curl_mime_addpart(mime.get());
        // The bytes that were written go out, not what the file may hold
        // by now.
        if (!message.attachmentData.empty())
            curl_mime_data(file, message.attachmentData.data(), message.attachmentData.size());
        else
            curl_mime_filedata(file, message.attachmentPath.c_str());
        curl_mime_filename(file, message.attachmentName.c_str());
        curl_mime_type(file, "application/zip");
        curl_mime_encoder(file, "base64");
    }
    curl_easy_setopt(c, CURLOPT_MIMEPOST, mime.get());

    // Every wait is bounded: the connection, the greeting and each reply,
    // an upload that stops moving, and the whole exchange. No signals: the
    // send may run on a thread of its own.
    const long wait = std::max(1, server_.wait);
    curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT, wait);
    curl_easy_setopt(c, CURLOPT_SERVER_RESPONSE_TIMEOUT, wait);
    curl_easy_setopt(c, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(c, CURLOPT_LOW_SPEED_TIME, wait);
    curl_easy_setopt(c, CURLOPT_TIMEOUT, 3 * wait);
    char detail[CURL_ERROR_SIZE] = "";
    curl_easy_setopt(c, CURLOPT_ERRORBUFFER, detail);
    // The server's replies reach Listen (and nowhere else: nothing is
    // printed).
    Replies replies;
    curl_easy_setopt(c, CURLOPT_DEBUGFUNCTION, Listen);
    curl_easy_setopt(c, CURLOPT_DEBUGDATA, &replies);
    curl_easy_setopt(c, CURLOPT_VERBOSE, 1L);

    const CURLcode result = curl_easy_perform(c);

    // The message has been taken (or refused). The connection still
    // open says goodbye when it is closed and would wait for the server's
    // answer to that, beyond every bound above; its reading side is shut
    // first, so that the goodbye is sent and the close does not wait.
    curl_socket_t open = CURL_SOCKET_BAD;
    if (curl_easy_getinfo(c, CURLINFO_ACTIVESOCKET, &open) == CURLE_OK && open != CURL_SOCKET_BAD)
        ::shutdown(open, SHUT_RD);
    // The message's parts are let go before the handle that refers to
    // them.
    mime.reset();
    curl.reset();

    if (result == CURLE_OK) return true;
    if (Refusal(replies.last)) {
        error = "The mail server refused the message: " + replies.last;
    } else if (result == CURLE_OPERATION_TIMEDOUT) {
        error = "The mail server " + server_.host + " did not answer in time" +
                (detail[0] ? std::string(" (") + detail + ")." : std::string("."));
    } else {
        error = std::string(curl_easy_strerror(result)) + (detail[0] ? std::string(": ") + detail : std::string());
    }
    return false;
}

std::string SmtpMail::Description() const
{
    return "The message is sent by the mail server " + server_.host + ".";
}

// ---- the user's server settings ----

std::string MailSettingsPath()
{
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    const fs::path base = xdg && *xdg == '/' ? fs::path(xdg) : fs::path(home ? home : ".") / ".config";
    return (base / "Ranvel" / "mail.ini").string();
}

MailServer LoadMailServer()
{
    const std::string path = MailSettingsPath();
    auto get = [&](const char* key, const std::string& deflt) {
        return ini::ReadValue(path, kSection, key).value_or(deflt);
    };
    MailServer s;
    s.host = get("Host", "");
    try {
        s.port = std::stoi(get("Port", "587"));
    } catch (const std::exception&) {
        s.port = 587;
    }
    s.security = get("Security", "starttls");
    s.user = get("User", "");
    s.password = get("Password", "");
    s.from = get("From", "");
    try {
        s.wait = std::clamp(std::stoi(get("Wait", "20")), 1, 300);
    } catch (const std::exception&) {
        s.wait = 20;
    }
    s.savePassword = !s.password.empty();
    if (s.password.empty()) s.password = SessionPassword();
    return s;
}

bool SaveMailServer(const MailServer& server, std::string& error)
{
    const std::string path = MailSettingsPath();
    SessionPassword() = server.savePassword ? std::string() : server.password;
    std::error_code ec;
    fs::create_directories(fs::path(path).parent_path(), ec);
    std::string text = std::string("[") + kSection + "]\n";
    text += "Host=" + server.host + "\n";
    text += "Port=" + std::to_string(server.port) + "\n";
    text += "Security=" + server.security + "\n";
    text += "User=" + server.user + "\n";
    text += "From=" + server.from + "\n";
    text += "Wait=" + std::to_string(server.wait) + "\n";
    text += "Password=" + (server.savePassword ? server.password : std::string()) + "\n";
    // Written into a file that is private from its first byte, then put in
    // place whole.
    const std::string work = path + ".part";
    ::unlink(work.c_str());
    const int fd = ::open(work.c_str(), O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (fd < 0) {
        error = "cannot write " + path;
        return false;
    }
    const bool written = ::write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(fd);
    if (!written || ::rename(work.c_str(), path.c_str()) != 0) {
        ::unlink(work.c_str());
        error = "cannot write " + path;
        return false;
    }
    return true;
}

MailTransport& Mailer()
{
    if (g_mailer) return *g_mailer;
    // Made again only when the settings changed: a mail on its way keeps
    // the transport it was given.
    static std::unique_ptr<MailTransport> chosen;
    static MailServer last;
    const MailServer server = LoadMailServer();
    const auto key = [](const MailServer& s) {
        return std::tie(s.host, s.port, s.security, s.user, s.password, s.from, s.wait);
    };
    if (!chosen || key(server) != key(last)) {
        if (server.Configured()) chosen = std::make_unique<SmtpMail>(server);
        else chosen = std::make_unique<DesktopMailClient>();
        last = server;
    }
    return *chosen;
}

void SetMailer(MailTransport* mailer) { g_mailer = mailer; }

}  // namespace ranvel
