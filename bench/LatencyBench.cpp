// How long a frame takes from its last byte on the line to its line in the message list, at all that the line
// carries, with the real window on the display. Beside it a plain loop that reads the same line.

#include "Session.h"
#include "app/MMain.h"
#include "app/frmDiag.h"
#include "app/messages/MessageListModel.h"
#include "link/Frame.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace fenrik {
namespace {

using SteadyClock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kFrames = 160 * 20;
constexpr int kWarmUp = 160;  // frames that are not counted
constexpr std::chrono::microseconds kByteTime{1'000'000 / 960};
constexpr char kWake = char(0x9E);
constexpr char kAwake = char(0x8A);

/// A line that a thread writes at full rate, a byte at a time as a wire does. The data of a frame is its number.
class FullLine {
public:
    FullLine() : mMaster(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (mMaster < 0 || ::grantpt(mMaster) != 0 || ::unlockpt(mMaster) != 0)
            throw NotMeasured("there are no pseudo-terminals");
        termios raw{};
        ::tcgetattr(mMaster, &raw);
        ::cfmakeraw(&raw);
        ::tcsetattr(mMaster, TCSANOW, &raw);
    }
    ~FullLine() { ::close(mMaster); }
    FullLine(const FullLine&) = delete;
    FullLine& operator=(const FullLine&) = delete;

    [[nodiscard]] QString Path() const { return QString::fromLocal8Bit(::ptsname(mMaster)); }

    /// Answers the question for a transceiver.
    void Wake()
    {
        char byte = 0;
        pollfd handle{mMaster, POLLIN, 0};
        while (byte != kWake && ::poll(&handle, 1, 10'000) > 0 && ::read(mMaster, &byte, 1) == 1) {
        }
        (void)!::write(mMaster, &kAwake, 1);
    }

    /// Writes all frames; comes back when the last one is out.
    void WriteAll()
    {
        auto due = SteadyClock::now();
        for (int number = 0; number < kFrames; ++number) {
            const auto bytes =
                Frame{std::uint16_t(1 + number % 200), number % 2 == 0, false, std::uint16_t(number)}.Encode();
            for (std::size_t i = 0; i < bytes.size(); ++i) {
                std::this_thread::sleep_until(due += kByteTime);
                if (i + 1 == bytes.size())
                    mWritten[std::size_t(number)] = SteadyClock::now();
                (void)!::write(mMaster, &bytes[i], 1);
            }
        }
    }

    /// That frame has arrived where it shall. Called once for each number.
    void Arrived(int number)
    {
        if (number < 0 || number >= kFrames)
            return;
        ++mArrived;
        if (number >= kWarmUp)
            mLatencies.push_back(Milliseconds(SteadyClock::now() - mWritten[std::size_t(number)]).count());
    }
    [[nodiscard]] bool AllArrived() const { return mArrived == kFrames; }

    void Report(const std::string& name)
    {
        if (!AllArrived())
            throw NotMeasured(std::to_string(kFrames - mArrived) + " frames did not arrive");
        std::sort(mLatencies.begin(), mLatencies.end());
        PrintFigure((name + "/Median").c_str(), mLatencies[mLatencies.size() / 2]);
        PrintFigure((name + "/P99").c_str(), mLatencies[mLatencies.size() * 99 / 100]);
    }

private:
    int mMaster;
    std::vector<SteadyClock::time_point> mWritten{std::size_t(kFrames)};
    std::vector<double> mLatencies;
    int mArrived = 0;
};

void MeasurePlainLoop()
{
    FullLine line;
    const int port = ::open(qPrintable(line.Path()), O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::thread writer([&line] { line.WriteAll(); });
    Frame::Bytes window{};
    pollfd handle{port, POLLIN, 0};
    while (!line.AllArrived() && ::poll(&handle, 1, 5000) > 0) {
        std::rotate(window.begin(), window.begin() + 1, window.end());
        if (::read(port, &window.back(), 1) != 1)
            break;
        if (const auto frame = Frame::Decode(window))
            line.Arrived(frame->data);
    }
    writer.join();
    ::close(port);
    line.Report("Latency/Plain");
}

QAction& Button(frmDiag& window, const char* key)
{
    auto* action = window.findChild<QAction*>(QLatin1String(key));
    if (!action)
        throw NotMeasured("a button is missing");
    return *action;
}

void MeasureTool()
{
    FullLine line;
    const Copy copy;
    const QString config = copy.Path("config/fenrik-diagnostics");
    QDir().mkpath(config + QStringLiteral("/ports"));
    QFile::link(line.Path(), config + QStringLiteral("/ports/com5"));
    copy.WriteSettings("[Settings]\nCommPort=5\nAutoDetect=False\n");

    const QString folder = copy.Path("bin");
    MMain program({ProgramFolder(folder, folder, folder), config, VersionInfo(1, 0, 1, QString())});
    if (!program.Main())
        throw NotMeasured("the tool does not start");
    MessageListModel& list = program.Window()->Messages();
    QObject::connect(&list, &QAbstractItemModel::rowsInserted, &list, [&](const QModelIndex&, int first, int last) {
        for (int row = first; row <= last; ++row)
            line.Arrived(list.Line(row).data);
    });

    std::thread waker([&line] { line.Wake(); });
    Button(*program.Window(), "Connect").trigger();
    waker.join();
    std::atomic<bool> written = false;
    std::thread writer([&] {
        line.WriteAll();
        written = true;
    });
    const auto deadline = SteadyClock::now() + std::chrono::seconds(60);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        if ((written && line.AllArrived()) || SteadyClock::now() > deadline)
            QApplication::exit();
    });
    look.start(500);
    QApplication::exec();
    writer.join();
    program.Window()->close();
    line.Report("Latency/Tool");
}

void Measure()
{
    MeasurePlainLoop();
    MeasureTool();
}

}  // namespace
}  // namespace fenrik

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return fenrik::Report("LatencyBench", fenrik::Measure);
}
