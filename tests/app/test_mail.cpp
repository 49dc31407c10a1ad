// Mail: the zip that carries the report, the address check, the steps of
// sending with their private folder (new every time, refused when it is not
// the user's alone), a real send through a mail server on this machine, a
// server that stalls or refuses (answered within the bound, in the
// server's words, the window alive meanwhile), and the privacy of the saved
// password.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QElapsedTimer>
#include <QProcess>
#include <QPushButton>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <random>

#include "app/app_fixture.h"
#include "ranvel/app/frmEmail.h"
#include "ranvel/platform/gui/mail.h"
#include "ranvel/platform/gui/zip.h"

namespace ranvel::test {
namespace {

namespace fs = std::filesystem;

std::string SomeBytes(std::size_t n)
{
    std::mt19937 random(42);
    std::string b(n, '\0');
    for (char& c : b) c = static_cast<char>(random() & 0xFF);
    return b;
}

std::string Slurp(const fs::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// Keeps what it was asked to send, the zip's bytes included, and answers
// as told.
class KeptMail : public MailTransport {
public:
    bool fail = false;
    MailMessage sent;
    std::string zipBytes;
    bool Send(const MailMessage& m, std::string& error) override
    {
        sent = m;
        zipBytes = Slurp(m.attachmentPath);
        if (fail) error = "the server said no";
        return !fail;
    }
    std::string Description() const override { return "kept"; }
    bool hands = false;
    bool Delivers() const override { return !hands; }
};

// An environment variable set for one test and put back after it.
class EnvVar {
public:
    EnvVar(const char* name, const std::string& value) : name_(name), had_(qEnvironmentVariableIsSet(name))
    {
        old_ = qgetenv(name);
        Set(value);
    }
    ~EnvVar() { had_ ? qputenv(name_, old_) : qunsetenv(name_); }
    void Set(const std::string& value) { qputenv(name_, QByteArray::fromStdString(value)); }
    void Unset() { qunsetenv(name_); }

private:
    const char* name_;
    bool had_;
    QByteArray old_;
};

class Mail : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        // The session's runtime folder and the cache of the test's own:
        // tests run side by side.
        fs::create_directories(app / "run");
        fs::permissions(app / "run", fs::perms::owner_all, fs::perm_options::replace);
        runtime.emplace("XDG_RUNTIME_DIR", (app / "run").string());
        cache.emplace("XDG_CACHE_HOME", (app / "cache").string());
        SetMailer(&kept);
        report = app / "Arjun-Muhurtha.PDF";
        std::ofstream(report, std::ios::binary) << SomeBytes(50000);
    }
    void TearDown() override
    {
        SetMailer(nullptr);
        runtime.reset();
        cache.reset();
        AppTest::TearDown();
    }
    frmEmail* Dialog(const std::string& to)
    {
        auto* d = new frmEmail(report.string());
        Child<QLineEdit>(d, "txtMailTo")->setText(QString::fromStdString(to));
        return d;
    }
    static unsigned Mode(const fs::path& p)
    {
        struct stat st {};
        ::lstat(p.c_str(), &st);
        return st.st_mode & 07777;
    }
    KeptMail kept;
    fs::path report;
    std::optional<EnvVar> runtime, cache;
};

TEST_F(Mail, TheZipHoldsTheFileByNameAloneAndDeflated)
{
    const std::string zip = (app / "out.zip").string();
    std::string error;
    ASSERT_TRUE(ZipFiles(zip, {report.string()}, error)) << error;
    const std::vector<ZipEntry> entries = ReadZip(zip, error);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name, "Arjun-Muhurtha.PDF");
    EXPECT_TRUE(entries[0].deflated);
    EXPECT_EQ(entries[0].bytes, Slurp(report));
    EXPECT_EQ(FolderOf(zip), app.string());

    // A file that isn't there leaves no archive behind.
    fs::remove(zip);
    EXPECT_FALSE(ZipFiles(zip, {(app / "missing.PDF").string()}, error));
    EXPECT_FALSE(fs::exists(zip));
    EXPECT_FALSE(fs::exists(zip + ".part"));
}

