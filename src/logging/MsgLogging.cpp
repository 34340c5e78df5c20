#include "logging/MsgLogging.h"

#include "link/CMessage.h"
#include "logging/LogFile.h"
#include "logging/LogLayout.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/ErrorReporter.h"
#include "shared/RunState.h"
#include "shared/Settings.h"

namespace fenrik {

MsgLogging::MsgLogging(const RunState& run, const Settings& settings, const CommandTable& commands, const Clock& clock,
                       const VersionInfo& version)
    : mRun(run), mSettings(settings), mCommands(commands), mClock(clock), mVersion(version)
{
}

void MsgLogging::NewFileName()
{
    mFileName = mClock.Now().DateTime().toString(QStringLiteral("yyyy-MM-dd_hh-mm-ss")) + QStringLiteral(".txt");
}

QString MsgLogging::Path() const
{
    return mRun.DiagLogPath + QLatin1Char('/') + mFileName;
}

void MsgLogging::BeginConnection()
{
    mFailureTold = false;
    if (mSettings.LoggingUnique)
        NewFileName();
}

void MsgLogging::TellOnce(ErrorReporter& errors, const char* where, const std::function<void()>& write)
{
    try {
        write();
        mFailureTold = false;
    } catch (const std::exception&) {
        if (mFailureTold)
            return;
        mFailureTold = true;  // before the box, inside which traffic goes on
        ReportCurrentException(errors, where);
    }
}

QString MsgLogging::Stamped(const QString& text) const
{
    return text + LogLayout::GeneralDate(mClock.Now(), QLocale());
}

void MsgLogging::CreateLogHeader00(const QString& text)
{
    LogFile(Path()).Write(LogLayout::Header00(mVersion, Stamped(text)));
}

void MsgLogging::CreateLogFile(const QString& text)
{
    mBuffer.clear();
    const auto trigger = mSettings.LoggingBuffered ? std::optional<int>(mSettings.LoggingEventTrigger) : std::nullopt;
    LogFile(Path()).Write(LogLayout::Header98(trigger, Stamped(text)));
}

void MsgLogging::LogToFile(const CMessage& message)
{
    LogFile(Path()).Write({LogLayout::Line00(mCommands.FriendlyName(message.Command), message)});
}

void MsgLogging::LogToFile(const CMessage98& entry)
{
    LogFile(Path()).Write({LogLayout::Line98(entry)});
}

void MsgLogging::LogEntry98(int node, const QString& name, int data, const QString& description)
{
    const CMessage98 entry{node, name, data, description, float(mClock.Timer())};
    if (mSettings.LoggingBuffered)
        LogMessage(entry);
    else
        LogToFile(entry);
}

void MsgLogging::LogMessage(const CMessage98& entry)
{
    // Tested before the entry joins, so the buffer ends up one above the number; a negative one finds it empty.
    if (!mBuffer.empty() && std::int64_t(mBuffer.size()) > mSettings.LoggingBufferMax)
        mBuffer.pop_front();
    mBuffer.push_back(entry);
}

void MsgLogging::CommitBuffer()
{
    LogFile file(Path());
    while (!mBuffer.empty()) {
        file.Write({LogLayout::Line98(mBuffer.front())});
        mBuffer.pop_front();
    }
}

}  // namespace fenrik
