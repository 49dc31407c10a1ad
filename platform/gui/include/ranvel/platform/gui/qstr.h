// Texts cross between the core (UTF-8 std::string) and the widgets (QString)
// here, and nowhere by hand.
#pragma once

#include <QString>
#include <string>

namespace ranvel {

inline QString Q(const std::string& s) { return QString::fromStdString(s); }
inline QString Q(const char* s) { return QString::fromUtf8(s); }
inline std::string S(const QString& s) { return s.toStdString(); }

}  // namespace ranvel
