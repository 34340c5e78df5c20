#include "pipe/PipeReader.h"

#include <algorithm>

namespace fenrik {

std::size_t PipeReader::Append(std::string_view bytes)
{
    // Once for each piece, not for each frame: small frames come many at a time.
    mBytes.erase(0, mBegin);
    mBegin = 0;
    const auto taken = std::min(bytes.size(), Room());
    mBytes.append(bytes.substr(0, taken));
    return taken;
}

PipeReader::Found PipeReader::Next(PipeFrame& frame)
{
    if (Held() >= 2 && Preamble() != PipeFrame::kPreamble)
        return Found::BadPreamble;
    if (Held() < PipeFrame::kHeaderSize)
        return Found::Nothing;
    const int length = Short(4);
    if (length < 0 || std::size_t(length) > mLongestBody)
        return Found::BadLength;
    const auto whole = PipeFrame::kHeaderSize + std::size_t(length);
    if (Held() < whole)
        return Found::Nothing;
    frame.type = PipeFrameType(Short(2));
    frame.body.assign(mBytes, mBegin + PipeFrame::kHeaderSize, std::size_t(length));
    Drop(whole);
    return Found::Frame;
}

void PipeReader::Clear()
{
    Drop(Held());
}

std::int16_t PipeReader::Short(std::size_t offset) const
{
    const auto at = [&](std::size_t i) {
        return mBegin + i < mBytes.size() ? unsigned(std::uint8_t(mBytes[mBegin + i])) : 0u;
    };
    return std::int16_t(std::uint16_t(at(offset) | at(offset + 1) << 8));
}

void PipeReader::Drop(std::size_t count)
{
    mBegin += count;
    if (mBegin < mBytes.size())
        return;
    mBytes.clear();
    mBegin = 0;
}

}  // namespace fenrik