TEST_F(Mail, AnAddressNeedsAnAtAndAPoint)
{
    for (const char* bad : {"a@b", "a.b", ""}) {
        frmEmail* d = Dialog(bad);
        EXPECT_FALSE(d->Validated()) << bad;
        EXPECT_EQ(messages.Messages().back().title, "Invalid Email Address.");
        EXPECT_EQ(messages.Messages().back().text, "Please type a valid Email address.");
    }
    EXPECT_TRUE(Dialog("astro@example.com")->Validated());
}

TEST_F(Mail, ASentMailTakesItsFolderAlongAndAFailedOneLeavesIt)
{
    frmEmail* d = Dialog("astro@example.com");
    EXPECT_EQ(d->windowTitle(), "Email Horoscope");
    EXPECT_TRUE(Child<QLineEdit>(d, "txtSubject")->text().isEmpty());  // a Muhurtha names no one
    EXPECT_TRUE(Child<QPlainTextEdit>(d, "txtMailText")->toPlainText().startsWith(
        "The attached zip file (Muhurta.zip) contains a generated Muhurta"));
    ASSERT_TRUE(d->Send());
    EXPECT_EQ(kept.sent.to, "astro@example.com");
    EXPECT_EQ(kept.sent.attachmentName, "MUHURTA.ZIP");
    EXPECT_TRUE(kept.sent.body.ends_with("\n\nHoroscope Generated by Ranvel\nhttps://ranvel.example/"));
    EXPECT_EQ(fs::path(d->MailFolder()).parent_path(), app / "run");
    EXPECT_FALSE(fs::exists(d->MailFolder()));
    EXPECT_EQ(Child<QLabel>(d, "lblStatus")->text(), "Mail sent.");
    // What was handed over is what was written, and holds the report.
    EXPECT_EQ(kept.sent.attachmentData, kept.zipBytes);
    const std::string zip = (app / "sent.zip").string();
    std::ofstream(zip, std::ios::binary) << kept.zipBytes;
    std::string error;
    const auto entries = ReadZip(zip, error);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].bytes, Slurp(report));

    // A mail program handed the message reads the attachment later: the
    // zip stays for it, in a folder of its own that only the user enters.
    kept.hands = true;
    frmEmail* handed = Dialog("astro@example.com");
    EXPECT_TRUE(handed->Send());
    EXPECT_NE(handed->MailFolder(), d->MailFolder());
    EXPECT_TRUE(fs::exists(fs::path(handed->MailFolder()) / "MUHURTA.ZIP"));
    EXPECT_EQ(Mode(handed->MailFolder()), 0700u);
    EXPECT_EQ(Mode(fs::path(handed->MailFolder()) / "MUHURTA.ZIP"), 0600u);
    kept.hands = false;

    kept.fail = true;
    frmEmail* failed = Dialog("astro@example.com");
    EXPECT_FALSE(failed->Send());
    EXPECT_EQ(messages.Messages().back().title, "Error Sending Mail");
    EXPECT_EQ(messages.Messages().back().text, "the server said no");
    EXPECT_TRUE(fs::exists(fs::path(failed->MailFolder()) / "MUHURTA.ZIP"));
    EXPECT_EQ(Mode(failed->MailFolder()), 0700u);

    // A runtime folder that is gone leaves the mail to the user's cache.
    runtime->Set((app / "gone").string());
    kept.fail = false;
    frmEmail* cached = Dialog("astro@example.com");
    ASSERT_TRUE(cached->Send());
    EXPECT_EQ(fs::path(cached->MailFolder()).parent_path(), app / "cache" / "ranvel");
    EXPECT_EQ(Mode(app / "cache" / "ranvel"), 0700u);
}

