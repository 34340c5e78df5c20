#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fenrik {

/// What a frame between tool and relay is about. A frame read from the wire may have a number that is not here.
enum class PipeFrameType : std::int16_t {
    frameEchoServer = 1,
    frameEchoClient = 2,
    frameEchoReply = 3,
    frameAuthenticate = 5,
    frameAuthenticated = 6,
    frameLogoff = 7,
    frameUserListRequest = 10,
    frameUserList = 11,
    framePipeTo = 20,
    frameBreakPipe = 21,
    framePiped = 31,
    framePipeBroken = 32,
    frameChat = 33,
    frameUserListChanged = 35,
    frameNetworkMessage = 50,
    frameBussAccessRequest = 51,
    frameBussAccessReply = 52,
    frameReserved53 = 53,
    frameServerInfoRequest = 90,
    frameServerInfo = 91,
    frameServerError = 128,
    frameFramingError = 129,
};

/// One frame of the TCP connection between a tool and the relay. Numbers are signed and travel low byte first.
///
///   offset  width   value
///   0       2       preamble, 21328: the bytes 0x50 0x53
///   2       2       frame type
///   4       2       length of the body; the header is not counted
///   6       length  body
///
/// Texts are bytes of the code page Windows-1252. A text of fixed width has blanks on its right.
struct PipeFrame {
    static constexpr std::int16_t kPreamble = 21328;
    static constexpr std::size_t kHeaderSize = 6;
    static constexpr std::size_t kLongestBody = 32767;

    PipeFrameType type{};
    std::string body;
};

/// Adds the frame's bytes to `out`. Throws std::length_error, and adds nothing, if the body is longer than
/// PipeFrame::kLongestBody.
void AppendPipeFrame(std::string& out, PipeFrameType type, std::string_view body);

[[nodiscard]] std::string EncodePipeFrame(PipeFrameType type, std::string_view body);

/// The four bytes of a number in a body.
[[nodiscard]] std::string PipeNumber(std::int32_t value);

/// The number at `offset` of `body`; a byte that isn't there counts as 0.
[[nodiscard]] std::int32_t ReadPipeNumber(std::string_view body, std::size_t offset = 0);

/// `text` with blanks on its right up to `width`, or its first `width` bytes.
[[nodiscard]] std::string PipeField(std::string_view text, std::size_t width);

/// `text` without blanks at both ends.
[[nodiscard]] std::string_view TrimmedPipeText(std::string_view text);

}  // namespace fenrik
