#include "ranvel/app/requestfields.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>

#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

std::string Text(const QLineEdit* e) { return S(e->displayText()); }
std::string Text(const QComboBox* c) { return S(c->currentText()); }

RequestPlace Gather(const PlaceFields& f)
{
    RequestPlace p;
    p.Country = Text(f.country);
    p.City = Text(f.city);
    p.Lati = Text(f.lati);
    p.Longi = Text(f.longi);
    p.NS = Text(f.ns);
    p.EW = Text(f.ew);
    p.GMT = Text(f.gmt);
    return p;
}

RequestPerson Gather(const PersonFields& f)
{
    RequestPerson p;
    p.Name = Text(f.name);
    p.Sex = f.male ? (f.male->isChecked() ? 1 : 2) : f.sex;
    p.BDate = Text(f.date);
    p.BTime = Text(f.time);
    p.AMPM = f.half[0]->isChecked() ? 1 : 2;
    const RequestPlace place = Gather(f.place);
    p.Country = place.Country;
    p.City = place.City;
    p.Lati = place.Lati;
    p.Longi = place.Longi;
    p.NS = place.NS;
    p.EW = place.EW;
    p.GMT = place.GMT;
    return p;
}

void SetBoxText(QComboBox* box, const QString& text)
{
    const QSignalBlocker quiet(box);
    const int index = text.isEmpty() ? -1 : box->findText(text, Qt::MatchFixedString);
    box->setCurrentIndex(index);
    box->setEditText(text);
}

void ClearCity(PlaceFields& f)
{
    SetBoxText(f.city, QString());
    f.lati->setText(kBlankDegrees);
    f.longi->setText(kBlankDegrees);
    f.ns->setText("N");
    f.ew->setText("E");
}

void FollowHalf(const QLineEdit* time, QRadioButton* const half[2])
{
    const QSignalBlocker a(half[0]), b(half[1]);
    (vb::Val(Text(time)) < 12 ? half[0] : half[1])->setChecked(true);
}

}  // namespace ranvel
