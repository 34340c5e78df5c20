#include "legacy/MAF98.h"

#include "diagnostics/CharacterFace.h"
#include "diagnostics/Glass.h"
#include "diagnostics/Graphics.h"
#include "legacy/LoadShedText.h"
#include "legacy/TokenTracker.h"
#include "shared/Settings.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fenrik {

namespace {

constexpr int kLeft = 4;
constexpr int kTop = 4;
constexpr int kPitch = Glass::kCellWidth;
constexpr int kLine = Glass::kCellHeight;
constexpr int kNodes = 6;
constexpr int kFirstDigit = 22;
constexpr int kRightStar = kLeft + 7 * kPitch;
constexpr int kMissedCount = 27;
constexpr int kCollisionMark = 73;
constexpr int kCollisionCount = 96;
constexpr int kLoadShed = 142;
constexpr int kValueRight = 490;  // left edge of a value's last character
constexpr int kValueWidth = 5;    // characters
constexpr int kInformationTop = 3;

}  // namespace

MAF98::MAF98(CharacterFace& misc, Graphics& analog, const MessageTable98& messages)
    : mMisc(misc), mAnalog(analog), mMessages(messages)
{
    ClearMisc();
}

void MAF98::TokenBar(int token)
{
    if (token == mToken)
        return;
    PutDigit(mToken - TokenTracker::kBase, false);
    mToken = token;
    PutDigit(mToken - TokenTracker::kBase, true);
    mMisc.Refresh();
}

void MAF98::PutDigit(int node, bool lit)
{
    if (node >= 1 && node <= kNodes)
        mMisc.Put(kFirstDigit + (node - 1) * kPitch, kTop, std::uint8_t('0' + node), !lit);
}

void MAF98::MissedMark(bool on)
{
    // The blanks between the stars are the token bar's.
    mMisc.Put(kLeft, kTop, '*', !on);
    mMisc.Put(kRightStar, kTop, '*', !on);
    mMisc.Refresh();
}

void MAF98::MissedCount(int count)
{
    PutCount("MT", count, kMissedCount);
}

void MAF98::CollisionMark(bool on, std::string_view text)
{
    if (on)
        PutMisc("<- " + std::string(text) + " ->", kCollisionMark, true);
    else
        PutMisc("->    <-", kCollisionMark, false);
}

void MAF98::CollisionCount(int count)
{
    PutCount("BC", count, kCollisionCount);
}

void MAF98::LoadShed(const QString& name)
{
    const LoadShedText line = LoadShedText::Of(name);
    PutMisc(line.text.toStdString(), kLoadShed, line.on);
}

void MAF98::ClearMisc()
{
    mMisc.Clear();
    mToken = 0;
    for (int node = 1; node <= kNodes; ++node)
        PutDigit(node, false);
    MissedMark(false);
    CollisionMark(false);
}

void MAF98::ClearAnalog()
{
    mAnalog.ClearFace();
}

void MAF98::ResetAnalogNames()
{
    mNames.fill({});
}

int MAF98::RowOf(const QString& name)
{
    for (std::size_t row = 0; row < mNames.size(); ++row) {
        if (mNames[row].isEmpty())
            mNames[row] = name;
        if (mNames[row] == name)
            return int(row);
    }
    return kNames;
}

void MAF98::AnalogValue(std::uint8_t message, const QString& name, int value)
{
    const int y = RowOf(name) * kLine + kTop;
    PutLine(name, y);
    const QString text = ValueText(value, mMessages[message].Divisor);
    int x = kValueRight;
    for (auto character = text.crbegin(); character != text.crend(); ++character, x -= kPitch)
        mAnalog.PutChar(x, y, *character, false);
    mAnalog.Refresh();
}

QString MAF98::ValueText(int value, std::int32_t divisor)
{
    const qint64 tenfold = qint64(value) * 10;
    const qint64 by = std::abs(qint64(divisor));
    const qint64 tenths = (2 * std::abs(tenfold) + by) / (2 * by);
    const bool negative = (value < 0) != (divisor < 0) && tenths != 0;
    return QStringLiteral("%1%2.%3")
        .arg(negative ? QStringLiteral("-") : QString())
        .arg(tenths / 10)
        .arg(tenths % 10)
        .rightJustified(kValueWidth);
}

void MAF98::SystemInformation(const Settings& settings)
{
    const QString lines[] = {
        QStringLiteral("          System Info"), QStringLiteral("--------------------------------"),
        QStringLiteral("Name    : ") + settings.DatabaseSystemName,
        QStringLiteral("Created : ") + settings.DatabaseCreated, QStringLiteral("By      : ") + settings.DatabaseBy};
    int y = kInformationTop;
    for (const QString& line : lines)
        PutLine(line, y += kLine);
}

void MAF98::PutMisc(std::string_view text, int y, bool lit)
{
    int x = kLeft;
    for (const char character : text) {
        mMisc.Put(x, y, std::uint8_t(character), !lit);
        x += kPitch;
    }
    mMisc.Refresh();
}

void MAF98::PutCount(const char* label, int count, int y)
{
    char text[24];
    std::snprintf(text, sizeof text, "%s %05d", label, count);
    PutMisc(text, y, count > 0);
}

void MAF98::PutLine(const QString& text, int y)
{
    int x = kLeft;
    for (const QChar character : text) {
        mAnalog.PutChar(x, y, character, false);
        x += kPitch;
    }
    mAnalog.Refresh();
}

}  // namespace fenrik
