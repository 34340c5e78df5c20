#include "PseudoTerminal.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <termios.h>
#include <unistd.h>

namespace fenrik {

PseudoTerminal::PseudoTerminal()
{
    mMaster = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (mMaster < 0 || ::grantpt(mMaster) != 0 || ::unlockpt(mMaster) != 0)
        throw std::runtime_error("no pseudo-terminal to be had");
    mPath = QString::fromLocal8Bit(::ptsname(mMaster));
    termios line{};
    ::tcgetattr(mMaster, &line);
    ::cfmakeraw(&line);
    ::tcsetattr(mMaster, TCSANOW, &line);
}

PseudoTerminal::~PseudoTerminal()
{
    Unplug();
}

void PseudoTerminal::Write(const QByteArray& bytes)
{
    if (::write(mMaster, bytes.constData(), std::size_t(bytes.size())) != bytes.size())
        throw std::runtime_error("the pseudo-terminal took only a part");
}

QByteArray PseudoTerminal::Read(int count, int milliseconds)
{
    QByteArray all;
    QElapsedTimer timer;
    timer.start();
    while (all.size() < count && timer.elapsed() < milliseconds) {
        char buffer[256];
        const auto got = ::read(mMaster, buffer, sizeof buffer);
        if (got > 0)
            all.append(buffer, qsizetype(got));
        else
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return all;
}

void PseudoTerminal::Unplug()
{
    if (mMaster >= 0)
        ::close(mMaster);
    mMaster = -1;
}

}  // namespace fenrik
