// The checks of the start, each of which ends the program or lets it go
// on, and the desktop program's entry point.
#pragma once

#include <QApplication>
#include <string>
#include <vector>

class QWidget;

namespace ranvel {

// The desktop program's application object. A run-time fault that a
// command's handler let through ends that command with the fault's box;
// the program goes on.
class RanvelApplication : public QApplication {
public:
    RanvelApplication(int& argc, char** argv) : QApplication(argc, argv) {}
    bool notify(QObject* receiver, QEvent* event) override;
};

// The program's own display fonts: family name and file base name under
// <app>/EPHE/Fonti/ (with the extension .IFT).
struct DisplayFont {
    const char* name;
    const char* file;
};
const std::vector<DisplayFont>& DisplayFonts();

// 5.3 written, read back and written again must keep its ".". All number
// work of the program rests on this; since every conversion is free of the
// machine's locale, it holds whatever the locale writes. On failure the box
// "Error in Regional Settings." is shown and false returned: the program
// must end.
bool CheckRegionalSettings();
// A screen under 800 pixels wide is warned of, unless SHOWERROR is false in
// GENDAT.INI; the start goes on.
void CheckDisplay();
void CheckDisplay(int screenWidth);
// Each display font that the desktop does not have is registered for this
// program from its file. Gives the names that could not be registered.
std::vector<std::string> CheckFonts();
// Shows frmFontsError for the failed fonts (modal; "Proceed" goes on).
void ShowFontsError(const std::vector<std::string>& failed, QWidget* parent = nullptr);

// Prepares the application object (locale-free numbers, fonts, the message
// sink) for the desktop program.
void PrepareApplication(QApplication& app);
// The same without the message sink: the look of the windows and pages
// alone, for a program that draws pages without a desktop.
void PrepareLook(QApplication& app);
// The desktop program: arguments, the splash and its checks, the main
// window, the event loop. Gives the exit code.
int RunDesktop(QApplication& app);

}  // namespace ranvel
