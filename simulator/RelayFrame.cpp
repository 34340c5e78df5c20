#include "simulator/RelayFrame.h"

#include <cstdint>
#include <stdexcept>

namespace fenrik {

namespace {

constexpr unsigned kLongest = 0x7FFF;

std::string Word(unsigned value)
{
    return {char(value % 256), char(value / 256 % 256)};
}

unsigned ReadWord(const std::string& bytes, std::size_t at)
{
    return std::uint8_t(bytes[at]) + 256u * std::uint8_t(bytes[at + 1]);
}

}  // namespace

std::string RelayFrame::Encode() const
{
    return "PS" + Word(unsigned(type)) + Word(unsigned(body.size())) + body;
}

std::optional<RelayFrame> RelayFrame::TakeFrom(std::string& bytes)
{
    if (bytes.size() < kHeader)
        return std::nullopt;
    const unsigned length = ReadWord(bytes, 4);
    if (!bytes.starts_with("PS") || length > kLongest)
        throw std::runtime_error("the relay sent what is no frame");
    if (bytes.size() < kHeader + length)
        return std::nullopt;
    RelayFrame frame{int(ReadWord(bytes, 2)), bytes.substr(kHeader, length)};
    bytes.erase(0, kHeader + length);
    return frame;
}

std::string RelayNumber(int value)
{
    const auto bits = unsigned(value);
    return Word(bits & 0xFFFF) + Word(bits >> 16);
}

int ReadRelayNumber(std::string_view body)
{
    unsigned bits = 0;
    for (std::size_t i = 4; i-- > 0;)
        bits = bits * 256 + (i < body.size() ? std::uint8_t(body[i]) : 0u);
    return int(bits);
}

std::string RelayField(std::string text, std::size_t width)
{
    text.resize(width, ' ');
    return text;
}

}  // namespace fenrik
