#pragma once

#include <cstdint>
#include <string_view>

namespace fenrik {

/// Takes the fuzzer's input apart. Behind its end all bytes are 0.
class FuzzSteps {
public:
    explicit FuzzSteps(std::string_view input) : mRest(input) {}

    [[nodiscard]] bool AtEnd() const { return mRest.empty(); }
    unsigned Byte()
    {
        const auto byte = mRest.empty() ? '\0' : mRest.front();
        mRest.remove_prefix(mRest.empty() ? 0 : 1);
        return std::uint8_t(byte);
    }
    std::string_view Bytes(std::size_t count)
    {
        const auto bytes = mRest.substr(0, count);
        mRest.remove_prefix(bytes.size());
        return bytes;
    }

private:
    std::string_view mRest;
};

}  // namespace fenrik
