#include "ranvel/platform/gui/dialogs.h"

#include <QColorDialog>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QUrl>

#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {
CommonDialogs* g_dialogs = nullptr;
}

std::string DialogFilter(const std::string& filter)
{
    std::vector<std::string> parts = vb::Split(filter, '|');
    std::string out;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        std::string desc = parts[i];
        if (std::size_t paren = desc.find('('); paren != std::string::npos) desc = vb::Trim(desc.substr(0, paren));
        std::string patterns;
        for (const std::string& p : vb::Split(parts[i + 1], ';')) {
            if (p.empty()) continue;
            patterns += (patterns.empty() ? "" : " ") + p;
            if (vb::LCase(p) != p) patterns += " " + vb::LCase(p);
        }
        if (!out.empty()) out += ";;";
        out += desc + " (" + patterns + ")";
    }
    return out;
}

std::string DesktopDialogs::OpenFile(QWidget* parent, const std::string& title, const std::string& filter)
{
    return S(QFileDialog::getOpenFileName(parent, Q(title), QString(), Q(DialogFilter(filter))));
}

std::string DesktopDialogs::SaveFile(QWidget* parent, const std::string& title, const std::string& filter,
                                     const std::string& defaultExt, const std::string& suggested)
{
    QFileDialog dialog(parent, Q(title), QString(), Q(DialogFilter(filter)));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    QString ext = Q(defaultExt);
    if (ext.startsWith('.')) ext.remove(0, 1);
    dialog.setDefaultSuffix(ext);
    dialog.selectFile(Q(suggested));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return S(dialog.selectedFiles().front());
}

std::optional<QColor> DesktopDialogs::Color(QWidget* parent, const QColor& initial)
{
    QColor c = QColorDialog::getColor(initial, parent);
    if (!c.isValid()) return std::nullopt;
    return c;
}

bool DesktopDialogs::OpenDocument(const std::string& path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(Q(path)));
}

CommonDialogs& Dialogs()
{
    static DesktopDialogs desktop;
    return g_dialogs ? *g_dialogs : desktop;
}

void SetDialogs(CommonDialogs* dialogs) { g_dialogs = dialogs; }

}  // namespace ranvel
