#pragma once

#include "simulator/NodeConfig.h"

namespace fenrik {

/// A node's memory as it is read byte by byte: 32,768 bytes, erased ones 255. Addresses count from 0.
///
///   address  content
///   2        node number
///   3        number of nodes in the vehicle
///   7-9      version of the configuration
///   10-11    month, day of its date
///   12-13    year, high byte first
///   14       node type
///
/// Older models hold their whole configuration here besides, at addresses of their own.
class MemoryImage {
public:
    static constexpr std::size_t kSize = 32768;

    explicit MemoryImage(const NodeConfig& node);

    [[nodiscard]] const ByteString& Bytes() const { return mBytes; }

    /// The byte at `address`; 255 beyond the end.
    [[nodiscard]] std::uint8_t At(std::uint16_t address) const { return address < kSize ? mBytes[address] : 0xFF; }

    /// True if nodes of `type` hold their whole configuration in memory.
    [[nodiscard]] static bool HoldsConfiguration(int type);

private:
    struct Layout;

    void PutHeader(const NodeConfig& node);
    void PutName(int address, const std::string& name);
    void PutInput(const Layout& layout, const NodeConfig& node, int index);
    void PutOutput(const Layout& layout, const NodeConfig& node, int index);
    void PutDelay(int address, int halfSeconds);
    void Put(int address, int value) { mBytes.at(std::size_t(address)) = std::uint8_t(value); }

    [[nodiscard]] static const Layout* FindLayout(int type);

    ByteString mBytes;
};

}  // namespace fenrik
