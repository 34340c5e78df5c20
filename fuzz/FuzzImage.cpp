// A node image file. The first byte is the node's type, so that each model's tables are walked; the rest is the
// image, repeated until it is full.

#include "model/CNode.h"
#include "model/DownloadProgress.h"
#include "model/MemoryRoad.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    QByteArray bytes;
    bytes.reserve(fenrik::NodeImage::kSize);
    for (int i = 0; i < fenrik::NodeImage::kSize; ++i)
        bytes.append(char(data[1 + std::size_t(i) % (size - 1)]));
    bytes[fenrik::NodeImage::kNodeType - 1] = char(data[0]);

    const fenrik::NodeImage image(bytes);
    fenrik::CNode node;
    node.setNodeFile(&image);
    fenrik::DownloadProgress progress(nullptr);
    std::uint8_t nodes = 0;
    fenrik::MemoryRoad(node, fenrik::CNode::kFromFile, true, progress).Run(nodes);
    for (int i = 1; i <= node.COutputs().Count(); ++i) {
        if (node.COutputs()[i].RPN().size() > fenrik::NodeImage::kBlockLength)
            std::abort();
    }
    return 0;
}
