#include "model/COutput.h"

#include "model/CNode.h"
#include "model/NodeLink.h"
#include "model/NodeTypes.h"
#include "model/OutputForce.h"
#include "model/Relationship.h"
#include "shared/ErrorReporter.h"

namespace fenrik {

void COutput::Init(CNode& node, std::int16_t number)
{
    *this = COutput();
    mParent = &node;
    mNumber = number;
    mName = QStringLiteral("Output %1").arg(number);
    mPin = NodeTypes::OutputPin(node.typeID(), number);
}

void COutput::setUsageCode(std::int32_t code)
{
    mUsageCode = code;
    if (code == kPermanentlyOn)
        mPermOn = true;
}

bool COutput::IsInUse() const
{
    return mUsageCode != kNotUsed && mUsageCode != kNameOnly && mUsageCode != kNotKnown;
}

void COutput::setValue(float percent)
{
    if (!mParent)
        return;
    if (const NodeLink* link = mParent->Link())
        Guarded(link->errors, "COutput:Value:Let", [this, percent] { ForceOutput(*this, percent); });
    else
        ForceOutput(*this, percent);
}

void COutput::TakeForce(bool forced, std::uint8_t level)
{
    setOverride(forced);
    mState = std::uint16_t((mState & 0xFF00) | level);
}

void COutput::setRPN(const QByteArray& relationship)
{
    mRPN = relationship;
    if (Relationship::IsPermanentlyOn(relationship))
        mPermOn = true;
}

int COutput::RLevelCount() const
{
    return Relationship::LevelCount(mRPN);
}

void COutput::isDirty()
{
    if (mParent)
        mParent->isDirty();
}

void COutput::SetBit(std::uint16_t bit, bool on)
{
    mState = on ? std::uint16_t(mState | bit) : std::uint16_t(mState & ~bit);
}

}  // namespace fenrik
