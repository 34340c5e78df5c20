#include <QApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>

// Every test program has an application object, and settings of its own instead of the user's.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QStandardPaths::setTestModeEnabled(true);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
