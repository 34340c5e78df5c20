#pragma once

#include "app/messages/MessageStore.h"
#include "widgets/MessageLines.h"

namespace fenrik {

/// The lines of the message list. In the compact list Flush tells the views of changed cells too.
class MessageListModel : public MessageLines {
    Q_OBJECT

public:
    enum Columns { Message, State, ThreeWay, Data, CS, Raw, TimeStamp, Count };
    static constexpr int kColumns = Count + 1;

    enum Roles {
        TagRole = Qt::UserRole,          ///< the line's Command
        IconRole = Qt::UserRole + 1,     ///< the icon's key: "On"
        LineKeyRole = Qt::UserRole + 2,  ///< the line's own key, "902D5"; invalid without CompactList
    };

    explicit MessageListModel(QObject* parent = nullptr) : MessageLines(parent) {}

    /// The number of a name for Add. `icon` is the picture :/icons/<icon>.png; `keyName` stands in the line's key and
    /// is the command's name also where the text is a special command's. Numbers stay good for good.
    [[nodiscard]] LineNames::Id Intern(const QString& text, const QString& icon, const QString& keyName)
    {
        return mStore.Names().Intern(text, icon, keyName);
    }
    [[nodiscard]] LineNames::Id Intern(const QString& text, const QString& icon) { return Intern(text, icon, text); }

    /// One more line or, in the compact list, new content for the line with its key. `count` is the command's counter.
    /// Of the message, Command must be 0 to 1279. The views learn of it by Flush.
    void Add(const CMessage& message, LineNames::Id name, std::int16_t count)
    {
        mStore.Put(message, name, count);
        if (!mUnseen) {
            mUnseen = true;
            Q_EMIT FlushDue();
        }
    }

    [[nodiscard]] bool HasUnseen() const override { return mUnseen; }
    void Flush() override;

    /// No lines; what was not flushed is gone too.
    void Clear();

    [[nodiscard]] int NewestRow() const override { return mStore.Size() ? int(mStore.Newest()) : -1; }

    /// Turning it on empties the list.
    void SetCompactList(bool compact);
    [[nodiscard]] bool CompactList() const { return mStore.Keyed(); }
    [[nodiscard]] bool AlwaysFollowed() const override { return CompactList(); }

    /// Column Data as "0x1F" instead of "31".
    void SetHexData(bool hex);
    [[nodiscard]] bool HexData() const { return mHexData; }

    [[nodiscard]] const MessageRecord& Line(int row) const { return mStore[MessageStore::Row(row)]; }

    [[nodiscard]] std::span<const Column> ListColumns() const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    [[nodiscard]] QString Text(const MessageRecord& line, int column) const;
    [[nodiscard]] QString AccessibleText(const MessageRecord& line, int column) const;
    void AnnounceChanges();

    MessageStore mStore;
    bool mUnseen = false;
    bool mHexData = false;
};

}  // namespace fenrik
