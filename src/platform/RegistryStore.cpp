#include "platform/RegistryStore.h"

#include "platform/Error.h"
#include "platform/IniTexts.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace fenrik {

namespace {

// The file has no empty groups: a key exists by its default value, which may be empty.
const QString kDefaultValue = QStringLiteral("(Default)");
const QString kNumberMark = QStringLiteral("dword:");
const QString kTextMark = QStringLiteral("text:");

QString Group(const QString& path)
{
    QStringList parts;
    for (const QString& part : path.split(QLatin1Char('\\'), Qt::SkipEmptyParts))
        parts.append(RegistryStore::OnePart(part));
    return parts.join(QLatin1Char('/'));
}

QString Entry(const QString& path, const QString& name)
{
    return Group(path) + QLatin1Char('/') + (name.isEmpty() ? kDefaultValue : RegistryStore::OnePart(name));
}

/// An unquoted comma, as a person may write it, makes a list of the text.
QString Text(const QVariant& value)
{
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(QStringLiteral(", "))
                                                    : value.toString();
}

}  // namespace

RegistryStore::RegistryStore(const QString& path)
    : mSetAside(IniTexts::SetObjectsAside(path)), mFile(path, QSettings::IniFormat)
{
    // Groups are read when they are first asked for; only then would damage be known.
    static_cast<void>(mFile.allKeys());
}

QString RegistryStore::OnePart(const QString& name)
{
    return QString(name).replace(QLatin1Char('\\'), QLatin1Char('_')).replace(QLatin1Char('/'), QLatin1Char('_'));
}

bool RegistryStore::KeyExists(const QString& path) const
{
    Check();
    const QString group = Group(path) + QLatin1Char('/');
    const QStringList entries = mFile.allKeys();
    return std::any_of(entries.begin(), entries.end(),
                       [&group](const QString& entry) { return entry.startsWith(group); });
}

void RegistryStore::CreateKey(const QString& path)
{
    if (!KeyExists(path))
        WriteValue(path, {}, QString());
}

void RegistryStore::DeleteKey(const QString& path)
{
    Check();
    mFile.remove(Group(path));
    Sync();
}

QStringList RegistryStore::SubKeys(const QString& path) const
{
    Check();
    const QString group = Group(path) + QLatin1Char('/');
    QStringList names;
    for (const QString& entry : mFile.allKeys()) {
        const QString below = entry.startsWith(group) ? entry.mid(group.size()) : QString();
        const QString name = below.section(QLatin1Char('/'), 0, 0);
        // A person may have written two separators; the key between them would be this one again.
        if (!name.isEmpty() && name.size() < below.size() && !names.contains(name))
            names.append(name);
    }
    return names;
}

QVariant RegistryStore::ReadValue(const QString& path, const QString& name) const
{
    Check();
    const QVariant value = mFile.value(Entry(path, name));
    if (!value.isValid())
        return {};
    const QString text = Text(value);
    if (text.startsWith(kTextMark))
        return text.mid(kTextMark.size());
    bool isNumber = false;
    const int number = text.startsWith(kNumberMark) ? text.mid(kNumberMark.size()).toInt(&isNumber) : 0;
    return isNumber ? QVariant(number) : QVariant(text);
}

void RegistryStore::WriteValue(const QString& path, const QString& name, const QString& text)
{
    // Only a text that could be taken for something else needs the mark.
    const bool marked = text.startsWith(kNumberMark) || text.startsWith(kTextMark);
    Write(Entry(path, name), marked ? kTextMark + text : text);
}

void RegistryStore::WriteValue(const QString& path, const QString& name, std::int32_t number)
{
    Write(Entry(path, name), kNumberMark + QString::number(number));
}

void RegistryStore::Write(const QString& entry, const QVariant& value)
{
    Check();
    mFile.setValue(entry, value);
    Sync();
}

void RegistryStore::Sync()
{
    QDir().mkpath(QFileInfo(mFile.fileName()).path());
    mFile.sync();
    Check();
}

void RegistryStore::Check() const
{
    // A file that is damaged is not written either: what can still be read of it by a person would be lost.
    if (mFile.status() != QSettings::NoError)
        throw Error(ErrorNumber::kPathFileAccess, QStringLiteral("The registry could not be read or written in %1")
                                                      .arg(QDir::toNativeSeparators(mFile.fileName())));
}

}  // namespace fenrik
