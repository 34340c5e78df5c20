#pragma once

#include "simulator/NodeConfig.h"

#include <string_view>

namespace fenrik {

/// Puts a record together, field after field.
class ByteWriter {
public:
    ByteWriter& Byte(int value)
    {
        mBytes.push_back(std::uint8_t(value));
        return *this;
    }
    /// Low byte first.
    ByteWriter& Word(int value) { return Byte(value).Byte(value >> 8); }
    /// High byte first.
    ByteWriter& BigWord(int value) { return Byte(value >> 8).Byte(value); }
    ByteWriter& Zeros(int count)
    {
        mBytes.insert(mBytes.end(), std::size_t(count), 0);
        return *this;
    }
    ByteWriter& Text(std::string_view text)
    {
        mBytes.insert(mBytes.end(), text.begin(), text.end());
        return *this;
    }

    [[nodiscard]] ByteString Take() { return std::move(mBytes); }

private:
    ByteString mBytes;
};

}  // namespace fenrik
