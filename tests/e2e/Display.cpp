#include "e2e/Display.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace fenrik {

namespace {

constexpr int kPatienceMs = 30'000;
constexpr int kLargeWidth = 700;

}  // namespace

Display::~Display()
{
    mServer.terminate();
    mServer.waitForFinished(kPatienceMs);
}

std::string Display::Missing()
{
    for (const char* program : {"Xvfb", "xdotool"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
            return program;
    }
    return {};
}

void Display::Start()
{
    mServer.start(QStringLiteral("Xvfb"),
                  {"-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp", "-noreset"});
    while (!mServer.canReadLine() && mServer.waitForReadyRead(kPatienceMs)) {
    }
    const QString number = QString::fromLatin1(mServer.readLine()).trimmed();
    ASSERT_FALSE(number.isEmpty()) << mServer.readAllStandardError().toStdString();
    mName = QLatin1Char(':') + number;
}

QProcessEnvironment Display::On(QProcessEnvironment environment) const
{
    environment.insert(QStringLiteral("DISPLAY"), mName);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    return environment;
}

QString Display::LargeWindow(const QString& title) const
{
    static const QRegularExpression width(QStringLiteral("WIDTH=(\\d+)"));
    const QString found = Do({"search", "--onlyvisible", "--name", QLatin1Char('^') + title});
    for (const QString& window : found.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (width.match(Do({"getwindowgeometry", "--shell", window})).captured(1).toInt() >= kLargeWidth)
            return window;
    }
    return {};
}

void Display::Press(const QString& window, const QString& keys) const
{
    (void)Do({"windowfocus", "--sync", window, "key", "--clearmodifiers", keys});
}

QString Display::Do(const QStringList& arguments) const
{
    QProcess xdotool;
    xdotool.setProcessEnvironment(On(QProcessEnvironment::systemEnvironment()));
    xdotool.start(QStringLiteral("xdotool"), arguments);
    xdotool.waitForFinished(kPatienceMs);
    return QString::fromUtf8(xdotool.readAllStandardOutput());
}

}  // namespace fenrik
