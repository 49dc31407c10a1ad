#include "ranvel/platform/gui/mail.h"

#include <curl/curl.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QProcess>
#include <QStandardPaths>
#include <cstdlib>
#include <filesystem>
#include <memory>

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
    curl_slist* rcpt = curl_slist_append(nullptr, to.c_str());
    curl_easy_setopt(c, CURLOPT_MAIL_RCPT, rcpt);

    curl_slist* headers = nullptr;
    const std::string hFrom = "From: " + from;
    const std::string hTo = "To: " + to;
    const std::string hSubject = "Subject: " + HeaderText(message.subject);
    for (const std::string* h : {&hFrom, &hTo, &hSubject}) headers = curl_slist_append(headers, h->c_str());
    curl_easy_setopt(c, CURLOPT_HTTPHEADER, headers);

    curl_mime* mime = curl_mime_init(c);
    curl_mimepart* text = curl_mime_addpart(mime);
    const std::string body = CrLf(message.body);
    curl_mime_data(text, body.c_str(), body.size());
    curl_mime_type(text, "text/plain; charset=UTF-8");
    curl_mime_encoder(text, "quoted-printable");
    if (!message.attachmentPath.empty()) {
        curl_mimepart* file = curl_mime_addpart(mime);
        curl_mime_filedata(file, message.attachmentPath.c_str());
        curl_mime_filename(file, message.attachmentName.c_str());
        curl_mime_type(file, "application/zip");
        curl_mime_encoder(file, "base64");
    }
    curl_easy_setopt(c, CURLOPT_MIMEPOST, mime);
    curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT, 20L);
    curl_easy_setopt(c, CURLOPT_TIMEOUT, 120L);
    char detail[CURL_ERROR_SIZE] = "";
    curl_easy_setopt(c, CURLOPT_ERRORBUFFER, detail);

    const CURLcode result = curl_easy_perform(c);
    curl_mime_free(mime);
    curl_slist_free_all(headers);
    curl_slist_free_all(rcpt);
    if (result != CURLE_OK) {
        error = std::string(curl_easy_strerror(result)) + (detail[0] ? std::string(": ") + detail : std::string());
        return false;
    }
    return true;
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
    static std::unique_ptr<MailTransport> chosen;
    const MailServer server = LoadMailServer();
    if (server.Configured()) chosen = std::make_unique<SmtpMail>(server);
    else chosen = std::make_unique<DesktopMailClient>();
    return *chosen;
}

void SetMailer(MailTransport* mailer) { g_mailer = mailer; }

}  // namespace ranvel
