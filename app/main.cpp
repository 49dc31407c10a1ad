// ranvel: the desktop program.
#include <QApplication>

#include "ranvel/app/startup.h"

int main(int argc, char** argv)
{
    ranvel::RanvelApplication app(argc, argv);
    return ranvel::RunDesktop(app);
}
