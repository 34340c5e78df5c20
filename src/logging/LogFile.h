#pragma once

#include <QFile>
#include <QStringList>

namespace fenrik {

/// A log that is open for appending while the object lives. Lines end in CR LF.
class LogFile {
public:
    /// Makes the file if it is not there yet. Throws Error 75.
    explicit LogFile(const QString& path);

    /// Adds all of `lines` or, when the disk is full, none of them. Throws Error 75.
    void Write(const QStringList& lines);

private:
    [[noreturn]] void Fail(const QString& reason) const;

    QFile mFile;
};

}  // namespace fenrik
