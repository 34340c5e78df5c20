#include "soak/SentFrames.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace fenrik {

namespace {

constexpr int kFirstInternal = 900;
/// Bytes of noise may look like the beginning of a frame, which then takes those of the next two.
constexpr int kAfterNoise = 2;
/// What the terminal may still hold when it goes away: a fifth of a second.
constexpr std::size_t kBeforeCut = 32;

}  // namespace

std::vector<SentFrame> SentFrames::Next()
{
    static const QRegularExpression kFrame(
        QStringLiteral("^ *([0-9.]+) TX [0-9A-F ]+  (\\d+) state=(\\d+) ext=(\\d+) data=(\\d+)$"));
    std::vector<SentFrame> frames;
    QFile file(mPath);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(mRead))
        return frames;
    for (QByteArray bytes = file.readLine(); bytes.endsWith('\n'); bytes = file.readLine()) {
        mRead += bytes.size();
        const QString line = QString::fromLatin1(bytes).trimmed();
        if (const auto frame = kFrame.match(line); frame.hasMatch()) {
            const int command = frame.captured(2).toInt();
            if (mOpen && command < kFirstInternal)
                frames.push_back({command, frame.captured(5).toInt(), frame.captured(1).toDouble(), mDisturbed > 0});
            mDisturbed = std::max(0, mDisturbed - 1);
        } else if (line.endsWith(QStringLiteral("  noise"))) {
            mDisturbed = kAfterNoise;
        } else if (line.endsWith(QStringLiteral("port opened"))) {
            mOpen = true;
        } else if (line.endsWith(QStringLiteral("port closed")) || line.endsWith(QStringLiteral("unplugged"))) {
            mOpen = false;
            for (std::size_t i = frames.size() - std::min(frames.size(), kBeforeCut); i < frames.size(); ++i)
                frames[i].disturbed = true;
        }
    }
    return frames;
}

}  // namespace fenrik
