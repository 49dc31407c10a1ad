// The mail dialog: the exported report, zipped, goes out as an attachment
// through the desktop's mail program or the user's mail server.
#pragma once

#include <QDialog>
#include <string>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace ranvel {

struct MailMessage;

// The kind of the mail, process-wide: 1 HTML, 2 PDF.
int& MailKind();

// Makes the folder that holds one mail's zip: new at every mail, under the
// session's runtime folder ($XDG_RUNTIME_DIR) or else the user's cache
// ($XDG_CACHE_HOME/ranvel, ~/.cache/ranvel), readable by its owner alone.
// False, with a message that says so, when the folder or the one it is
// made in is not the user's alone (another owner, open to others, a link);
// nothing is then written.
bool MakeMailFolder(std::string& folder, std::string& error);

class frmEmail : public QDialog {
    Q_OBJECT
public:
    // sourceFile: the exported file that the zip will hold (kind 2).
    explicit frmEmail(const std::string& sourceFile, QWidget* parent = nullptr);

    // False, with its message, when the address lacks an "@" or a ".".
    bool Validated();
    // The steps of sending; true when the mail left (the dialog then closes).
    bool Send();
    // The folder of the last mail's zip (gone after a mail that the server
    // took), empty before a send.
    const std::string& MailFolder() const { return folder_; }

    // While a mail is on its way the dialog stays until it is answered.
    void reject() override;

private:
    void ShowWay();
    void Status(const QString& text);
    bool SendAway(const MailMessage& message, std::string& error);

    std::string source_;
    std::string folder_;
    bool busy_ = false;
    QLineEdit* txtMailTo_;
    QLineEdit* txtSubject_;
    QPlainTextEdit* txtMailText_;
    QLabel* lblStatus_;
    QLabel* lblWay_;
};

// The mail server settings of the user.
class frmMailServer : public QDialog {
    Q_OBJECT
public:
    explicit frmMailServer(QWidget* parent = nullptr);
};

}  // namespace ranvel
