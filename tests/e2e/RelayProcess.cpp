#include "e2e/RelayProcess.h"

#include <QFile>

#include <csignal>
#include <gtest/gtest.h>

namespace fenrik {

namespace {

constexpr int kPatienceMs = 30'000;

}  // namespace

RelayProcess::~RelayProcess()
{
    Kill();
}

void RelayProcess::Start(const char* consent)
{
    mProcess.setProcessEnvironment(mCopy.Environment());
    mProcess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    mProcess.start(QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-relay"),
                   {"--listen", "127.0.0.1:0", "--consent", consent, "--log", mCopy.Path("relay.log")});
    while (!mProcess.canReadLine() && mProcess.waitForReadyRead(kPatienceMs)) {
    }
    const QString ready = QString::fromUtf8(mProcess.readLine()).trimmed();
    ASSERT_TRUE(ready.startsWith(QStringLiteral("ready 127.0.0.1:"))) << ready.toStdString();
    mAddress = ready.section(QLatin1Char(' '), 1);
}

bool RelayProcess::Logged(const char* text) const
{
    QFile file(mCopy.Path("relay.log"));
    return file.open(QIODevice::ReadOnly) && file.readAll().contains(text);
}

void RelayProcess::Kill()
{
    if (mProcess.state() == QProcess::NotRunning)
        return;
    mProcess.kill();
    mProcess.waitForFinished();
}

void RelayProcess::Pause(bool pause)
{
    ASSERT_NE(mProcess.processId(), 0);
    ::kill(pid_t(mProcess.processId()), pause ? SIGSTOP : SIGCONT);
}

}  // namespace fenrik
