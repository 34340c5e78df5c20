#pragma once

#include "FuzzSteps.h"
#include "pipe/PipeRules.h"

#include <algorithm>
#include <string>

namespace fenrik {

/// A whole frame of the type and with the body that the input has next.
inline std::string AnyPipeFrame(FuzzSteps& steps)
{
    const auto type = PipeFrameType(steps.Byte());
    return EncodePipeFrame(type, steps.Bytes(steps.Byte()));
}

/// The same with a body that the type may have in that direction, up to the longest; so a frame behind the check of the
/// lengths needs no luck.
inline std::string FittingPipeFrame(FuzzSteps& steps, PipeDirection direction)
{
    const auto type = PipeFrameType(steps.Byte());
    const unsigned times = 1u << steps.Byte() % 8;
    const std::string piece(steps.Bytes(steps.Byte()));
    std::string body;
    for (unsigned i = 0; i < times; ++i)
        body += piece;
    if (const PipeRule* rule = FindPipeRule(direction, type)) {
        body.resize(std::clamp(body.size(), rule->least, rule->most), ' ');
        body.resize(body.size() - body.size() % rule->step);
    }
    return EncodePipeFrame(type, body);
}

}  // namespace fenrik
