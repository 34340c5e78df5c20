#include <QApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>

// Every test program has an application object, and settings of its own instead of the user's.
int main(int argc, char** argv)
{
    // Also while ctest only asks for the names of the cases, which it does without the cases' environment.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