// A folder that another user made first, opened to everyone, or turned
// into a link: the mail is refused before anything is written or sent.
TEST_F(Mail, AMailFolderThatIsNotTheUsersAloneIsRefused)
{
    const fs::path ranvel = app / "cache" / "ranvel", elsewhere = app / "elsewhere";
    fs::create_directories(elsewhere);
    fs::permissions(elsewhere, fs::perms::owner_all, fs::perm_options::replace);
    const passwd* nobody = ::getpwnam("nobody");
    const bool root = ::geteuid() == 0 && nobody;

    struct Case {
        std::string name, says;
        std::function<void()> make;
        fs::path looked;  // what must stay empty
    };
    std::vector<Case> cases = {
        {"open to all", "open to other users (mode 0777)",
         [&] {
             fs::create_directories(ranvel);
             fs::permissions(ranvel, fs::perms::all, fs::perm_options::replace);
         },
         ranvel},
        {"a link", "a link to another place",
         [&] {
             fs::create_directories(ranvel.parent_path());
             fs::create_directory_symlink(elsewhere, ranvel);
         },
         elsewhere},
    };
    if (root) {
        cases.push_back({"another owner", "owned by another user",
                         [&] {
                             fs::create_directories(ranvel);
                             fs::permissions(ranvel, fs::perms::owner_all, fs::perm_options::replace);
                             ASSERT_EQ(::chown(ranvel.c_str(), nobody->pw_uid, nobody->pw_gid), 0);
                         },
                         ranvel});
        cases.push_back({"a runtime folder of another owner", "owned by another user",
                         [&] {
                             runtime->Set((app / "run").string());
                             ASSERT_EQ(::chown((app / "run").c_str(), nobody->pw_uid, nobody->pw_gid), 0);
                         },
                         app / "run"});
    }
    runtime->Unset();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        fs::remove_all(ranvel);
        c.make();
        const std::size_t before = messages.Messages().size();
        kept.sent = {};
        frmEmail* d = Dialog("astro@example.com");
        EXPECT_FALSE(d->Send());
        EXPECT_TRUE(kept.sent.to.empty()) << "a mail left";
        ASSERT_EQ(messages.Messages().size(), before + 1);
        EXPECT_EQ(messages.Messages().back().title, "Error Sending Mail");
        const std::string& text = messages.Messages().back().text;
        EXPECT_NE(text.find(c.says), std::string::npos) << text;
        EXPECT_NE(text.find("Nothing was written or sent."), std::string::npos) << text;
        EXPECT_TRUE(fs::is_empty(c.looked)) << "something was written in " << c.looked;
        EXPECT_TRUE(Child<QLabel>(d, "lblStatus")->text().isEmpty());
    }
    if (!root) GTEST_SKIP() << "a folder of another owner needs root to be made; the other cases ran";
}

// A server on loopback spoken to without encryption, waited for `wait`
// seconds at each step.
MailServer Plain(int port, int wait)
{
    MailServer server;
    server.host = "127.0.0.1";
    server.port = port;
    server.security = "none";
    server.wait = wait;
    return server;
}

// A mail server on loopback that keeps what it takes in a Maildir, and
// answers by the recipient: "refuse@" is refused with the server's reason,
// "stall@" never hears its answer to the message, "quiet@" is taken and
// then never hears the answer to its goodbye.
class LoopbackServer {
public:
    explicit LoopbackServer(const fs::path& box)
    {
        if (!fs::exists("/usr/bin/python3") || QProcess::execute("/usr/bin/python3", {"-c", "import aiosmtpd"}) != 0)
            return;
        const char* script = R"py(
import asyncio, mailbox, sys
from aiosmtpd.smtp import SMTP
box = mailbox.Maildir(sys.argv[1], create=True)
quiet = set()
class Handler:
    async def handle_DATA(self, server, session, envelope):
        to = envelope.rcpt_tos[0] if envelope.rcpt_tos else ''
        if to.startswith('refuse@'): return '554 5.7.1 Message rejected'
        if to.startswith('stall@'): await asyncio.sleep(3600)
        if to.startswith('quiet@'): quiet.add(id(session))
        box.add(envelope.original_content)
        return '250 OK'
    async def handle_QUIT(self, server, session, envelope):
        if id(session) in quiet: await asyncio.sleep(3600)
        return '221 Bye'
async def main():
    srv = await asyncio.get_running_loop().create_server(lambda: SMTP(Handler()), '127.0.0.1', 0)
    print(srv.sockets[0].getsockname()[1], flush=True)
    await srv.serve_forever()
asyncio.run(main())
)py";
        process.start("/usr/bin/python3", {"-c", script, QString::fromStdString(box.string())});
        if (process.waitForReadyRead(10000)) port = process.readLine().trimmed().toInt();
    }
    ~LoopbackServer()
    {
        process.kill();
        process.waitForFinished(5000);
    }
    MailServer Server(int wait = 20) const
    {
        MailServer s = Plain(port, wait);
        s.from = "desk@ranvel.example";
        return s;
    }
    QProcess process;
    int port = 0;
};

