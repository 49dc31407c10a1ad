#include "ranvel/app/pagerender.h"

#include <QApplication>
#include <QImageWriter>
#include <QPixmap>

#include "ranvel/app/frmMuhuCover.h"
#include "ranvel/app/startup.h"
#include "ranvel/data/themes.h"
#include "ranvel/platform/gui/qstr.h"

namespace ranvel {

void EnsureOffscreenApplication()
{
    if (QApplication::instance()) return;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "ranvel";
    static char* argv[] = {name, nullptr};
    static QApplication* app = new QApplication(argc, argv);
    PrepareLook(*app);
    CheckFonts();
}

bool RenderCoverPng(const std::string& path, std::string& error)
{
    EnsureOffscreenApplication();
    LoadActiveColors();
    frmMuhuCover cover;
    cover.Load();
    // Drawn at twice the screen's size, so that the page reads well when it
    // is looked at closely.
    QPixmap picture(cover.size() * 2);
    picture.setDevicePixelRatio(2);
    picture.fill(Qt::white);
    cover.render(&picture);
    QImageWriter writer(Q(path), "png");
    if (!writer.write(picture.toImage())) {
        error = "cannot write the picture to '" + path + "': " + S(writer.errorString());
        return false;
    }
    return true;
}

}  // namespace ranvel
