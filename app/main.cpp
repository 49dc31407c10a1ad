// ranvel: the desktop program.
#include <QApplication>

#include "ranvel/app/startup.h"

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    return ranvel::RunDesktop(app);
}
