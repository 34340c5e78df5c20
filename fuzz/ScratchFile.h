#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace fenrik {

/// A file in memory that holds given bytes and goes away with the object, for readers that want a path. Each has a name
/// of its own, since some readers remember a file by its name.
class ScratchFile {
public:
    explicit ScratchFile(const QByteArray& bytes, const QString& ending = {}) : mPath(NewPath(ending)) { Write(bytes); }
    ~ScratchFile() { QFile::remove(mPath); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    [[nodiscard]] const QString& Path() const { return mPath; }

    void Write(const QByteArray& bytes) const
    {
        QFile file(mPath);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            std::abort();
    }

    [[nodiscard]] QByteArray Bytes() const
    {
        QFile file(mPath);
        if (!file.open(QIODevice::ReadOnly))
            std::abort();
        return file.readAll();
    }

    /// The folder that all of them lie in.
    [[nodiscard]] static QString Folder()
    {
        static const QTemporaryDir folder(QDir(QStringLiteral("/dev/shm")).exists()
                                              ? QStringLiteral("/dev/shm/fenrik-fuzz-XXXXXX")
                                              : QDir::tempPath() + QStringLiteral("/fenrik-fuzz-XXXXXX"));
        return folder.path();
    }

private:
    [[nodiscard]] static QString NewPath(const QString& ending)
    {
        static int count = 0;
        return Folder() + QStringLiteral("/%1%2").arg(++count).arg(ending);
    }

    QString mPath;
};

}  // namespace fenrik
