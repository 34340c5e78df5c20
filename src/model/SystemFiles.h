#pragma once

#include "model/CNode.h"
#include "model/Collection.h"

#include <QString>

namespace fenrik {

/// The memory images of a system's nodes (see NodeImage), as they lie in a folder: files of exactly NodeImage::kSize
/// bytes named after the system, "<system>_Node 3.bin".
class SystemFiles {
public:
    /// Reads what `folder` (with a separator at its end) has of the system. What is no image, can't be read, or
    /// has no node number is left out in silence. `quickie` reads no more than the numbers of the node and of nodes.
    SystemFiles(const QString& folder, const QString& systemName, bool quickie);

    /// A node for each image. An image replaces what stands at the position of its number, or comes last if the
    /// list is shorter than that; so a later file wins, and the order of the files' names (numbers in them by
    /// value) matters.
    [[nodiscard]] Collection<CNode>& Nodes() { return mNodes; }

    /// The largest node count that an image names; 0 without images.
    [[nodiscard]] int NodeCount() const { return mNodeCount; }

private:
    void ReadHead(const QString& path);
    void ReadWhole(const QString& path);
    void Place(std::unique_ptr<CNode> node);

    Collection<CNode> mNodes;
    std::uint8_t mNodeCount = 0;
};

}  // namespace fenrik
