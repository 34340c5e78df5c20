#pragma once

#include <QHash>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace fenrik {

class CatalogueHost;
class CommandTable;

/// One meaning of a special command.
class CSpecialCommandItem {
public:
    void Initialize(std::int32_t code, const QString& name, const QString& extra, const QString& icon);

    [[nodiscard]] std::int32_t Code() const { return m_code; }  ///< the packed key, see CSpecialCommand
    [[nodiscard]] const QString& Name() const { return m_name; }
    [[nodiscard]] const QString& Extra() const { return m_extra; }  ///< a leading "#" marks a hint for the window
    [[nodiscard]] const QString& Icon() const { return m_icon; }

private:
    std::int32_t m_code = 0;
    QString m_name;
    QString m_extra;
    QString m_icon;
};

/// A command that packs a sub-function, and often a node number, into one message. Turns messages into names and
/// names into messages; one item is selected at a time.
///
/// The packed key of an item:
///
///   bits     value
///   2 to 17  code, which stands in the message's `data` under CodeMask, shifted left by CodeShift
///   1        State
///   0        extended
///
/// The node stands in `data` under NodeMask, shifted left by NodeShift; a mask of 0 means that there is none.
class CSpecialCommand {
public:
    /// Both references outlive the object.
    CSpecialCommand(const CommandTable& commands, const CatalogueHost& host) : mCommands(commands), mHost(host) {}

    std::int32_t MyCommand = 0;
    std::int32_t CodeMask = 0;
    std::uint8_t CodeShift = 0;
    std::int32_t NodeMask = 0;
    std::uint8_t NodeShift = 0;
    QString TextSeperator;  ///< between Extra and Name in scFullName
    bool RequiresMount = false;

    /// Adds an item behind the others. Throws Error 457 if there is one of the same key.
    void AddItem(const QString& sName, std::int32_t lCode, bool bState, bool bExtended, const QString& sExtra,
                 const QString& sIcon);
    void RemoveItem(std::int32_t key);                                         ///< unknown keys are ignored
    [[nodiscard]] const CSpecialCommandItem* GetItem(std::int32_t key) const;  ///< null if there is none

    [[nodiscard]] bool HasNodePart() const { return NodeMask != 0; }

    /// Of the selected item; empty if none is selected.
    [[nodiscard]] QString scName() const;
    [[nodiscard]] QString scExtra() const;
    [[nodiscard]] QString scFullName() const;
    [[nodiscard]] QString scIcon() const;

    [[nodiscard]] std::int32_t scCode() const { return (mSelectedKey & kCodeBits) / 4; }
    [[nodiscard]] std::uint8_t scState() const { return (mSelectedKey & kStateBit) / 2; }
    [[nodiscard]] std::uint8_t scExtended() const { return mSelectedKey & kExtendedBit; }
    [[nodiscard]] std::int16_t scNode() const { return mNode; }
    void SetscNode(std::int16_t node) { mNode = node; }

    /// `data` of the message that says what is selected.
    [[nodiscard]] std::int32_t scData() const;

    /// Selects what a message with these values says.
    void SelectItem(std::int32_t data, std::uint8_t State, std::uint8_t extended, bool MustExist);

    /// Selects the item of the packed key `ActualCode`. If there is none: with `MustExist` the first item is taken,
    /// and the user's selected node with it (Error 9 without any item); otherwise an item named as the command is
    /// made, which stays.
    void SelectCode(std::int32_t ActualCode, bool MustExist);

    /// The packed key of what is selected.
    [[nodiscard]] std::int32_t SelectedKey() const { return mSelectedKey; }

    /// In the order in which they were added.
    [[nodiscard]] const std::vector<std::unique_ptr<CSpecialCommandItem>>& itemList() const { return mItems; }

private:
    static constexpr std::int32_t kCodeBits = 0x3FFFC;
    static constexpr std::int32_t kStateBit = 2;
    static constexpr std::int32_t kExtendedBit = 1;
    static constexpr std::int32_t kKeyBits = kCodeBits | kStateBit | kExtendedBit;

    [[nodiscard]] static std::int32_t PackedKey(std::int32_t code, bool state, bool extended);

    const CommandTable& mCommands;
    const CatalogueHost& mHost;
    std::vector<std::unique_ptr<CSpecialCommandItem>> mItems;
    QHash<std::int32_t, CSpecialCommandItem*> mByKey;
    std::int32_t mSelectedKey = 0;
    std::int16_t mNode = 0;
};

}  // namespace fenrik
