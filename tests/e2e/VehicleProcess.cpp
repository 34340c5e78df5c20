#include "e2e/VehicleProcess.h"

#include <QFile>
#include <QRegularExpression>
#include <gmock/gmock.h>

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kPatienceMs = 30'000;

VehicleProcess::Entry Parse(const QString& line)
{
    VehicleProcess::Entry entry;
    const QString rest = line.mid(9);  // behind the time
    entry.what = rest.section(QLatin1Char(' '), 0, 0);
    const QString text = rest.section(QLatin1Char(' '), 1);
    entry.bytes = text.section(QStringLiteral("  "), 0, 0);
    entry.meaning = text.section(QStringLiteral("  "), 1);
    return entry;
}

}  // namespace

int VehicleProcess::Entry::Field(const char* name) const
{
    const QRegularExpression field(QStringLiteral("%1=(\\d+)").arg(QLatin1String(name)));
    return field.match(meaning).captured(1).toInt();
}

VehicleProcess::~VehicleProcess()
{
    if (mProcess.state() != QProcess::NotRunning) {
        mProcess.kill();
        mProcess.waitForFinished();
    }
}

void VehicleProcess::Start(const char* scenario, const QStringList& options)
{
    Start(QStringList{"--port", "5"} + options, scenario);
    ASSERT_THAT(ReadLine().toStdString(), testing::StartsWith("ready COM5 "));
}

void VehicleProcess::StartAsModem(const char* scenario)
{
    Start({"--modem", "--port", "6"}, scenario);
    ASSERT_THAT(ReadLine().toStdString(), testing::StartsWith("ready COM6 "));
}

void VehicleProcess::StartAtRelay(const QString& relay, const char* answer, const char* scenario)
{
    Start({"--relay", relay, "--name", "Bob", answer}, scenario);
    ASSERT_EQ(ReadLine(), "ready relay Bob");
}

void VehicleProcess::Start(const QStringList& arguments, const char* scenario)
{
    QFile file(mCopy.Path("scenario.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(scenario);
    file.close();
    mProcess.setProcessEnvironment(mCopy.Environment());
    mProcess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    mProcess.start(QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle"),
                   arguments +
                       QStringList{"--control", "--log", mCopy.Path("vehicle.log"), "--scenario", file.fileName()});
}

void VehicleProcess::Control(const char* statement)
{
    mProcess.write(QByteArray(statement) + '\n');
    QByteArray answer = ReadLine();
    // A new terminal was plugged in, or the user of the relay is asked.
    while (answer.startsWith("ready ") || answer.endsWith("grant or deny"))
        answer = ReadLine();
    ASSERT_EQ(answer, "ok") << statement;
}

QByteArray VehicleProcess::ReadLine()
{
    while (!mProcess.canReadLine() && mProcess.waitForReadyRead(kPatienceMs)) {
    }
    return mProcess.readLine().trimmed();
}

std::vector<VehicleProcess::Entry> VehicleProcess::Log() const
{
    QFile file(mCopy.Path("vehicle.log"));
    std::vector<Entry> entries;
    if (!file.open(QIODevice::ReadOnly))
        return entries;
    const QString text = QString::fromUtf8(file.readAll());
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        entries.push_back(Parse(line));
    return entries;
}

std::vector<std::string> VehicleProcess::Meanings(const char* what) const
{
    std::vector<std::string> meanings;
    for (const Entry& entry : Log()) {
        if (entry.what == QLatin1String(what))
            meanings.push_back(entry.meaning.toStdString());
    }
    return meanings;
}

bool VehicleProcess::HasNote(const char* text) const
{
    return std::ranges::any_of(Log(), [text](const Entry& entry) {
        return entry.what == QLatin1String("--") && entry.bytes == QLatin1String(text);
    });
}

int VehicleProcess::End()
{
    mProcess.terminate();
    return mProcess.waitForFinished(kPatienceMs) && mProcess.exitStatus() == QProcess::NormalExit ? mProcess.exitCode()
                                                                                                  : -1;
}

}  // namespace fenrik
