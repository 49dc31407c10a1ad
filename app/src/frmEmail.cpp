#include "ranvel/app/frmEmail.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QThread>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/platform/gui/mail.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/gui/wholefile.h"
#include "ranvel/platform/gui/zip.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace fs = std::filesystem;

namespace {

// The maker's address, at the foot of every mail.
const char* const kWebAddress = "https://ranvel.example/";
const char* const kZipName = "MUHURTA.ZIP";

// The text that opens the message, by kind; PERNAME stands for the person.
std::string OpeningText(int kind, const std::string& name)
{
    std::string text =
        kind == 1
            ? "The attached zip file (Muhurta.Zip) contains a Horoscope for PERNAME. To view the horoscope save the Zip "
              "file in your root directory i.e. 'C:\\'(the zip file may not work if not saved in root directory) and "
              "unzip it.The horoscope is in HTML format and can be viewed using IE or Netscape, to view it click on "
              "Index.HTML."
            : "The attached zip file (Muhurta.zip) contains a generated Muhurta To view the Muhurta save the Zip file on "
              "your hard disk.The Muhurta is in PDF format and can be viewed using Adobe Acrobat Reader. Acrobat reader "
              "is available Free, if you don't have it, please look for it on Adobe's website";
    text += " (\"https://get.adobe.com/reader/\").";
    text += "\n" + std::string(63, '-') + "\n\n";
    std::size_t at;
    while ((at = text.find("PERNAME")) != std::string::npos) text.replace(at, 7, name);
    return text;
}

}  // namespace

int& MailKind()
{
    static int kind = 2;
    return kind;
}

namespace {

// What makes a folder unfit to hold the report, empty when nothing does.
// Looked at through lstat, so that a link is seen as a link. `only` asks
// for a folder that no one but its owner may enter; otherwise no one else
// may write in it.
std::string Untrusted(const std::string& path, bool only, struct stat& st)
{
    if (::lstat(path.c_str(), &st) != 0) return std::string("not there (") + std::strerror(errno) + ")";
    if (S_ISLNK(st.st_mode)) return "a link to another place";
    if (!S_ISDIR(st.st_mode)) return "not a folder";
    if (st.st_uid != ::geteuid()) return "owned by another user";
    const unsigned mode = st.st_mode & 07777;
    if (only ? mode != 0700 : (mode & 022) != 0) {
        char octal[8];
        std::snprintf(octal, sizeof octal, "%04o", mode);
        return std::string("open to other users (mode ") + octal + ")";
    }
    return {};
}

std::string Refused(const std::string& path, const std::string& why)
{
    return "The folder for the mail's attachment, '" + path + "', is " + why +
           ": it is not yours alone. Nothing was written or sent.";
}

}  // namespace

bool MakeMailFolder(std::string& folder, std::string& error)
{
    std::string parent;
    // The session's runtime folder when the session has one; a name that
    // leads nowhere (a session long gone) gives way to the cache.
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    struct stat there {};
    if (runtime && *runtime == '/' && ::lstat(runtime, &there) == 0) {
        parent = runtime;
    } else {
        const char* xdg = std::getenv("XDG_CACHE_HOME");
        const char* home = std::getenv("HOME");
        if (!(xdg && *xdg == '/') && !(home && *home == '/')) {
            error = "The folder for the mail's attachment can't be found: neither a cache folder nor a home folder "
                    "is set. Nothing was written or sent.";
            return false;
        }
        const fs::path cache = xdg && *xdg == '/' ? fs::path(xdg) : fs::path(home) / ".cache";
        std::error_code ec;
        if (!fs::exists(cache, ec)) {
            fs::create_directories(cache.parent_path(), ec);
            ::mkdir(cache.c_str(), 0700);
        }
        parent = (cache / "ranvel").string();
        ::mkdir(parent.c_str(), 0700);
    }
    struct stat before {}, after {}, made {};
    if (std::string why = Untrusted(parent, false, before); !why.empty()) {
        error = Refused(parent, why);
        return false;
    }
    // A new name every time, made by the system with the owner's rights
    // alone: no one can have made it first.
    std::string name = parent + "/RVTEMP19-XXXXXX";
    if (!::mkdtemp(name.data())) {
        error = "The folder for the mail's attachment could not be made in '" + parent + "': " +
                std::strerror(errno) + ". Nothing was written or sent.";
        return false;
    }
    std::string why = Untrusted(name, true, made);
    std::string where = name;
    if (why.empty()) {
        where = parent;
        why = Untrusted(parent, false, after);
        if (why.empty() && (after.st_dev != before.st_dev || after.st_ino != before.st_ino))
            why = "another folder than a moment ago";
    }
    if (!why.empty()) {
        // rmdir takes an empty folder and never follows a link.
        ::rmdir(name.c_str());
        error = Refused(where, why);
        return false;
    }
    folder = name;
    return true;
}

