#include "e2e/PortableCopy.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

namespace fenrik {

namespace {

const QString kBin = QStringLiteral(FENRIK_BIN_FOLDER);

QString TextOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

PortableCopy::PortableCopy()
{
    for (const char* folder : {"bin", "config/fenrik-diagnostics", "data", "runtime"})
        QDir().mkpath(Path(folder));
    QFile::setPermissions(Path("runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const char* database : {"ncCommand.dav", "SpecialCommands.dav", "fxmaps.dav"})
        QFile::copy(kBin + QLatin1Char('/') + QLatin1String(database),
                    ProgramFolder() + QLatin1Char('/') + QLatin1String(database));
    QFile settings(Path("config/fenrik-diagnostics/settings.ini"));
    if (settings.open(QIODevice::WriteOnly))
        settings.write("[Settings]\nCommPort=5\n");
}

QString PortableCopy::CopyTool() const
{
    const QString copy = Path("bin/fenrik-diagnostics");
    QFile::copy(kBin + QStringLiteral("/fenrik-diagnostics"), copy);
    return copy;
}

QProcessEnvironment PortableCopy::Environment() const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), ConfigHome());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), Path("data"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), Path("runtime"));
    environment.insert(QStringLiteral("LSAN_OPTIONS"),
                       QStringLiteral("print_suppressions=0:suppressions=" FENRIK_LEAK_SUPPRESSIONS));
    return environment;
}

QStringList PortableCopy::LoggedLines() const
{
    static const QRegularExpression frame(QStringLiteral("([0-9A-F]{1,2}\\.){5}[0-9A-F]{1,2}"));
    const QDir logs(Path("bin/diaglogs"));
    QStringList lines;
    for (const QString& name : logs.entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name))
        lines += TextOf(logs.filePath(name)).split(QStringLiteral("\r\n")).filter(frame);
    return lines;
}

bool PortableCopy::HasErrorLog() const
{
    return QFile::exists(Path("bin/DiagErr.log"));
}

QString PortableCopy::StoredSettings() const
{
    return TextOf(Path("config/fenrik-diagnostics/settings.ini"));
}

}  // namespace fenrik
