#include "relay/RelayText.h"

#include "pipe/PipeFrame.h"

#include <algorithm>
#include <cstdint>

namespace fenrik {

namespace {

bool IsControl(char byte)
{
    return std::uint8_t(byte) < 32 || byte == 127;
}

std::string Escaped(std::uint8_t byte)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    return {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
}

}  // namespace

std::string CleanName(std::string_view bytes)
{
    std::string name(bytes);
    std::ranges::replace_if(name, IsControl, ' ');
    return std::string(TrimmedPipeText(name));
}

std::string LogText(std::string_view bytes)
{
    std::string text;
    for (const char c : bytes) {
        const auto byte = std::uint8_t(c);
        if (byte >= 0xA0)  // here Windows-1252 and Unicode agree
            text += {char(0xC0 | byte >> 6), char(0x80 | (byte & 0x3F))};
        else if (IsControl(c) || byte >= 0x80 || c == '"' || c == '\\')
            text += Escaped(byte);
        else
            text += c;
    }
    return text;
}

}  // namespace fenrik
