#include "ranvel/platform/gui/fonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>

#include "ranvel/platform/gui/qstr.h"

namespace ranvel {

bool FontFamilyAvailable(const std::string& family)
{
    QFont font(Q(family));
    return QFontInfo(font).family().compare(Q(family), Qt::CaseInsensitive) == 0;
}

bool RegisterFontFile(const std::string& path)
{
    return QFontDatabase::addApplicationFont(Q(path)) != -1;
}

}  // namespace ranvel
