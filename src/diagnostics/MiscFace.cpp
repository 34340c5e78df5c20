#include "diagnostics/MiscFace.h"

#include "diagnostics/CharacterFace.h"
#include "diagnostics/Glass.h"
#include "diagnostics/PicMiscDisplay.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace fenrik {

namespace {

constexpr int kSyncRow = 1;
constexpr int kMarkRow = 2;
constexpr int kPCRow = 3;
constexpr int kBCRow = 4;
constexpr int kNCRow = 5;
constexpr int kLoadShedRowsAbove = 5;  // 0 of 16 and on
constexpr int kNodesOfFirstFace = 16;
constexpr int kSpinnerColumn = 3;
constexpr int kCountColumn = 4;

constexpr int kSyncMilliseconds = 300;
constexpr int kMarkMilliseconds = 2000;

using Line = std::array<char, 24>;

/// Formats into `line`, without the heap.
template <class... Values>
std::string_view Format(Line& line, const char* format, Values... values)
{
    const int length = std::snprintf(line.data(), line.size(), format, values...);
    return {line.data(), std::size_t(std::clamp(length, 0, int(line.size()) - 1))};
}

}  // namespace

MiscFace::MiscFace(PicMiscDisplay& display, const Clock& clock, NodeCountSource& nodeCount, QObject* parent)
    : QObject(parent), mFace(display.Face()), mFace17_32(display.Face17_32()), mClock(clock),
      mNodeCountSource(nodeCount), mSync(this), mAniCollision(this)
{
    mSync.setObjectName(QStringLiteral("TSync"));
    mSync.setSingleShot(true);
    mSync.setInterval(kSyncMilliseconds);
    connect(&mSync, &QTimer::timeout, this, [this] { ShowSync(false); });

    mAniCollision.setObjectName(QStringLiteral("TAniCollision"));
    mAniCollision.setSingleShot(true);
    mAniCollision.setInterval(kMarkMilliseconds);
    connect(&mAniCollision, &QTimer::timeout, this, &MiscFace::EndMark);
}

void MiscFace::ShowSync(bool lit)
{
    PutLine("[Sync]", 1, kSyncRow, !lit);
}

void MiscFace::LightSync()
{
    mSync.start();
    ShowSync(true);
}

void MiscFace::ShowPC(int count)
{
    PutCounter("PC", kPCRow, count);
}

void MiscFace::ShowBC(int count)
{
    PutCounter("BC", kBCRow, count);
}

void MiscFace::ShowNC(bool on)
{
    const int count = on ? mNodeCountSource.AskNodeCount().value_or(mNodeCount) : mNodeCount;
    if (count != mNodeCount)
        ShowCollisionMark(true, "NC");
    mNodeCount = count;
    DrawNC(count, on);
}

void MiscFace::DrawNC(int count, bool on)
{
    // The spinner's cell lies between the label and the count.
    MiscGlyph(1, kNCRow, 'N', !on);
    MiscGlyph(2, kNCRow, 'C', !on);
    Line line;
    PutLine(Format(line, "%05d", count), kCountColumn, kNCRow, !on);
}

void MiscFace::ShowCollisionMark(bool active, const char* kind)
{
    if (!active) {
        PutLine("->    <-", 1, kMarkRow, true);
        return;
    }
    Line line;
    PutLine(Format(line, "<- %s ->", kind), 1, kMarkRow, false);
    // Starting a timer anew costs more than all the rest, so a running one is left alone and looks at its end
    // whether another collision has come meanwhile.
    mLastCollision = mClock.Now();
    if (!mAniCollision.isActive())
        mAniCollision.start(kMarkMilliseconds);
}

void MiscFace::EndMark()
{
    const auto since = mClock.Now().milliseconds - mLastCollision.milliseconds;
    if (since >= 0 && since < kMarkMilliseconds) {
        mAniCollision.start(int(kMarkMilliseconds - since));
        return;
    }
    mAniCollision.setInterval(kMarkMilliseconds);
    ShowCollisionMark(false, "");
}

void MiscFace::RunOutLamps()
{
    mSync.start();
    mAniCollision.start(kMarkMilliseconds);
}

void MiscFace::StepSpinner(bool idle)
{
    constexpr std::string_view kSteps = "/-\\|";
    if (!idle)
        mSpinner = (mSpinner + 1) & 3;
    MiscGlyph(kSpinnerColumn, kNCRow, idle ? ' ' : kSteps[std::size_t(mSpinner)], false);
    Refresh();
}

void MiscFace::ClearPanel()
{
    mFace.Clear();
    mFace17_32.Clear();
    Refresh();
}

void MiscFace::ShowLoadShed(const LoadShedTable& table, int nodesInSystem)
{
    const int last = std::min(nodesInSystem, int(table.size()));
    for (int node = 1; node <= last; ++node) {
        const LoadShedEntry& entry = table[std::size_t(node - 1)];
        const bool first = node <= kNodesOfFirstFace;
        const int row = (first ? node : node - kNodesOfFirstFace) + kLoadShedRowsAbove;
        Line line;
        (first ? mFace : mFace17_32)
            .PutFitted(Format(line, "N:%02d L=%d", node, int(entry.level)), 1, row, !entry.heard);
    }
    Refresh();
}

void MiscFace::MiscGlyph(int column, int row, char code, bool dim)
{
    const int x = Glass::kMargin + (column - 1) * Glass::kCellWidth;
    const int y = Glass::kMargin + (row - 1) * Glass::kCellHeight;
    mFace.Put(x, y, std::uint8_t(code), dim);
    mFace17_32.Put(x, y, std::uint8_t(code), dim);
}

void MiscFace::PutLine(std::string_view text, int column, int row, bool dim)
{
    mFace.PutFitted(text, column, row, dim);
    mFace17_32.PutFitted(text, column, row, dim);
    Refresh();
}

void MiscFace::PutCounter(const char* label, int row, int count)
{
    Line line;
    PutLine(Format(line, "%s %05d", label, count), 1, row, false);
}

void MiscFace::Refresh()
{
    mFace.Refresh();
    mFace17_32.Refresh();
}

}  // namespace fenrik
