#pragma once

#include "pipe/PipeFrame.h"

#include <optional>
#include <vector>

namespace fenrik {

/// Widths of the texts in bodies.
constexpr std::size_t kPipeNameWidth = 50;
constexpr std::size_t kPipeKindWidth = 15;
constexpr std::size_t kPipeAddressWidth = 15;
constexpr std::size_t kPipeFlagsWidth = 10;

/// frameAuthenticate: who logs on.
///
///   offset  width  value
///   0       50     zeros; no secret is sent, and what stands here is not looked at
///   50      50     logonID
///   100     15     kind of client
///   115     50     the user's name, as the others see it
struct PipeLogon {
    static constexpr std::size_t kSize = 3 * kPipeNameWidth + kPipeKindWidth;

    std::string logonID;
    std::string kind = "OEMClient";
    std::string userName;

    /// Longer texts are cut.
    [[nodiscard]] std::string Encode() const;

    /// Nothing if `body` doesn't have kSize bytes. Blanks at the ends of texts are gone.
    [[nodiscard]] static std::optional<PipeLogon> Decode(std::string_view body);
};

/// frameAuthenticated, 4 bytes and a text: the server's greeting.
struct PipeWelcome {
    std::int32_t clientID = 0;
    std::string text;

    [[nodiscard]] std::string Encode() const { return PipeNumber(clientID) + text; }
    [[nodiscard]] static std::optional<PipeWelcome> Decode(std::string_view body);
};

/// A record of frameUserList.
///
///   offset  width  value
///   0       4      clientID
///   4       15     network address, as text
///   19      50     the user's name
///   69      10     flags: the first is "+" while the user is in a pipe
struct PipeUserRecord {
    static constexpr std::size_t kSize = 4 + kPipeAddressWidth + kPipeNameWidth + kPipeFlagsWidth;
    static constexpr std::size_t kMostInAFrame = PipeFrame::kLongestBody / kSize;  ///< 414

    std::int32_t clientID = 0;
    std::string clientIP;   ///< with its blanks when decoded
    std::string userName;   ///< without blanks at both ends when decoded
    std::string userFlags;  ///< with its blanks when decoded

    [[nodiscard]] std::string Encode() const;

    /// All records of a frame; nothing if its length is no whole number of them.
    [[nodiscard]] static std::optional<std::vector<PipeUserRecord>> DecodeList(std::string_view body);
};

/// framePiped and framePipeBroken: the other end, and a text for the user.
///
///   offset  width  value
///   0       4      clientID
///   4       50     the user's name
///   54      rest   text
struct PipeNotice {
    static constexpr std::size_t kLeastSize = 4 + kPipeNameWidth;

    std::int32_t clientID = 0;
    std::string name;  ///< without blanks at both ends when decoded
    std::string text;

    [[nodiscard]] std::string Encode() const { return PipeNumber(clientID) + PipeField(name, kPipeNameWidth) + text; }
    [[nodiscard]] static std::optional<PipeNotice> Decode(std::string_view body);
};

/// frameBussAccessReply: bit 0 of the first byte is set if access is granted; the rest is text.
struct PipeAccessReply {
    bool granted = false;
    std::string text;

    [[nodiscard]] std::string Encode() const { return std::string(1, granted ? '\1' : '\0') + text; }
    [[nodiscard]] static std::optional<PipeAccessReply> Decode(std::string_view body);
};

}  // namespace fenrik
