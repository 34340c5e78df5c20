#include "platform/SqliteCopy.h"

#include "platform/Error.h"
#include "platform/SqliteStatement.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include <sqlite3.h>
#include <unistd.h>

namespace fenrik {

namespace {

[[noreturn]] void ThrowNotSaved(const QString& target, const QString& reason)
{
    throw Error(ErrorNumber::kPathFileAccess,
                QStringLiteral("The database %1 can't be written: %2").arg(target, reason));
}

/// A new, empty file beside the target, which goes away unless it has become the target.
class FileBeside {
public:
    explicit FileBeside(const QString& target)
        : mTarget(target),
          mFile(QStringLiteral("%1.new-%2").arg(target, QUuid::createUuid().toString(QUuid::Id128).left(8)))
    {
        if (!mFile.open(QIODevice::ReadWrite | QIODevice::NewOnly))
            ThrowNotSaved(mTarget, mFile.errorString());
        if (QFileInfo::exists(mTarget))
            mFile.setPermissions(QFile::permissions(mTarget));
    }

    ~FileBeside()
    {
        if (!mTaken)
            mFile.remove();
    }

    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    [[nodiscard]] QByteArray Name() const { return QFile::encodeName(mFile.fileName()); }

    void BecomeTarget()
    {
        const QByteArray target = QFile::encodeName(mTarget);
        if (fsync(mFile.handle()) != 0 || std::rename(Name().constData(), target.constData()) != 0)
            ThrowNotSaved(mTarget, QString::fromLocal8Bit(std::strerror(errno)));
        mTaken = true;
    }

private:
    QString mTarget;
    QFile mFile;
    bool mTaken = false;
};

using Connection = std::unique_ptr<sqlite3, decltype(&sqlite3_close_v2)>;

Connection OpenForCopy(const QByteArray& name)
{
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(name.constData(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    Connection connection(handle, sqlite3_close_v2);
    if (code != SQLITE_OK)
        ThrowEngineError(handle, code);
    // A copy that breaks off is thrown away as a whole, so there is nothing to roll back to.
    sqlite3_exec(handle, "PRAGMA journal_mode = OFF", nullptr, nullptr, nullptr);
    return connection;
}

}  // namespace

void CopyDatabase(sqlite3* source, const QString& target)
{
    FileBeside file(QFileInfo(target).absoluteFilePath());
    const Connection copy = OpenForCopy(file.Name());
    sqlite3_backup* backup = sqlite3_backup_init(copy.get(), "main", source, "main");
    const int code = backup ? sqlite3_backup_step(backup, -1) : sqlite3_errcode(copy.get());
    sqlite3_backup_finish(backup);
    if (code != SQLITE_DONE)
        ThrowNotSaved(target, QString::fromUtf8(sqlite3_errstr(code)));
    file.BecomeTarget();
}

}  // namespace fenrik
