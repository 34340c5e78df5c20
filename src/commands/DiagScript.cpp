#include "commands/DiagScript.h"

#include "platform/Error.h"
#include "shared/EventPump.h"

#include <QFile>
#include <QTextStream>

namespace fenrik {

namespace {

// Far longer than a statement can be; only a file that is no script has such lines.
constexpr int kLongestLine = 4096;
constexpr int kLongestShown = 80;

/// A line as it can be shown in a box, whatever bytes it has.
QString Shown(const QString& line)
{
    QString text = line.left(kLongestShown);
    for (QChar& character : text) {
        if (!character.isPrint())
            character = QLatin1Char('?');
    }
    return text;
}

void Open(QFile& file)
{
    if (!file.exists())
        throw Error(ErrorNumber::kFileNotFound, QStringLiteral("File not found: %1").arg(file.fileName()));
    if (!file.open(QIODevice::ReadOnly))
        throw Error(ErrorNumber::kPathFileAccess,
                    QStringLiteral("The script %1 can't be read: %2").arg(file.fileName(), file.errorString()));
}

}  // namespace

bool DiagScript::Run(const QString& path)
{
    mLine = 0;
    mStopRequested = false;
    QFile file(path);
    Open(file);
    QTextStream text(&file);
    while (!text.atEnd()) {
        const QString line = text.readLine(kLongestLine);
        if (!MayGoOn())
            return false;
        RunLine(line);
    }
    return true;
}

bool DiagScript::MayGoOn()
{
    mHost.ShowScriptLine(mLine + 1);
    mPump.Once();
    return !mStopRequested && !mPump.Stopped();
}

void DiagScript::RunLine(const QString& line)
{
    ++mLine;
    try {
        if (line.size() >= kLongestLine)
            throw Error(ErrorNumber::kTypeMismatch, QStringLiteral("The line is too long"));
        Execute(ParseDiagScriptLine(line));
    } catch (const Error& error) {
        // In one go: both texts may hold what looks like a place for the next one.
        throw Error(
            error.Number(),
            QStringLiteral("%1. Script line %2: %3").arg(error.Description(), QString::number(mLine), Shown(line)));
    }
}

void DiagScript::Execute(const DiagScriptStatement& statement)
{
    if (const auto* sleep = std::get_if<DiagScriptSleep>(&statement))
        mPump.Block(sleep->milliseconds);
    else
        mHost.SendScriptCommand(std::get<DiagScriptCommand>(statement));
}

}  // namespace fenrik
