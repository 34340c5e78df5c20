#include "diagnostics/OpenGraphics.h"

#include "diagnostics/Graphics.h"

namespace fenrik {

namespace {

constexpr int kMillisecondsPerCharacter = 20;
constexpr int kFirstRow = 2;
constexpr int kRowsPerLine = 2;

QString Centred(const QString& text)
{
    const int before = int(Graphics::kColumns - text.size()) / 2;
    return (QString(before, QLatin1Char(' ')) + text).leftJustified(Graphics::kColumns);
}

}  // namespace

OpenGraphics::OpenGraphics(Graphics& graphics, QStringList lines, QObject* parent)
    : QObject(parent), mGraphics(graphics), mLines(std::move(lines)), mTimer(this)
{
    mTimer.setObjectName(QStringLiteral("TOpenGraphics"));
    mTimer.setInterval(kMillisecondsPerCharacter);
    connect(&mTimer, &QTimer::timeout, this, &OpenGraphics::TypeNext);
}

QStringList OpenGraphics::BannerLines(const QString& version, const QString& build, bool isBeta)
{
    return {QStringLiteral("       Fenrik Diagnostics        "), Centred(QStringLiteral("Version ") + version),
            Centred(QStringLiteral("[build ") + build + (isBeta ? QStringLiteral(" BETA]") : QStringLiteral("]")))};
}

void OpenGraphics::Start()
{
    if (mStarted || mLines.isEmpty())
        return;
    mStarted = true;
    mGraphics.StartOpening();
    mTimer.start();
}

void OpenGraphics::TypeNext()
{
    if (mGraphics.OpeningEnded()) {
        mTimer.stop();
        return;
    }
    const QString& line = mLines[mLine];
    const int row = kFirstRow + mLine * kRowsPerLine;
    mGraphics.PutString(QStringView(line).mid(mColumn, 1), mColumn + 1, row, false, false);
    if (!NextPlace())
        mTimer.stop();
    else
        mGraphics.PutString(u"_", mColumn + 1, kFirstRow + mLine * kRowsPerLine, false, false);
}

/// Moves the cursor on; false at the end of the last line.
bool OpenGraphics::NextPlace()
{
    if (++mColumn < mLines[mLine].size())
        return true;
    mColumn = 0;
    return ++mLine < mLines.size();
}

}  // namespace fenrik
