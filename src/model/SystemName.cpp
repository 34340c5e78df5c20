#include "model/SystemName.h"

#include "platform/CFileSystem.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryFile>

namespace fenrik::SystemName {

namespace {

constexpr const char* kNoSystem = "(Unspecified System)";

// A file name's bytes, less what stands behind it while the file is made or changed.
constexpr int kMostBytes = 255 - int(sizeof ".new-01234567" - 1);

bool IsOfTheProgram(const QString& name)
{
    static const QStringList own{QStringLiteral("ncCommand"), QStringLiteral("SpecialCommands"),
                                 QStringLiteral("fxmaps")};
    return own.contains(name, Qt::CaseInsensitive);
}

bool IsPortable(const QString& name)
{
    static const QRegularExpression forbidden(QStringLiteral(R"([\x00-\x1F<>:"/\\|?*])"));
    // With any extension they are still the device.
    static const QRegularExpression device(QStringLiteral(R"(^(CON|PRN|AUX|NUL|COM[1-9]|LPT[1-9]) *(\..*)?$)"),
                                           QRegularExpression::CaseInsensitiveOption);
    return !name.contains(forbidden) && !device.match(name).hasMatch() && !name.startsWith(QLatin1Char('.')) &&
           !name.trimmed().isEmpty();
}

bool CanBeMade(const QString& path)
{
    const QFileInfo taken(path);
    if (taken.exists() || taken.isSymLink())
        return false;
    // Not under the name itself: a tool that is killed here must not leave an empty file that looks like a system.
    QTemporaryFile trial(path + QStringLiteral(".new-XXXXXX"));
    return trial.open() && trial.remove();
}

}  // namespace

bool IsUsable(const QString& name, const QString& folder)
{
    const QString fileName = name + QLatin1String(kExtension);
    if (name == QLatin1String(kNoSystem) || IsOfTheProgram(name) || !IsPortable(name) ||
        QFile::encodeName(fileName).size() > kMostBytes)
        return false;
    const QString path = folder + QLatin1Char('/') + fileName;
    return CFileSystem::FileExists(path) || CanBeMade(path);
}

}  // namespace fenrik::SystemName
