#include "legacy/LoadShedText.h"

#include "shared/TextFormat.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenrik {

namespace {

/// From each position as many characters are looked at as its number says. A level at the very beginning would be cut
/// short so; where names have theirs, all of its digits are read.
int LevelOf(const QString& name)
{
    for (int position = 1; position <= name.size(); ++position) {
        const double value = std::nearbyint(Val(name.mid(position - 1, position)));
        constexpr double kMost = std::numeric_limits<int>::max();
        if (value != 0)
            return int(std::clamp(value, -kMost, kMost));
    }
    return 0;
}

}  // namespace

LoadShedText LoadShedText::Of(const QString& name)
{
    const int level = LevelOf(name);
    const bool on = name.contains(QLatin1String("ON"));
    QString state = name.contains(QLatin1String("OFF")) ? QStringLiteral("OFF") : QString();
    if (on)
        state = QStringLiteral(" ON");
    if (level < 10)
        state.prepend(QLatin1Char(' '));
    return {QStringLiteral("LS%1 %2 ").arg(level).arg(state), on};
}

}  // namespace fenrik
