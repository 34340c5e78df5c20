#include "pipe/PipeFrame.h"

#include <stdexcept>

namespace fenrik {

namespace {

void AppendShort(std::string& out, std::int16_t value)
{
    out.push_back(char(value & 0xFF));
    out.push_back(char(value >> 8 & 0xFF));
}

}  // namespace

void AppendPipeFrame(std::string& out, PipeFrameType type, std::string_view body)
{
    if (body.size() > PipeFrame::kLongestBody)
        throw std::length_error("the body of a frame is too long");
    AppendShort(out, PipeFrame::kPreamble);
    AppendShort(out, std::int16_t(type));
    AppendShort(out, std::int16_t(body.size()));
    out.append(body);
}

std::string EncodePipeFrame(PipeFrameType type, std::string_view body)
{
    std::string out;
    AppendPipeFrame(out, type, body);
    return out;
}

std::string PipeNumber(std::int32_t value)
{
    const auto bits = std::uint32_t(value);
    return {char(bits & 0xFF), char(bits >> 8 & 0xFF), char(bits >> 16 & 0xFF), char(bits >> 24)};
}

std::int32_t ReadPipeNumber(std::string_view body, std::size_t offset)
{
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 4 && offset + i < body.size(); ++i)
        bits |= std::uint32_t(std::uint8_t(body[offset + i])) << (8 * i);
    return std::int32_t(bits);
}

std::string PipeField(std::string_view text, std::size_t width)
{
    std::string field(text.substr(0, width));
    field.resize(width, ' ');
    return field;
}

std::string_view TrimmedPipeText(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace fenrik
