// The mail dialog: the exported report, zipped, goes out as an attachment
// through the desktop's mail program or the user's mail server.
#pragma once

#include <QDialog>
#include <string>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace ranvel {

// The kind of the mail, process-wide: 1 HTML, 2 PDF.
int& MailKind();

// The folder that holds the zip while it is sent: the user's own, under
// the temporary folder.
std::string MailTempFolder();

class frmEmail : public QDialog {
    Q_OBJECT
public:
    // sourceFile: the exported file that the zip will hold (kind 2).
    explicit frmEmail(const std::string& sourceFile, QWidget* parent = nullptr);

    // False, with its message, when the address lacks an "@" or a ".".
    bool Validated();
    // The steps of sending; true when the mail left (the dialog then closes).
    bool Send();

private:
    void ShowWay();
    void Status(const QString& text);

    std::string source_;
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
