#pragma once

#include <QString>

namespace fenrik {

class COutput;
class Fixed4;

/// What the output view says of one output, in words.
namespace OutputTexts {
inline constexpr const char* kUnavailable = "Unavailable";
inline constexpr const char* kNoFaults = "No Faults Detected";
inline constexpr const char* kRelease = "Release";

/// "None", "12.5v", or "Unavailable" while it is not known.
[[nodiscard]] QString LoadShed(Fixed4 volts);

[[nodiscard]] QString Flashing(const COutput& output);

/// One title and value, or two of them: the output's delays if it has any, and its sequence otherwise.
struct Timing {
    QString onTitle;
    QString on;
    QString offTitle;  ///< empty when there is one pair only
    QString off;

    friend bool operator==(const Timing&, const Timing&) = default;
};
/// `nodeHasDelays` is the node's OutputDelay.
[[nodiscard]] Timing TimingOf(const COutput& output, bool nodeHasDelays);

/// What the level list reads for the output as it is now: "Release", or its level, as "12.5%".
[[nodiscard]] QString Level(const COutput& output);

/// Tool tip of the button that sends the text of the level list.
[[nodiscard]] QString ForceTip(const QString& level);

/// The level that a text of the level list stands for, in percents; -1 to release.
[[nodiscard]] float LevelOfText(const QString& text);
}  // namespace OutputTexts

}  // namespace fenrik
