#include "model/NodeImage.h"

#include <QFile>

namespace fenrik {

std::optional<NodeImage> NodeImage::Open(const QString& path)
{
    if (!path.endsWith(QStringLiteral(".bin"), Qt::CaseInsensitive))
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() != kSize)
        return std::nullopt;
    const QByteArray bytes = file.read(kSize);
    if (bytes.size() != kSize)
        return std::nullopt;
    return NodeImage(bytes);
}

}  // namespace fenrik
