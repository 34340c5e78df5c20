#include "logging/MsgLogging.h"

#include "link/CMessage.h"
#include "platform/Error.h"
#include "platform/VersionInfo.h"
#include "shared/Clock.h"
#include "shared/CommandTable.h"
#include "shared/RunState.h"

#include <QFile>
#include <QLocale>

#include <array>

namespace fenrik {

namespace {

constexpr int kFields = 8;
using Fields = std::array<QString, kFields>;

constexpr std::array<int, kFields> kColumns{1, 28, 35, 42, 52, 62, 80, 93};
constexpr int kNameWidth = 27;
constexpr int kNumberWidth = 5;

const Fields kTitles{QStringLiteral("Command"),   QStringLiteral("Data"),     QStringLiteral("State"),
                     QStringLiteral("Extended"),  QStringLiteral("CheckSum"), QStringLiteral("RAW"),
                     QStringLiteral("TimeStamp"), QStringLiteral("DateStamp")};

QString InColumns(const Fields& fields)
{
    QString line;
    for (int i = 0; i < kFields; ++i)
        line = line.leftJustified(kColumns[i] - 1) + fields[i];
    return line;
}

/// A number as the file writer prints it: a blank where the sign of a negative one would stand, and a blank after it.
QString Printed(int number)
{
    return (number < 0 ? QString() : QStringLiteral(" ")) + QString::number(number) + QLatin1Char(' ');
}

/// The time format prints whole seconds; its ".00" is no format character and stands there as it is.
QString WholeSeconds(Moment time)
{
    return time.DateTime().toString(QStringLiteral("h:mm:ss")) + QStringLiteral(".00");
}

}  // namespace

MsgLogging::MsgLogging(const RunState& run, const CommandTable& commands, const Clock& clock,
                       const VersionInfo& version)
    : mRun(run), mCommands(commands), mClock(clock), mVersion(version)
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

void MsgLogging::CreateLogHeader00(const QString& text)
{
    const QString rule(104, QLatin1Char('-'));
    const QString now = QLocale().toString(mClock.Now().DateTime(), QLocale::ShortFormat);
    Append({rule, QStringLiteral("Fenrik Diagnostics Log (v%1)").arg(mVersion.MajorMinorRevision()), text + now, rule,
            InColumns(kTitles), rule});
}

void MsgLogging::LogToFile(const CMessage& message)
{
    // A name longer than its column would push the others out of line.
    const QString name = mCommands.FriendlyName(message.Command).left(kNameWidth).leftJustified(kNameWidth);
    Append({InColumns({name, QString::number(message.data).leftJustified(kNumberWidth), Printed(message.State),
                       Printed(message.extended), QString::number(message.CheckSum).leftJustified(kNumberWidth),
                       message.RAW(), WholeSeconds(message.time), message.DateStamp()})});
}

void MsgLogging::Append(const QStringList& lines) const
{
    QFile file(Path());
    const QByteArray bytes = (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toUtf8();
    if (!file.open(QIODevice::Append) || file.write(bytes) != bytes.size() || !file.flush())
        throw Error(ErrorNumber::kPathFileAccess,
                    QStringLiteral("The log %1 can't be written: %2").arg(Path(), file.errorString()));
}

}  // namespace fenrik
