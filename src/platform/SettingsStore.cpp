#include "platform/SettingsStore.h"

#include "platform/Error.h"
#include "platform/IniTexts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace fenrik {

SettingsStore::SettingsStore(const QString& path)
    : mSetAside(IniTexts::SetObjectsAside(path)), mFile(path, QSettings::IniFormat)
{
}

QString SettingsStore::ConfigFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/fenrik-diagnostics");
}

QString SettingsStore::GetSetting(const QString& section, const QString& key, const QString& defaultValue) const
{
    const QVariant value = mFile.value(section + QLatin1Char('/') + key);
    if (!value.isValid())
        return defaultValue;
    // An unquoted comma makes a list of the text; it was one text when it was saved.
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(QStringLiteral(", "))
                                                    : value.toString();
}

void SettingsStore::SaveSetting(const QString& section, const QString& key, const QString& value)
{
    mFile.setValue(section + QLatin1Char('/') + key, value);
}

void SettingsStore::Sync()
{
    QDir().mkpath(QFileInfo(mFile.fileName()).path());
    mFile.sync();
    if (mFile.status() == QSettings::AccessError)
        throw Error(ErrorNumber::kPathFileAccess,
                    QStringLiteral("The settings could not be written to %1").arg(QDir::toNativeSeparators(Path())));
}

void SettingsStore::KeepBrokenCopy()
{
    const QString copy = Path() + QStringLiteral(".broken");
    QFile::remove(copy);
    QFile::copy(Path(), copy);
}

QString SettingsStore::Path() const
{
    return mFile.fileName();
}

}  // namespace fenrik
