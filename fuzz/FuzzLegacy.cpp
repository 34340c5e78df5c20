// The byte stream of the older network: any bytes at all, in pieces. The first three bytes choose the settings, the
// number of the event and the length of the pieces; each message number has a kind of its own.

#include "diagnostics/AsciiMap.h"
#include "diagnostics/CharacterFace.h"
#include "diagnostics/GlyphSheets.h"
#include "diagnostics/Graphics.h"
#include "legacy/MAF98.h"
#include "legacy/Marks98.h"
#include "legacy/MessageList98.h"
#include "legacy/Monitor98.h"
#include "legacy/Traffic98.h"
#include "logging/EventTrigger.h"
#include "logging/MsgLogging.h"
#include "platform/SerialControl.h"
#include "platform/VersionInfo.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

#include <QApplication>

#include <cstdlib>
#include <span>

namespace fenrik {
namespace {

constexpr std::size_t kChoices = 3;

/// Names and descriptions as a database may have them, good and bad.
MessageTable98 MakeTable()
{
    MessageTable98 table;
    for (int i = 0; i < 256; ++i) {
        constexpr const char* kDescriptions[] = {"Body", "Analog", "LoadShed", "", "ANALOG"};
        table[std::size_t(i)] = {QStringLiteral("Shed %1 ON %2").arg(i).arg(QString(i % 7 * 9, u'x')),
                                 QLatin1String(kDescriptions[i % 5]), i % 11 == 0, i % 13 ? i - 128 : 1};
        if (table[std::size_t(i)].Divisor == 0)
            table[std::size_t(i)].Divisor = 1;
    }
    return table;
}

class Stream : private ErrorReporter, private EventTriggerHost {
public:
    explicit Stream(std::span<const std::uint8_t> choices)
    {
        mSettings.ListAllMsgs = (choices[0] & 1) != 0;
        mSettings.LoggingOn = (choices[0] & 2) != 0;
        mSettings.LoggingDisconnect = (choices[0] & 4) != 0;
        mSettings.LoggingBuffered = true;
        mSettings.LoggingBufferMax = choices[0] >> 3;
        mSettings.LoggingEventTrigger = choices[1];
        mMonitor.Start();
    }

    void Hear(std::span<const std::uint8_t> bytes)
    {
        mMonitor.ProcessCommData(QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())));
        mMonitor.ProcessCommEvent98(SerialControl::kFramingError);
        mList.Flush();
    }

    /// Every cell's text, and both faces'.
    void Look()
    {
        for (int row = 0; row < mList.rowCount(); ++row)
            for (int column = 0; column < mList.columnCount(); ++column)
                (void)mList.index(row, column).data();
        (void)mMisc.Text();
        (void)mAnalog.DimText();
    }

private:
    // Nothing on this road may raise an error, whatever the bytes are, but for the log, which has no file here.
    void ShowError(int, const QString&, const QString& where, const QString&) override
    {
        if (where != QLatin1String("MsgLogging:CommitBuffer"))
            std::abort();
    }
    void AddInfoRow(const QString& text) override { mTraffic.Info(text); }
    void ShowDisconnected() override { mMonitor.Stop(); }
    void ClosePort() override {}

    AsciiMap mMap;
    GlyphSheets mSheets{mMap};
    CharacterFace mMisc{mSheets, QSize(148, 702), 8};
    CharacterFace mAnalog{mSheets, QSize(672, 740), Graphics::kColumns};
    Graphics mGraphics{mAnalog};
    MessageTable98 mMessages = MakeTable();
    MAF98 mPanels{mMisc, mGraphics, mMessages};
    Marks98 mMarks{mPanels};
    Settings mSettings;
    RunState mRun;
    CommandTable mCommands;
    SystemClock mClock;
    VersionInfo mVersion{1, 0, 1, QString()};
    MsgLogging mLog{mRun, mSettings, mCommands, mClock, mVersion};
    MessageList98 mList;
    Traffic98 mTraffic{mList, mLog, mSettings, mClock, *this};
    EventTrigger mTrigger{mSettings, mLog, *this, *this};
    ComPorts mPorts{QString(), [] { return QList<SerialDevice>(); }};
    SerialControl mPort{mPorts};
    Monitor98 mMonitor{{mPort, mMessages, mSettings, mPanels, mMarks, mTraffic, mTrigger, *this}};
};

}  // namespace
}  // namespace fenrik

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static QApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < fenrik::kChoices)
        return 0;
    const std::span<const std::uint8_t> input(data, size);
    fenrik::Stream stream(input);
    const std::size_t piece = std::size_t(input[2] % 16) + 1;
    for (auto rest = input.subspan(fenrik::kChoices); !rest.empty(); rest = rest.subspan(std::min(piece, rest.size())))
        stream.Hear(rest.first(std::min(piece, rest.size())));
    stream.Look();
    return 0;
}
