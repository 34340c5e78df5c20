#pragma once

#include "diagnostics/Flash.h"
#include "diagnostics/NodeViewFixture.h"

#include <map>

namespace fenrik {

/// A node that gives its header in one reply or byte by byte, and its versions.
class FlashTest : public NodeViewTest {
protected:
    FlashTest()
    {
        window.displayState = NodeViewHost::kViewFlashInfo;
        answer = [this](const Frame& frame) { return Answer(frame); };
    }

    Frames Answer(const Frame& frame)
    {
        if (frame.command == 940)
            return Header();
        if (frame.command == 923)
            return memory.count(frame.data) ? Frames{Frame{950, false, false, memory[frame.data]}} : Frames{};
        if (frame.command != 937)
            return {};
        const auto reply = versions.find(frame.state ? 2 + frame.data : int(frame.extended));
        return reply == versions.end() ? Frames{} : Frames{reply->second};
    }

    Frames Header() const
    {
        if (!givesHeader)
            return {};
        Frames frames{Frame{903, granted, bigEndian, std::uint16_t(header.size())}};
        for (std::size_t i = 0; i < header.size() && i < sent; i += 2) {
            const int second = i + 1 < header.size() ? header[i + 1] : 0;
            frames.push_back(Frame{950, false, false, std::uint16_t(second << 8 | header[i])});
        }
        return frames;
    }

    void AnswerByBytes()
    {
        givesHeader = false;
        memory = {{2, 3}, {3, 8}, {7, 1}, {8, 22}, {9, 3}, {10, 4}, {11, 25}, {12, 0x07}, {13, 0xD9}};
    }

    /// Mounts node 3, known to give its header byte by byte.
    void MountByteByByte()
    {
        Mount(3, 6).setIProtocol(CNode::kProtocolImage);
        AnswerByBytes();
    }

    [[nodiscard]] HeaderRecord ReadHeader()
    {
        HeaderRecord record;
        flash.GetHeaderInfo(record);
        return record;
    }

    [[nodiscard]] QString Line(int row) const { return Row(face, row).left(32); }

    std::vector<std::uint8_t> header{1, 2, 3, 4, 5, 6, 7, 8, 9, 3, 22, 1, 25, 4, 0xE8, 0x07};
    bool givesHeader = true;
    bool granted = true;
    bool bigEndian = false;
    std::size_t sent = 99;  // bytes of the header that arrive
    std::map<int, std::uint16_t> memory;
    std::map<int, Frame> versions{{0, Frame{950, false, false, 0x0103}}, {1, Frame{950, false, true, 0}}};
    Flash flash{system, handler, graphics, errors, window};
};

}  // namespace fenrik
