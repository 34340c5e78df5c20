#pragma once

#include "platform/ComPorts.h"

#include <QFile>
#include <QTemporaryDir>

namespace fenrik {

/// A folder of port links of a test's own, so that COM numbers mean what the test says.
class PortFolder {
public:
    [[nodiscard]] QString Path() const { return mFolder.path(); }

    /// COM`number` is the device `path` from now on.
    void Link(int number, const QString& path)
    {
        const QString link = QStringLiteral("%1/com%2").arg(mFolder.path()).arg(number);
        QFile::remove(link);
        QFile::link(path, link);
    }

    /// The ports of this folder, on a machine that has the serial devices `devices`.
    [[nodiscard]] ComPorts Ports(const QList<SerialDevice>& devices = {}) const
    {
        return ComPorts(mFolder.path(), [devices] { return devices; });
    }

private:
    QTemporaryDir mFolder;
};

}  // namespace fenrik
