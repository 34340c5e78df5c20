#include "legacy/Greeting98.h"

#include "diagnostics/Glass.h"
#include "diagnostics/Graphics.h"
#include "platform/VersionInfo.h"
#include "shared/EventPump.h"

namespace fenrik {

namespace {

constexpr double kPassSeconds = 0.5;
constexpr int kLines = 6;

}  // namespace

void Greeting98::Play()
{
    if (mPlayed || Over())
        return;
    mPlayed = true;
    for (const bool dim : {true, false}) {
        Draw(dim);
        mPump.WaitFor([this] { return Over(); }, kPassSeconds);
        if (Over())
            return;
        mGraphics.Refresh();
    }
}

bool Greeting98::Over() const
{
    return mGraphics.OpeningEnded() || mPump.Stopped();
}

void Greeting98::Draw(bool dim)
{
    const QString lines[kLines] = {{}, QStringLiteral("    Harnwick Technologies Inc.  "),
                                   {}, QStringLiteral("     Fenrik Diagnostic Tool     "),
                                   {}, QStringLiteral("        Version   ") + mVersion.MajorMinorRevision()};
    for (int line = 1; line < kLines; line += 2) {
        const int y = line * Glass::kCellHeight + Glass::kMargin;
        int x = Glass::kMargin;
        for (const QChar character : lines[line].leftJustified(Graphics::kColumns, QLatin1Char(' '), true)) {
            mGraphics.PutChar(x, y, character, dim);
            x += Glass::kCellWidth;
        }
    }
}

}  // namespace fenrik
