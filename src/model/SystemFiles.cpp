#include "model/SystemFiles.h"

#include "model/NodeImage.h"

#include <QCollator>
#include <QDir>
#include <QFile>

#include <algorithm>

namespace fenrik {

namespace {

// Node 2 before node 10: taken by their letters alone, the images of a system of ten nodes would push each other out.
QFileInfoList ImagesInOrder(const QString& folder, const QString& systemName)
{
    QFileInfoList images;
    const auto files = QDir(folder).entryInfoList(QDir::Files);
    std::copy_if(files.begin(), files.end(), std::back_inserter(images), [&systemName](const QFileInfo& file) {
        return file.fileName().startsWith(systemName, Qt::CaseInsensitive) &&
               file.fileName().endsWith(QStringLiteral(".bin"), Qt::CaseInsensitive) && file.size() == NodeImage::kSize;
    });

    QCollator byNumber{QLocale(QLocale::English)};  // the C locale knows no numeric mode
    byNumber.setNumericMode(true);
    std::sort(images.begin(), images.end(), [&byNumber](const QFileInfo& left, const QFileInfo& right) {
        return byNumber.compare(left.fileName(), right.fileName()) < 0;
    });
    return images;
}

}  // namespace

SystemFiles::SystemFiles(const QString& folder, const QString& systemName, bool quickie)
{
    for (const QFileInfo& image : ImagesInOrder(folder, systemName)) {
        if (quickie)
            ReadHead(image.filePath());
        else
            ReadWhole(image.filePath());
    }
}

void SystemFiles::ReadHead(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray head = file.read(NodeImage::kNodeCount);
    if (head.size() < NodeImage::kNodeCount || head[NodeImage::kNodeNumber - 1] == 0)
        return;
    auto node = std::make_unique<CNode>();
    node->setNumber(std::uint8_t(head[NodeImage::kNodeNumber - 1]));
    mNodeCount = std::max(mNodeCount, std::uint8_t(head[NodeImage::kNodeCount - 1]));
    Place(std::move(node));
}

void SystemFiles::ReadWhole(const QString& path)
{
    auto node = std::make_unique<CNode>();
    std::uint8_t count = mNodeCount;
    node->ReadNode(path, count, true);
    if (node->number() == 0)
        return;  // an erased memory, or a file that went away
    mNodeCount = count;
    Place(std::move(node));
}

void SystemFiles::Place(std::unique_ptr<CNode> node)
{
    const QString key = node->key();
    const int sameNode = mNodes.PositionOf(key);
    if (const int position = node->number(); position <= mNodes.Count())
        mNodes.Replace(position, std::move(node), key);
    else if (sameNode > 0)
        mNodes.Replace(sameNode, std::move(node), key);
    else
        mNodes.Add(std::move(node), key);
}

}  // namespace fenrik
