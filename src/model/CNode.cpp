#include "model/CNode.h"

#include "model/CSystem.h"
#include "model/SystemOwner.h"
#include "platform/Error.h"

#include <array>

namespace fenrik {

namespace {

// From level 1 to level 8.
constexpr std::array<double, CNode::kLoadShedLevels> kLoadShedVolts{12.5, 12.1, 11.7, 11.3, 10.9, 10.5, 10.1, 9.7};

}  // namespace

void CNode::Init(CSystem& parent, std::uint8_t number)
{
    mParent = &parent;
    mNumber = number;
}

void CNode::setName(const QString& name)
{
    mName = name;
    isDirty();
}

void CNode::SetVersion(std::uint8_t& stored, std::uint8_t version)
{
    if (stored == version)
        return;
    stored = version;
    isDirty();
}

QString CNode::NodeBarIconName() const
{
    if (!mParent)
        return QStringLiteral("Blank");
    if (mParent->MountedNode() == this)
        return QStringLiteral("Node%1M").arg(mNumber);
    if (mNumber <= mParent->NodesInSystem())
        return QStringLiteral("Node%1").arg(mNumber);
    return QStringLiteral("Blank");
}

void CNode::isDirty()
{
    if (mParent)
        mParent->setDirty();
}

bool CNode::NewDPWMCCompatible() const
{
    if (mTypeID == 0 || mTypeID == 9)
        return false;
    if (mTypeID != 2)
        return true;
    if (mParent && mParent->Owner())
        mParent->Owner()->GetEmbeddedVersion();
    // 0.0 means that the version could not be had. Such a node gets the newer command, on purpose.
    const bool unknown = mOsMajVersion == 0 && mOsMinVersion == 0;
    const bool old = mOsMajVersion == 0 || (mOsMajVersion == 1 && mOsMinVersion <= 2);
    return unknown || !old;
}

double CNode::LoadShedVoltage(int level)
{
    if (level < 1 || level > kLoadShedLevels)
        throw Error(ErrorNumber::kSubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    return kLoadShedVolts[std::size_t(level - 1)];
}

}  // namespace fenrik
