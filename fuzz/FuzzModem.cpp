// What a modem says: any bytes, in pieces, to the search for it and to a whole dial.

#include "modem/DialSequence.h"
#include "modem/MModem.h"
#include "platform/ComPorts.h"
#include "platform/Error.h"
#include "platform/SerialControl.h"
#include "shared/Clock.h"
#include "shared/EventPump.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <span>
#include <termios.h>
#include <unistd.h>

namespace fenrik {
namespace {

class ModemClock : public Clock {
public:
    [[nodiscard]] Moment Now() const override { return mNow; }
    void Advance(double seconds) { mNow = mNow.Plus(seconds); }

private:
    Moment mNow{1'000'000'000};
};

/// A pseudo-terminal whose far end says the next piece of the input in each turn of a wait; then time passes.
class ModemPump : public EventPump {
public:
    ModemPump(ModemClock& clock, int modem, SerialControl& port, std::span<const std::uint8_t> input)
        : EventPump(clock), mClock(clock), mModem(modem), mPort(port), mInput(input)
    {
    }

protected:
    void Pump(double seconds) override
    {
        constexpr std::size_t kPiece = 7;
        const auto now = mInput.first(std::min(kPiece, mInput.size()));
        mInput = mInput.subspan(now.size());
        if (now.empty()) {
            mClock.Advance(seconds + 0.001);
            return;
        }
        mClock.Advance(0.01);
        const int before = mPort.InBufferCount();
        const auto said = ::write(mModem, now.data(), now.size());
        for (int turns = 0; mPort.PortOpen() && mPort.InBufferCount() < before + said && turns < 50; ++turns)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
    }

private:
    ModemClock& mClock;
    int mModem;
    SerialControl& mPort;
    std::span<const std::uint8_t> mInput;
};

class NoView : public DialView {
public:
    void ShowStatus(const QString& text) override { (void)text.size(); }
};

int OpenModem()
{
    const int modem = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios line{};
    if (modem < 0 || ::grantpt(modem) != 0 || ::unlockpt(modem) != 0 || ::tcgetattr(modem, &line) != 0)
        std::abort();
    ::cfmakeraw(&line);
    ::tcsetattr(modem, TCSANOW, &line);
    return modem;
}

void TryDial(std::span<const std::uint8_t> input)
{
    const int modem = OpenModem();
    {
        const QTemporaryDir folder;
        QFile::link(QString::fromLocal8Bit(::ptsname(modem)), folder.filePath("com6"));
        const ComPorts ports(folder.path(), [] { return QList<SerialDevice>(); });
        SerialControl port(ports);
        ModemClock clock;
        ModemPump pump(clock, modem, port, input);
        RunState run;
        Settings settings;
        settings.ModemCommPort = 6;
        settings.ModemBaudRate = 57600;
        settings.ModemInitString = input.size() % 2 ? QStringLiteral("AT&F") : QString();
        NoView view;
        MModem talker(port, pump, run);
        DialSequence sequence(talker, pump, settings, run, view);
        try {
            (void)sequence.Dial(QStringLiteral("5550100"));
        } catch (const Error&) {
            // Every way to fail is one of these.
        }
        talker.HangUpModem();
        talker.CloseModemLink();
    }
    ::close(modem);
}

}  // namespace
}  // namespace fenrik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz_modem";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    fenrik::TryDial({data, size});
    return 0;
}
