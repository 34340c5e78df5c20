#include "logging/LogFile.h"

#include "platform/Error.h"

namespace fenrik {

LogFile::LogFile(const QString& path) : mFile(path)
{
    // Without a buffer: what doesn't fit on the disk shall be known here and not when the file is closed.
    if (!mFile.open(QIODevice::Append | QIODevice::Unbuffered))
        Fail(mFile.errorString());
}

void LogFile::Write(const QStringList& lines)
{
    const QString end = QStringLiteral("\r\n");
    const QByteArray bytes = (lines.join(end) + end).toUtf8();
    const qint64 written = mFile.write(bytes);
    if (written == bytes.size())
        return;
    const QString reason = mFile.errorString();
    // Half a line would push the next one out of its columns.
    mFile.resize(mFile.size() - qMax<qint64>(written, 0));
    Fail(reason);
}

void LogFile::Fail(const QString& reason) const
{
    throw Error(ErrorNumber::kPathFileAccess,
                QStringLiteral("The log %1 can't be written: %2").arg(mFile.fileName(), reason));
}

}  // namespace fenrik
