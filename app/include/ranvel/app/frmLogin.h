// The request form: four pages that gather a Muhurtha request (the purpose,
// the moment or range with its place, the person or the couple) and run
// the generation. Its controls bear the names of the request's fields.
#pragma once

#include <QWidget>
#include <memory>
#include <string>

#include "ranvel/data/datafiles.h"
#include "ranvel/engine/request.h"

class QComboBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace ranvel {

class ImageButton;

class frmLogin : public QWidget {
    Q_OBJECT
public:
    explicit frmLogin(QWidget* parent = nullptr);
    ~frmLogin() override;

    // Fills the Muhurtha list with the catalogue's purposes of the category
    // and takes the first as the chosen one.
    void FillMuhurthaList(const std::string& Category);
    // Shows the page's frame and does what entering that page does.
    void ShowRequestPage(int Page);
    // The one forward command: the next page, or the generation on the last.
    void CmdGenerate();
    // One page back.
    void flpBack();
    // The person born now: date and time of birth set to the present, then
    // CmdGenerate once.
    void cmdNowCast();
    // Asks, then ends the program.
    void cmdExit();

    // The request as the fields hold it.
    MuhurthaRequest& Request() { return request_; }
    // Copies every field into the request.
    void GatherRequest();
    // The request as the fields hold it now, the form's own left as it is.
    MuhurthaRequest FieldsRequest() const;
    // The generation: the charts, the engine, and the result pages. False
    // when a fault ended it (the fault was shown).
    bool RunEngine();

    // The person store from the person page.
    void SavePerson();
    void DeletePerson();
    // Loads the stored person of that name into the fields of one page's
    // block: "" the person page, "Boy" or "Gal" the couple's.
    void LoadPerson(const std::string& name, const std::string& block = "");

    // The country and city lists anew, after the place editor changed them;
    // what the fields hold stays.
    void RefillPlaceLists();

    // Exchange files.
    void SavePersonToFile();
    void SaveDatabaseToFile();
    // database true: merge a .JKD; false: import a .JKP.
    void ImportPersons(bool database);

    // Rewrites a time field for its AM/PM option (index 0 AM, 1 PM).
    static QString RewriteForHalf(const QString& time, int half);

    QString Hint() const;
    // The main window's title for what is chosen: the program's title, "-"
    // and the Muhurtha's name.
    QString Title() const;
    // The Muhurtha chosen; the step line, the page 2 summary and the title
    // follow it.
    void SetMuhuName(const std::string& name);

signals:
    // A generation ended with a result: the result pages may be opened.
    void Generated();
    // The title changed with the Muhurtha chosen.
    void TitleChanged(const QString& title);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Impl;
    std::unique_ptr<Impl> d_;
    MuhurthaRequest request_;
};

}  // namespace ranvel
