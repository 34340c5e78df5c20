#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace fenrik {

/// A plain command that the simulator handed to the line.
struct SentFrame {
    int command = 0;
    std::int32_t data = 0;
    double seconds = 0;      ///< since the simulator's start
    bool disturbed = false;  ///< noise came right before it, or the line was cut about then
};

/// Reads the simulator's log bit by bit.
class SentFrames {
public:
    explicit SentFrames(const QString& path) : mPath(path) {}

    /// The plain commands that were sent to an open port since the last call, in order.
    [[nodiscard]] std::vector<SentFrame> Next();

private:
    QString mPath;
    qint64 mRead = 0;
    bool mOpen = false;
    int mDisturbed = 0;  // frames to come that noise may have spoilt
};

}  // namespace fenrik
