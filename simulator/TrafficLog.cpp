#include "simulator/TrafficLog.h"

#include "simulator/TimeSource.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace fenrik {

namespace {

std::string Stamp(double seconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%8.3f ", seconds);
    return text;
}

std::string Hex(std::span<const std::uint8_t> bytes)
{
    std::string all;
    for (const auto byte : bytes) {
        char text[8];
        std::snprintf(text, sizeof text, " %02X", unsigned(byte));
        all += text;
    }
    return all;
}

}  // namespace

void TrafficLog::Bytes(std::string_view what, std::span<const std::uint8_t> bytes, std::string_view meaning)
{
    if (mOut)
        *mOut << Stamp(mTime.Seconds()) << what << Hex(bytes) << "  " << meaning << std::endl;
}

void TrafficLog::Note(std::string_view text)
{
    if (mOut)
        *mOut << Stamp(mTime.Seconds()) << "-- " << text << std::endl;
}

std::string TrafficLog::Describe(std::span<const std::uint8_t> bytes, std::string_view otherwise)
{
    Frame::Bytes window{};
    if (bytes.size() != window.size())
        return std::string(otherwise);
    std::copy(bytes.begin(), bytes.end(), window.begin());
    const auto frame = Frame::Decode(window);
    if (!frame)
        return std::string(otherwise);
    return std::to_string(frame->command) + " state=" + (frame->state ? "1" : "0") +
           " ext=" + (frame->extended ? "1" : "0") + " data=" + std::to_string(frame->data);
}

}  // namespace fenrik
