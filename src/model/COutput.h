#pragma once

#include "model/Fixed4.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace fenrik {

class CNode;
class Recordset;

/// One physical output of a node: its configuration as downloaded and its live state.
class COutput {
public:
    static constexpr std::int32_t kNoReference = 0xFFFF;

    /// What UsageCode says.
    static constexpr std::int32_t kNotUsed = 0;
    static constexpr std::int32_t kByRelationship = 1;
    static constexpr std::int32_t kPermanentlyOn = 2;
    static constexpr std::int32_t kNameOnly = 3;  ///< not driven, but its name is kept
    static constexpr std::int32_t kNotKnown = 255;

    /// Everything as it is before a download. `node` owns the output.
    void Init(CNode& node, std::int16_t number);

    [[nodiscard]] CNode* Parent() const { return mParent; }

    /// 0 plain, 1 pulse-width capable on a node of type 0 or 9, 2 output of a newer node.
    [[nodiscard]] std::uint8_t PWMKind() const { return mPWMKind; }
    void setPWMKind(std::uint8_t kind) { mPWMKind = kind; }

    [[nodiscard]] const QString& Name() const { return mName; }
    void setName(const QString& name) { mName = name; }

    [[nodiscard]] std::int16_t number() const { return mNumber; }

    [[nodiscard]] std::int32_t UsageCode() const { return mUsageCode; }
    /// kPermanentlyOn sets PermOn as well, and nothing here ever clears it.
    void setUsageCode(std::int32_t code);
    [[nodiscard]] bool IsInUse() const;

    /// Low byte: twice Value; bit 8: Override; bit 9: Resolved.
    [[nodiscard]] std::uint16_t State() const { return mState; }
    [[nodiscard]] bool Override() const { return (mState & kOverrideBit) != 0; }
    void setOverride(bool on) { SetBit(kOverrideBit, on); }
    [[nodiscard]] bool Resolved() const { return (mState & kResolvedBit) != 0; }
    void setResolved(bool on) { SetBit(kResolvedBit, on); }
    /// The level that the output is forced to, in percent.
    [[nodiscard]] double Value() const { return (mState & 0xFF) / 2.0; }
    /// Forces the output to `percent`, rounded to halves, on the wire and here; below 0 releases it. An output that
    /// can't be forced stays as it is. Events run meanwhile, and may rebuild the node's outputs, this one among them.
    void setValue(float percent);
    /// Notes that the output was forced to `level` (twice the percents) or released.
    void TakeForce(bool forced, std::uint8_t level);

    [[nodiscard]] const QString& Fault() const { return mFault; }
    void setFault(const QString& fault) { mFault = fault; }

    /// The relationship, in the bytes of Relationship.
    [[nodiscard]] const QByteArray& RPN() const { return mRPN; }
    /// A relationship that is always true sets PermOn; no other clears it.
    void setRPN(const QByteArray& relationship);
    [[nodiscard]] int RLevelCount() const;

    [[nodiscard]] bool PermOn() const { return mPermOn; }
    void setPermOn(bool on) { mPermOn = on; }

    [[nodiscard]] bool Flashing() const { return mFlashing; }
    /// Any value but 0 is true.
    void setFlashing(int value) { mFlashing = value != 0; }

    /// Volts at which the output is shed; -1 for none.
    [[nodiscard]] Fixed4 Loadshed() const { return mLoadshed; }
    void setLoadshed(Fixed4 volts) { mLoadshed = volts; }

    [[nodiscard]] std::int16_t Sequence() const { return mSequence; }
    void setSequence(std::int16_t sequence) { mSequence = sequence; }
    [[nodiscard]] std::int16_t PWMValue() const { return mPWMValue; }
    void setPWMValue(std::int16_t value) { mPWMValue = value; }

    /// Seconds.
    [[nodiscard]] Fixed4 DelayOn() const { return mDelayOn; }
    void setDelayOn(Fixed4 seconds) { mDelayOn = seconds; }
    [[nodiscard]] Fixed4 DelayOff() const { return mDelayOff; }
    void setDelayOff(Fixed4 seconds) { mDelayOff = seconds; }

    /// Pin of the connector; empty for a model without pin names.
    [[nodiscard]] const QString& Pin() const { return mPin; }
    void setPin(const QString& pin) { mPin = pin; }

    /// References into the node's relationships and texts, kNoReference for none.
    [[nodiscard]] std::int32_t RelationshipRef() const { return mRelationshipRef; }
    void setRelationshipRef(std::int32_t reference) { mRelationshipRef = reference; }
    [[nodiscard]] std::int32_t NameRef() const { return mNameRef; }
    void setNameRef(std::int32_t reference) { mNameRef = reference; }
    [[nodiscard]] std::int32_t CommentRef() const { return mCommentRef; }
    void setCommentRef(std::int32_t reference) { mCommentRef = reference; }

    [[nodiscard]] std::uint8_t FaultDetectType() const { return mFaultDetectType; }
    void setFaultDetectType(std::uint8_t type) { mFaultDetectType = type; }

    /// Takes over the output's rows of its node's table in a saved system; appends them to one. Throw Error.
    void LoadSystemDatabase(Recordset& rows);
    void MakeSystemDatabase(Recordset& rows) const;

    /// Marks the system as changed.
    void isDirty();

private:
    static constexpr std::uint16_t kOverrideBit = 0x0100;
    static constexpr std::uint16_t kResolvedBit = 0x0200;

    void SetBit(std::uint16_t bit, bool on);

    std::uint8_t mPWMKind = 0;
    CNode* mParent = nullptr;
    QString mName;
    std::int16_t mNumber = 0;
    std::int32_t mUsageCode = kNotKnown;
    std::uint16_t mState = 0;
    QString mFault = QStringLiteral("No Faults Detected");
    QByteArray mRPN;
    bool mPermOn = false;
    bool mFlashing = false;
    Fixed4 mLoadshed = Fixed4::Whole(-1);
    std::int16_t mSequence = 0;
    std::int16_t mPWMValue = 0;
    Fixed4 mDelayOn;
    Fixed4 mDelayOff;
    QString mPin;
    std::int32_t mRelationshipRef = 0;
    std::int32_t mNameRef = 0;
    std::int32_t mCommentRef = 0;
    std::uint8_t mFaultDetectType = 0;
};

}  // namespace fenrik
