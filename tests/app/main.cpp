// The desktop tests run in one application object, offscreen unless told
// otherwise, prepared as the program prepares itself.
#include <gtest/gtest.h>

#include <QApplication>

#include "ranvel/app/startup.h"

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    ranvel::PrepareApplication(app);
    return RUN_ALL_TESTS();
}
