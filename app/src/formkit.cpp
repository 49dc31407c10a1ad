#include "ranvel/app/formkit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "ranvel/app/appinfo.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"

namespace ranvel::ui {

namespace {

template <typename W>
W* Make(W* w, const char* name, Box at)
{
    w->setObjectName(QString::fromUtf8(name));
    w->setGeometry(at.x, at.y, at.w, at.h);
    return w;
}

}  // namespace

QString Plain(const QString& caption)
{
    QString out;
    for (int i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&') {
            if (i + 1 < caption.size() && caption[i + 1] == '&') out += '&', ++i;
            continue;
        }
        out += caption[i];
    }
    return out;
}

QLabel* Label(QWidget* parent, const char* name, const QString& text, Box at)
{
    auto* l = Make(new QLabel(text, parent), name, at);
    l->setTextFormat(Qt::PlainText);
    return l;
}

QPushButton* Button(QWidget* parent, const char* name, const QString& caption, Box at)
{
    auto* b = Make(new QPushButton(caption, parent), name, at);
    b->setAccessibleName(Plain(caption));
    return b;
}

QRadioButton* Option(QWidget* parent, const char* name, const QString& caption, Box at)
{
    auto* o = Make(new QRadioButton(caption, parent), name, at);
    o->setAccessibleName(Plain(caption));
    return o;
}

QCheckBox* Check(QWidget* parent, const char* name, const QString& caption, Box at)
{
    auto* c = Make(new QCheckBox(caption, parent), name, at);
    c->setAccessibleName(Plain(caption));
    return c;
}

QGroupBox* Frame(QWidget* parent, const char* name, const QString& caption, Box at)
{
    auto* f = Make(new QGroupBox(caption, parent), name, at);
    if (!caption.isEmpty()) f->setAccessibleName(Plain(caption));
    return f;
}

QLineEdit* TextBox(QWidget* parent, const char* name, Box at) { return Make(new QLineEdit(parent), name, at); }

QLineEdit* MaskEdit(QWidget* parent, const char* name, const QString& mask, const QString& blank, Box at)
{
    auto* e = Make(new QLineEdit(parent), name, at);
    QString qt;
    for (QChar c : mask) {
        if (c == '9') qt += '0';       // a digit, which may be left blank
        else if (c == '#') qt += '#';  // a digit or a sign
        else qt += QString("\\") + c;  // shown as it stands
    }
    e->setInputMask(qt + ";_");
    e->setText(blank);
    return e;
}

QComboBox* Combo(QWidget* parent, const char* name, bool editable, Box at)
{
    auto* c = Make(new QComboBox(parent), name, at);
    c->setEditable(editable);
    if (editable) c->setInsertPolicy(QComboBox::NoInsert);
    return c;
}

QDateEdit* DatePicker(QWidget* parent, const char* name, Box at)
{
    auto* d = Make(new QDateEdit(parent), name, at);
    d->setDisplayFormat("dd/MM/yyyy");
    d->setCalendarPopup(true);
    d->setMinimumDate(QDate(1900, 1, 1));
    d->setMaximumDate(QDate(2099, 12, 31));
    return d;
}

void ShowFault(const std::exception& e) { MsgBox(e.what(), MsgButtons::OK, AppTitle(), MsgIcon::Critical); }

bool RefusedName(const std::string& name, const QString& what)
{
    if (name.find('\'') == std::string::npos) return false;
    MsgBox("The " + S(what) + " name '" + name +
               "' holds an apostrophe ('), which can't be stored. Please write the name without it.",
           MsgButtons::OK, "Invalid Name", MsgIcon::Exclamation);
    return true;
}

void Names(QLabel* label, QWidget* control)
{
    label->setBuddy(control);
    control->setAccessibleName(Plain(label->text()).remove(':').trimmed());
}

void Speak(QWidget* control, const QString& name)
{
    control->setAccessibleName(name);
    control->setToolTip(name);
}

}  // namespace ranvel::ui
