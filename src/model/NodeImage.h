#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace fenrik {

/// A node's memory, byte for byte, as it lies in a ".bin" file. Positions count from 1. Where the tables lie that
/// follow from the model, MemoryMap tells; the same for all models are:
///
///   position  value
///   3         number of the node
///   4         number of nodes in the system
///   15        type of the node
class NodeImage {
public:
    static constexpr int kSize = 32768;
    static constexpr int kNodeNumber = 3;
    static constexpr int kNodeCount = 4;
    static constexpr int kNodeType = 15;
    static constexpr int kNameLength = 32;
    static constexpr int kBlockLength = 128;  ///< of an output's record and relationship

    /// The image in a file whose name ends in ".bin" and that is exactly kSize long; nothing for any other.
    [[nodiscard]] static std::optional<NodeImage> Open(const QString& path);

    /// `bytes` that may be fewer than kSize; those that lack are 0.
    explicit NodeImage(const QByteArray& bytes) : mBytes(bytes) {}

    /// The byte at `position`, 0 outside the image.
    [[nodiscard]] std::uint8_t ByteAt(int position) const
    {
        return position >= 1 && position <= mBytes.size() ? std::uint8_t(mBytes[position - 1]) : 0;
    }

private:
    QByteArray mBytes;
};

}  // namespace fenrik