frmEmail::frmEmail(const std::string& sourceFile, QWidget* parent) : QDialog(parent), source_(sourceFile)
{
    setObjectName("frmEmail");
    setWindowTitle("Email Horoscope");
    setFixedSize(540, 470);
    QLabel* l = ui::Label(this, "lblTo", "&To:", {16, 16, 70, 24});
    txtMailTo_ = ui::TextBox(this, "txtMailTo", {92, 16, 432, 24});
    ui::Names(l, txtMailTo_);
    txtMailTo_->setPlaceholderText("name@example.com");
    l = ui::Label(this, "lblSubject", "S&ubject:", {16, 48, 70, 24});
    txtSubject_ = ui::TextBox(this, "txtSubject", {92, 48, 432, 24});
    ui::Names(l, txtSubject_);
    l = ui::Label(this, "lblMessage", "&Message:", {16, 80, 70, 24});
    txtMailText_ = new QPlainTextEdit(this);
    txtMailText_->setObjectName("txtMailText");
    txtMailText_->setGeometry(92, 80, 432, 200);
    ui::Names(l, txtMailText_);
    QLabel* note = ui::Label(this, "lblNote",
                             "This message will be send in the Email. You may write your own message or modify this "
                             "one. The Muhurta will be sent as an attachement.",
                             {92, 288, 432, 40});
    note->setWordWrap(true);
    lblWay_ = ui::Label(this, "lblWay", QString(), {92, 336, 300, 40});
    lblWay_->setWordWrap(true);
    QPushButton* server = ui::Button(this, "cmdServer", "Mail Se&rver...", {400, 340, 124, 28});
    lblStatus_ = ui::Label(this, "lblStatus", QString(), {16, 388, 508, 22});
    lblStatus_->setAccessibleName("Status");
    QPushButton* send = ui::Button(this, "cmdSend", "&Send", {328, 424, 96, 30});
    send->setIcon(QIcon(":/icons/pdfemail.svg"));
    send->setDefault(true);
    QPushButton* cancel = ui::Button(this, "cmdCancel", "&Cancel", {432, 424, 92, 30});
    for (QLabel* lbl : {findChild<QLabel*>("lblTo"), findChild<QLabel*>("lblSubject"), findChild<QLabel*>("lblMessage")})
        lbl->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    // The subject names the person for a horoscope; a Muhurtha's stays empty,
    // and so does the name in the text.
    std::string name, subject;
    const int mode = Horomode();
    if (mode == 1 || mode == 4) {
        if (PersonChart()) name = PersonChart()->clsPerson().Name();
        subject = name + (mode == 1 ? "'s Horoscope" : "'s Varshaphala");
    } else if (mode == 2) {
        name = BoyChart()->clsPerson().Name() + " & " + GirlChart()->clsPerson().Name();
        subject = name + "'s Match Details";
    }
    txtSubject_->setText(Q(subject));
    txtMailText_->setPlainText(Q(OpeningText(MailKind(), name)));
    ShowWay();

    // A fault in a command ends it with its box; the dialog stays open.
    connect(send, &QPushButton::clicked, this, [this] {
        ui::RunCommand([this] {
            if (Validated() && Send()) accept();
        });
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(server, &QPushButton::clicked, this, [this] {
        ui::RunCommand([this] {
            frmMailServer dialog(this);
            dialog.exec();
            ShowWay();
        });
    });
}

void frmEmail::ShowWay() { lblWay_->setText(Q(Mailer().Description())); }

void frmEmail::Status(const QString& text)
{
    lblStatus_->setText(text);
    QApplication::processEvents();
}

bool frmEmail::Validated()
{
    const std::string to = S(txtMailTo_->text());
    if (to.find('@') == std::string::npos || to.find('.') == std::string::npos) {
        MsgBox("Please type a valid Email address.", MsgButtons::OK, "Invalid Email Address.", MsgIcon::Exclamation);
        txtMailTo_->setFocus();
        return false;
    }
    return true;
}

void frmEmail::reject()
{
    if (!busy_) QDialog::reject();
}

bool frmEmail::SendAway(const MailMessage& message, std::string& error)
{
    // The way out runs on a thread of its own, with its own copy of the
    // message, and hands back its answer when it ends; meanwhile the dialog
    // is drawn and answers, its commands held.
    MailTransport& way = Mailer();
    bool sent = false;
    std::string said;
    std::unique_ptr<QThread> worker(QThread::create([&way, message, &sent, &said] {
        try {
            sent = way.Send(message, said);
        } catch (const std::exception& e) {
            // A fault on the way is a mail that did not leave, told as such.
            sent = false;
            said = e.what();
        }
    }));
    QEventLoop wait;
    connect(worker.get(), &QThread::finished, &wait, &QEventLoop::quit);
    const QList<QWidget*> held = {txtMailTo_, txtSubject_, txtMailText_, findChild<QWidget*>("cmdSend"),
                                  findChild<QWidget*>("cmdCancel"), findChild<QWidget*>("cmdServer")};
    for (QWidget* w : held) w->setEnabled(false);
    busy_ = true;
    worker->start();
    wait.exec();
    worker->wait();
    busy_ = false;
    for (QWidget* w : held) w->setEnabled(true);
    error = said;
    return sent;
}

bool frmEmail::Send()
{
    Status("Zipping files....");
    std::string folder, error;
    auto fail = [&](const std::string& why) {
        Status(QString());
        MsgBox(why, MsgButtons::OK, "Error Sending Mail", MsgIcon::Critical);
        return false;
    };
    if (!MakeMailFolder(folder, error)) return fail(error);
    folder_ = folder;
    const std::string zip = folder + "/" + kZipName;
    std::string bytes;
    if (MailKind() == 2 && !ZipFiles(zip, {source_}, error, &bytes)) {
        ::rmdir(folder.c_str());
        return fail(error);
    }
    // A second's pause, the events let through.
    const QDateTime until = QDateTime::currentDateTime().addSecs(1);
    while (QDateTime::currentDateTime() < until) QApplication::processEvents(QEventLoop::AllEvents, 50);
    Status("Initializing MAPI Client....");
    // What leaves is what was written, read back through one descriptor.
    if (MailKind() == 2 && !SameAsWritten(zip, bytes, error)) return fail(error);

    MailMessage m;
    m.to = S(txtMailTo_->text());
    m.subject = S(txtSubject_->text());
    m.body = S(txtMailText_->toPlainText()) + "\n\n" + "Horoscope Generated by " + AppTitle() + "\n" + kWebAddress;
    m.attachmentPath = zip;
    m.attachmentName = kZipName;
    m.attachmentData = std::move(bytes);
    const bool delivers = Mailer().Delivers();
    if (!SendAway(m, error)) return fail(error);
    // A mail program that was handed the message sends it later, and reads
    // the attachment then: the zip stays for it.
    if (!delivers) {
        Status("The message is ready in your mail program.");
        return true;
    }
    ::unlink(zip.c_str());
    ::rmdir(folder.c_str());
    Status("Mail sent.");
    return true;
}

// ---- the mail server ----

frmMailServer::frmMailServer(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmMailServer");
    setWindowTitle("Mail Server");
    setFixedSize(460, 360);
    const MailServer s = LoadMailServer();
    QLabel* intro = ui::Label(this, "lblIntro",
                              "Leave the server empty to hand each mail to your desktop's mail program. With a server "
                              "set here, mail is sent to it directly.",
                              {16, 12, 428, 40});
    intro->setWordWrap(true);
    auto row = [this](const char* name, const char* caption, int y) {
        QLabel* l = ui::Label(this, (std::string("lbl") + (name + 3)).c_str(), caption, {16, y, 110, 24});
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        return l;
    };
    QLabel* l = row("txtHost", "Ser&ver:", 64);
    auto* host = ui::TextBox(this, "txtHost", {132, 64, 312, 24});
    ui::Names(l, host);
    host->setText(Q(s.host));
    l = row("txtPort", "&Port:", 96);
    auto* port = new QSpinBox(this);
    port->setObjectName("txtPort");
    port->setGeometry(132, 96, 90, 24);
    port->setRange(1, 65535);
    port->setValue(s.port);
    ui::Names(l, port);
    l = row("cmbSecurity", "Se&curity:", 128);
    auto* security = ui::Combo(this, "cmbSecurity", false, {132, 128, 200, 24});
    security->addItem("STARTTLS", "starttls");
    security->addItem("SSL/TLS", "ssl");
    security->addItem("None (this computer only)", "none");
    security->setCurrentIndex(std::max(0, security->findData(Q(s.security))));
    ui::Names(l, security);
    l = row("txtUser", "&User name:", 160);
    auto* user = ui::TextBox(this, "txtUser", {132, 160, 312, 24});
    user->setText(Q(s.user));
    ui::Names(l, user);
    l = row("txtPassword", "Pass&word:", 192);
    auto* password = ui::TextBox(this, "txtPassword", {132, 192, 312, 24});
    password->setEchoMode(QLineEdit::Password);
    password->setText(Q(s.password));
    ui::Names(l, password);
    auto* keep = ui::Check(this, "chkSavePassword", "&Keep the password (in a file only you can read)", {132, 220, 312, 24});
    keep->setChecked(s.savePassword);
    l = row("txtFrom", "&From address:", 252);
    auto* from = ui::TextBox(this, "txtFrom", {132, 252, 312, 24});
    from->setText(Q(s.from));
    ui::Names(l, from);
    QPushButton* save = ui::Button(this, "cmdSave", "&Save", {252, 316, 92, 30});
    save->setDefault(true);
    QPushButton* cancel = ui::Button(this, "cmdCancel", "Cancel", {352, 316, 92, 30});
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(save, &QPushButton::clicked, this, [=, this] {
        ui::RunCommand([&] {
            MailServer n;
            n.host = S(host->text().trimmed());
            n.port = port->value();
            n.security = S(security->currentData().toString());
            n.user = S(user->text().trimmed());
            n.password = S(password->text());
            n.savePassword = keep->isChecked();
            n.from = S(from->text().trimmed());
            std::string error;
            if (!SaveMailServer(n, error)) {
                MsgBox(error, MsgButtons::OK, AppTitle(), MsgIcon::Critical);
                return;
            }
            accept();
        });
    });
}

}  // namespace ranvel
