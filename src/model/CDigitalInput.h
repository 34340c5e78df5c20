#pragma once

#include "model/Fixed4.h"

#include <QString>

#include <cstdint>

namespace fenrik {

class CNode;
class Recordset;

/// One physical input of a node: its configuration as downloaded and its live state.
class CDigitalInput {
public:
    static constexpr std::int32_t kNoReference = 0xFFFF;

    /// Everything as it is before a download; may be called again at any time. `node` owns the input.
    void Init(CNode& node, std::int16_t number);

    [[nodiscard]] CNode* Parent() const { return mParent; }

    [[nodiscard]] const QString& Name() const { return mName; }
    void setName(const QString& name) { mName = name; }

    [[nodiscard]] std::int16_t number() const { return mNumber; }

    /// Bits of the input in the node's report, as many as the node's bits_per_input.
    [[nodiscard]] std::uint16_t State() const { return mState; }
    void StateOr(std::uint16_t bits) { mState |= bits; }
    void StateAndNot(std::uint16_t bits) { mState &= std::uint16_t(~bits); }

    /// Number of the command that the input sends; 0 for an input that is not used.
    [[nodiscard]] std::int16_t InCommand() const { return mInCommand; }
    void setInCommand(std::int16_t command) { mInCommand = command; }
    [[nodiscard]] bool IsInUse() const { return mInCommand != 0; }

    /// Code of the electrical level that counts as on; 255 while it is not known.
    [[nodiscard]] std::int16_t OnState() const { return mOnState; }
    void setOnState(std::int16_t code) { mOnState = code; }

    /// Code of the kind of switch.
    [[nodiscard]] std::int16_t SwitchType() const { return mSwitchType; }
    void setSwitchType(std::int16_t code) { mSwitchType = code; }

    /// 0 no, 1 yes, anything else not known.
    [[nodiscard]] std::int16_t ThreeWay() const { return mThreeWay; }
    void setThreeWay(std::int16_t code) { mThreeWay = code; }

    /// Pin of the connector; empty for a model without pin names.
    [[nodiscard]] const QString& Pin() const { return mPin; }
    void setPin(const QString& pin) { mPin = pin; }

    /// References into the node's texts, kNoReference for none.
    [[nodiscard]] std::int32_t NameRef() const { return mNameRef; }
    void setNameRef(std::int32_t reference) { mNameRef = reference; }
    [[nodiscard]] std::int32_t CommentRef() const { return mCommentRef; }
    void setCommentRef(std::int32_t reference) { mCommentRef = reference; }

    /// References of what the input runs when it goes on and off.
    [[nodiscard]] std::int32_t OnExecuteRef() const { return mOnExecuteRef; }
    void setOnExecuteRef(std::int32_t reference) { mOnExecuteRef = reference; }
    [[nodiscard]] std::int32_t OffExecuteRef() const { return mOffExecuteRef; }
    void setOffExecuteRef(std::int32_t reference) { mOffExecuteRef = reference; }

    /// Seconds.
    [[nodiscard]] Fixed4 OffDelay() const { return mOffDelay; }
    void setOffDelay(Fixed4 seconds) { mOffDelay = seconds; }

    /// Takes over the input's rows of its node's table in a saved system; appends them to one. Throw Error.
    void LoadSystemDatabase(Recordset& rows);
    void MakeSystemDatabase(Recordset& rows) const;

private:
    CNode* mParent = nullptr;
    QString mName;
    std::int16_t mNumber = 0;
    std::uint16_t mState = 0;
    std::int16_t mInCommand = 0;
    std::int16_t mOnState = 255;
    std::int16_t mSwitchType = 0;
    std::int16_t mThreeWay = 99;
    QString mPin;
    std::int32_t mNameRef = kNoReference;
    std::int32_t mCommentRef = kNoReference;
    std::int32_t mOnExecuteRef = 0;
    std::int32_t mOffExecuteRef = 0;
    Fixed4 mOffDelay;
};

}  // namespace fenrik
