// How the program's forms are built: every control at a fixed position in
// its parent (in pixels), carrying its name as its objectName, made in the
// order the keyboard reaches it (creation order is the tab order). A label
// that names a control is tied to it, so the label's access key moves the
// focus there and a screen reader speaks the label's words for the control.
#pragma once

#include <QString>
#include <exception>
#include <string>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QWidget;

namespace ranvel::ui {

// A rectangle in the parent, in pixels.
struct Box {
    int x, y, w, h;
};

// The caption without its access-key marks: "&Save" is "Save", "A && B" is
// "A & B".
QString Plain(const QString& caption);

QLabel* Label(QWidget* parent, const char* name, const QString& text, Box at);
QPushButton* Button(QWidget* parent, const char* name, const QString& caption, Box at);
QRadioButton* Option(QWidget* parent, const char* name, const QString& caption, Box at);
QCheckBox* Check(QWidget* parent, const char* name, const QString& caption, Box at);
// A frame with a caption (empty for none).
QGroupBox* Frame(QWidget* parent, const char* name, const QString& caption, Box at);
QLineEdit* TextBox(QWidget* parent, const char* name, Box at);
// A masked edit: '9' a digit, '#' a digit or a sign; everything else is
// shown as it stands. It starts holding the blank text.
QLineEdit* MaskEdit(QWidget* parent, const char* name, const QString& mask, const QString& blank, Box at);
QComboBox* Combo(QWidget* parent, const char* name, bool editable, Box at);
// A date picker showing "dd/MM/yyyy", with a calendar to drop down.
QDateEdit* DatePicker(QWidget* parent, const char* name, Box at);

// Runs a command of a form. A run-time fault (a name with an apostrophe
// breaking its query, a file that can't be read) ends the command with a
// box that gives the fault's text; false then.
void ShowFault(const std::exception& e);
template <typename F>
bool RunCommand(F&& command)
{
    try {
        command();
        return true;
    } catch (const std::exception& e) {
        ShowFault(e);
        return false;
    }
}

// Names go into the store's queries as they stand, where an apostrophe would
// end the query's text early. Such a name is refused before anything is
// written: the box says why, and the answer is true. `what` names the kind
// of thing in the box's words ("person", "city", "theme", ...).
bool RefusedName(const std::string& name, const QString& what);

// Ties a label to the control it names (access key and spoken name).
void Names(QLabel* label, QWidget* control);
// The spoken name and the tip of a control that has no label of its own.
void Speak(QWidget* control, const QString& name);

}  // namespace ranvel::ui