// A server that takes connections and never says a word: the kernel
// completes them, nobody accepts them.
class SilentServer {
public:
    SilentServer()
    {
        fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t n = sizeof a;
        if (fd >= 0 && ::bind(fd, reinterpret_cast<sockaddr*>(&a), n) == 0 && ::listen(fd, 8) == 0 &&
            ::getsockname(fd, reinterpret_cast<sockaddr*>(&a), &n) == 0)
            port = ntohs(a.sin_port);
    }
    ~SilentServer() { ::close(fd); }
    int fd = -1, port = 0;
};

double Seconds(const std::function<void()>& f)
{
    const auto from = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count();
}

// A mail server on this machine takes the message; its attachment comes
// back byte for byte.
TEST_F(Mail, AMailServerReceivesTheReport)
{
    const fs::path box = app / "maildir";
    LoopbackServer server(box);
    if (server.port == 0) GTEST_SKIP() << "no loopback mail server (python3-aiosmtpd) here";

    SmtpMail smtp(server.Server());
    const std::string zip = (app / "MUHURTA.ZIP").string();
    std::string error;
    ASSERT_TRUE(ZipFiles(zip, {report.string()}, error));
    MailMessage m{"astro@example.com", "Your Muhurtha \u2014 Arjun", "Here it is.\nRegards", zip, "MUHURTA.ZIP", {}};
    ASSERT_TRUE(smtp.Send(m, error)) << error;

    // The attachment as the server kept it.
    const fs::path back = app / "back.zip";
    const QString extract =
        "import mailbox,sys\n"
        "for msg in mailbox.Maildir(sys.argv[1]):\n"
        "  for part in msg.walk():\n"
        "    if part.get_filename()=='MUHURTA.ZIP': open(sys.argv[2],'wb').write(part.get_payload(decode=True))\n"
        "  print(msg['Subject']); print(msg['To'])\n";
    QProcess py;
    py.start("/usr/bin/python3", {"-c", extract, QString::fromStdString(box.string()), QString::fromStdString(back.string())});
    ASSERT_TRUE(py.waitForFinished(10000));
    const QString said = QString::fromUtf8(py.readAllStandardOutput());
    EXPECT_TRUE(said.contains("<astro@example.com>")) << said.toStdString();
    EXPECT_EQ(Slurp(back), Slurp(zip));
}

