#include "legacy/Marks98.h"

#include "legacy/MAF98.h"

namespace fenrik {

namespace {

constexpr int kMarkMilliseconds = 2000;

}  // namespace

Marks98::Marks98(MAF98& panels, QObject* parent) : QObject(parent), mPanels(panels), mTokenMissed(this), mCol(this)
{
    SetUp(mTokenMissed, "TTokenMissed");
    SetUp(mCol, "TCol");
    connect(&mTokenMissed, &QTimer::timeout, this, [this] { mPanels.MissedMark(false); });
    connect(&mCol, &QTimer::timeout, this, [this] { mPanels.CollisionMark(false); });
}

void Marks98::SetUp(QTimer& timer, const char* name)
{
    timer.setObjectName(QLatin1String(name));
    timer.setInterval(kMarkMilliseconds);
    timer.setSingleShot(true);
}

void Marks98::Reset()
{
    mTokenMissed.stop();
    mCol.stop();
    mMissedTokens = 0;
    mCollisions = 0;
    mPanels.MissedMark(false);
    mPanels.MissedCount(0);
    mPanels.CollisionMark(false);
    mPanels.CollisionCount(0);
}

void Marks98::CountMissedToken()
{
    mTokenMissed.start();
    mPanels.MissedMark(true);
    mPanels.MissedCount(++mMissedTokens);
}

int Marks98::CountCollision()
{
    mPanels.CollisionCount(++mCollisions);
    mPanels.CollisionMark(true, "BC");
    mCol.start();
    return mCollisions;
}

}  // namespace fenrik
