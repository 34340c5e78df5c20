#include "app/MMain.h"
#include "platform/TerminationSignals.h"
#include "platform/VersionInfo.h"

#include <QApplication>
#include <QIcon>
#include <QWidget>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(fenrik::VersionInfo::Title());
    QApplication::setDesktopFileName(QStringLiteral("fenrik-diagnostics"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/fenrik-diagnostics.png")));
    // The window decides when the program ends: a box or the splash window that closes is not the end.
    QApplication::setQuitOnLastWindowClosed(false);

    fenrik::MMain program(fenrik::MMain::OfThisProcess());
    if (!program.Main())
        return 1;
    // A logout or Ctrl+C in a terminal ends the program as closing its window does: settings saved, port closed.
    const fenrik::TerminationSignals signals;
    QObject::connect(&signals, &fenrik::TerminationSignals::Requested, program.MainWindow(), &QWidget::close);
    return QApplication::exec();
}