// A server that stalls is given up within the bound, one that takes the
// message and never answers the goodbye does not hold the sender, and a
// refusal is told in the server's own words.
TEST_F(Mail, AServerThatStallsOrRefusesIsAnsweredWithinTheBoundInItsOwnWords)
{
    constexpr int kWait = 1;
    std::string error;
    MailMessage m{"stall@example.com", "Muhurtha", "Here it is.", "", "MUHURTA.ZIP", SomeBytes(2000)};

    // No greeting at all.
    SilentServer silent;
    ASSERT_NE(silent.port, 0);
    const MailServer mute = Plain(silent.port, kWait);
    EXPECT_LT(Seconds([&] { EXPECT_FALSE(SmtpMail(mute).Send(m, error)); }), kWait + 1.5);
    EXPECT_TRUE(error.starts_with("The mail server 127.0.0.1 did not answer in time")) << error;

    LoopbackServer server(app / "maildir");
    if (server.port == 0) GTEST_SKIP() << "no loopback mail server (python3-aiosmtpd) here; the silent server ran";
    SmtpMail smtp(server.Server(kWait));
    // The message sent, its answer never coming.
    error.clear();
    EXPECT_LT(Seconds([&] { EXPECT_FALSE(smtp.Send(m, error)); }), kWait + 1.5);
    EXPECT_TRUE(error.starts_with("The mail server 127.0.0.1 did not answer in time")) << error;
    // Taken, the goodbye unanswered: sent, and at once.
    m.to = "quiet@example.com";
    EXPECT_LT(Seconds([&] { EXPECT_TRUE(smtp.Send(m, error)) << error; }), kWait * 0.8);
    // Refused: the server's words.
    m.to = "refuse@example.com";
    EXPECT_FALSE(smtp.Send(m, error));
    EXPECT_EQ(error, "The mail server refused the message: 554 5.7.1 Message rejected");

    // Through the dialog the refusal is the box's text, and the zip stays.
    SmtpMail refusing(server.Server(kWait));
    SetMailer(&refusing);
    frmEmail* d = Dialog("refuse@example.com");
    EXPECT_FALSE(d->Send());
    EXPECT_EQ(messages.Messages().back().title, "Error Sending Mail");
    EXPECT_EQ(messages.Messages().back().text, "The mail server refused the message: 554 5.7.1 Message rejected");
    EXPECT_TRUE(fs::exists(fs::path(d->MailFolder()) / "MUHURTA.ZIP"));
}

// While the server is awaited the dialog goes on drawing and answering:
// its clock never stops for long, its commands are held, and closing it
// waits for the answer.
TEST_F(Mail, TheWindowStaysAliveWhileTheServerIsAwaited)
{
    SilentServer silent;
    ASSERT_NE(silent.port, 0);
    const MailServer mute = Plain(silent.port, 1);
    SmtpMail smtp(mute);
    SetMailer(&smtp);
    frmEmail* d = Dialog("astro@example.com");
    d->show();

    QElapsedTimer clock;
    clock.start();
    qint64 last = 0, longest = 0;
    bool held = false, stayed = true;
    QTimer tick;
    tick.setInterval(20);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        longest = std::max(longest, clock.elapsed() - last);
        last = clock.elapsed();
        if (Child<QLabel>(d, "lblStatus")->text() == "Initializing MAPI Client...." &&
            !Child<QPushButton>(d, "cmdSend")->isEnabled()) {
            held = true;
            d->reject();
            stayed = stayed && d->isVisible();
        }
    });
    tick.start();
    EXPECT_FALSE(d->Send());
    tick.stop();
    EXPECT_GE(clock.elapsed(), 1900);  // the second's pause, then the server's second
    EXPECT_LT(clock.elapsed(), 4000);
    EXPECT_LT(longest, 300) << "the window stood still for " << longest << " ms";
    EXPECT_TRUE(held);
    EXPECT_TRUE(stayed);
    EXPECT_TRUE(Child<QPushButton>(d, "cmdSend")->isEnabled());
    EXPECT_EQ(messages.Messages().back().title, "Error Sending Mail");
    EXPECT_NE(messages.Messages().back().text.find("did not answer in time"), std::string::npos);
}

TEST_F(Mail, TheSavedPasswordIsTheOwnersAlone)
{
    MailServer s;
    s.host = "mail.example.com";
    s.user = "astro";
    s.password = "secret";
    std::string error;
    ASSERT_TRUE(SaveMailServer(s, error)) << error;
    struct stat st {};
    ASSERT_EQ(::stat(MailSettingsPath().c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0600u);
    // Not written unless asked; it serves this run all the same.
    EXPECT_EQ(Slurp(MailSettingsPath()).find("secret"), std::string::npos);
    EXPECT_EQ(LoadMailServer().password, "secret");
    s.savePassword = true;
    ASSERT_TRUE(SaveMailServer(s, error));
    EXPECT_EQ(LoadMailServer().password, "secret");
    ASSERT_EQ(::stat(MailSettingsPath().c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0600u);
    fs::remove(MailSettingsPath());
}

}  // namespace
}  // namespace ranvel::test
