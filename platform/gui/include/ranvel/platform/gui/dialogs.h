// The common dialogs (open, save, colour) and the desktop's viewer of
// documents, behind interfaces that the tests replace with answers of
// their own. Filters are given as the program writes them,
// "Person Details (*.JKP)|*.JKP|": pairs of a description and a pattern,
// each ended by "|".
#pragma once

#include <QColor>
#include <optional>
#include <string>

class QWidget;

namespace ranvel {

class CommonDialogs {
public:
    virtual ~CommonDialogs() = default;
    // The chosen path, or "" when the user cancelled.
    virtual std::string OpenFile(QWidget* parent, const std::string& title, const std::string& filter) = 0;
    // The chosen path with the default extension added when the user gave
    // none, or "" when the user cancelled. An existing file is confirmed
    // with the user before it is chosen.
    virtual std::string SaveFile(QWidget* parent, const std::string& title, const std::string& filter,
                                 const std::string& defaultExt, const std::string& suggested) = 0;
    // The chosen colour, or nothing when the user cancelled.
    virtual std::optional<QColor> Color(QWidget* parent, const QColor& initial) = 0;
    // Opens a document (the manual) in the desktop's viewer for its kind;
    // false when nothing could open it.
    virtual bool OpenDocument(const std::string& path) = 0;
};

// The real dialogs of the desktop.
class DesktopDialogs : public CommonDialogs {
public:
    std::string OpenFile(QWidget* parent, const std::string& title, const std::string& filter) override;
    std::string SaveFile(QWidget* parent, const std::string& title, const std::string& filter,
                         const std::string& defaultExt, const std::string& suggested) override;
    std::optional<QColor> Color(QWidget* parent, const QColor& initial) override;
    bool OpenDocument(const std::string& path) override;
};

// The process-wide dialogs: the desktop's until another is installed.
CommonDialogs& Dialogs();
void SetDialogs(CommonDialogs* dialogs);  // nullptr restores the desktop's

// "Person Details (*.JKP)|*.JKP|" as a file dialog takes it, each pattern
// also in lower case, since file names here mind their case:
// "Person Details (*.JKP *.jkp)".
std::string DialogFilter(const std::string& filter);

}  // namespace ranvel
