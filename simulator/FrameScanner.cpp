#include "simulator/FrameScanner.h"

#include <algorithm>

namespace fenrik {

std::vector<Received> FrameScanner::Take(std::span<const std::uint8_t> bytes, double now)
{
    std::vector<Received> found;
    mHeld.insert(mHeld.end(), bytes.begin(), bytes.end());
    mLast = now;
    Scan(found);
    return found;
}

std::vector<Received> FrameScanner::Expire(double now)
{
    std::vector<Received> found;
    while (!mHeld.empty() && now >= Deadline()) {
        TakeLoneByte(found);
        Scan(found);
    }
    return found;
}

void FrameScanner::Scan(std::vector<Received>& found)
{
    while (!mHeld.empty()) {
        switch (FrameAtStart()) {
        case Start::Perhaps:
            return;
        case Start::Whole:
            TakeFrame(found);
            break;
        case Start::No:
            TakeLoneByte(found);
            break;
        }
    }
}

FrameScanner::Start FrameScanner::FrameAtStart() const
{
    if (mHeld[0] != 0 || (mHeld.size() > 1 && (mHeld[1] & 0xF0) != 0xA0))
        return Start::No;
    if (mHeld.size() < Frame::kSize)
        return Start::Perhaps;
    Frame::Bytes window{};
    std::copy_n(mHeld.begin(), window.size(), window.begin());
    return Frame::Decode(window) ? Start::Whole : Start::No;
}

void FrameScanner::TakeFrame(std::vector<Received>& found)
{
    Frame::Bytes window{};
    std::copy_n(mHeld.begin(), window.size(), window.begin());
    mHeld.erase(mHeld.begin(), mHeld.begin() + Frame::kSize);
    found.push_back({Received::Kind::Frame, {window.begin(), window.end()}, *Frame::Decode(window)});
}

void FrameScanner::TakeLoneByte(std::vector<Received>& found)
{
    const auto byte = mHeld.front();
    mHeld.pop_front();
    if (byte == kWakeByte)
        found.push_back({Received::Kind::Wake, {byte}});
    else if (!found.empty() && found.back().kind == Received::Kind::Unparsed)
        found.back().bytes.push_back(byte);
    else
        found.push_back({Received::Kind::Unparsed, {byte}});
}

}  // namespace fenrik
