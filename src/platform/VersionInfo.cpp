#include "platform/VersionInfo.h"

#include <QRegularExpression>
#include <QStringList>

namespace fenrik {

VersionInfo::VersionInfo(int major, int minor, int revision, const QString& comments)
    : mMajor(major), mMinor(minor), mRevision(revision)
{
    static const QRegularExpression kNoWord(QStringLiteral("\\W+"));
    const QStringList words = comments.toLower().split(kNoWord, Qt::SkipEmptyParts);
    mIsBeta = words.contains(QStringLiteral("beta"));
    mIsTest = words.contains(QStringLiteral("test"));
    mIsDebug = words.contains(QStringLiteral("debug"));
}

VersionInfo VersionInfo::OfThisBuild()
{
    return {FENRIK_VERSION_MAJOR, FENRIK_VERSION_MINOR, FENRIK_VERSION_REVISION, QStringLiteral(FENRIK_COMMENT)};
}

QString VersionInfo::Copyright()
{
    return QStringLiteral("Copyright \u00A9 2026 Fenrik Diagnostics");
}

QString VersionInfo::GetVersionRelease() const
{
    return QStringLiteral("%1.%2.3").arg(mMajor).arg(mMinor);
}

QString VersionInfo::MajorMinorRevision() const
{
    return QStringLiteral("%1.%2.%3").arg(mMajor).arg(mMinor).arg(mRevision);
}

QString VersionInfo::Build() const
{
    return QStringLiteral("%1").arg(mRevision % 100, 3, 10, QLatin1Char('0'));
}

}  // namespace fenrik
