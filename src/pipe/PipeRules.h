#pragma once

#include "pipe/PipeFrame.h"

namespace fenrik {

enum class PipeDirection { ToServer, ToClient };

/// Which bodies a type of frame has in one direction.
struct PipeRule {
    PipeDirection direction;
    PipeFrameType type;
    const char* name;
    std::size_t least;    ///< length of the shortest body
    std::size_t most;     ///< length of the longest body
    std::size_t step;     ///< the length is a multiple of this; 1: any
    bool onlyWhilePiped;  ///< goes from one end of a pipe to the other

    [[nodiscard]] bool Fits(std::size_t length) const
    {
        return length >= least && length <= most && length % step == 0;
    }
};

/// The rule of `type`, or nothing if no frame of this type goes that way.
[[nodiscard]] const PipeRule* FindPipeRule(PipeDirection direction, PipeFrameType type);

/// "frameChat", or "frame 200" if the type has no name.
[[nodiscard]] std::string PipeTypeName(PipeFrameType type);

}  // namespace fenrik
