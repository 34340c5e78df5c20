#pragma once

#include "app/messages/MessageStore.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

namespace fenrik {

/// The lines of the message list for views. A line that is added stays unannounced until Flush, which tells the views
/// of all new lines at once and of all changed cells: rowCount is what was announced.
///
/// The owner flushes at the end of a batch, or, told by FlushDue, when the event loop turns.
class MessageListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Columns { Message, State, ThreeWay, Data, CS, Raw, TimeStamp, Count };
    static constexpr int kColumns = Count + 1;

    enum Roles {
        TagRole = Qt::UserRole,          ///< the line's Command
        IconRole = Qt::UserRole + 1,     ///< the icon's key: "On"
        LineKeyRole = Qt::UserRole + 2,  ///< the line's own key, "902D5"; invalid without CompactList
    };

    explicit MessageListModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

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

    [[nodiscard]] bool HasUnseen() const { return mUnseen; }
    void Flush();

    /// No lines; what was not flushed is gone too.
    void Clear();

    /// The row of the line that was added or changed last, also before it is announced; -1 if there are no lines.
    [[nodiscard]] int NewestRow() const { return mStore.Size() ? int(mStore.Newest()) : -1; }

    /// Turning it on empties the list.
    void SetCompactList(bool compact);
    [[nodiscard]] bool CompactList() const { return mStore.Keyed(); }

    /// Column Data as "0x1F" instead of "31".
    void SetHexData(bool hex);
    [[nodiscard]] bool HexData() const { return mHexData; }

    [[nodiscard]] const MessageRecord& Line(int row) const { return mStore[MessageStore::Row(row)]; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The first line since the last flush was added. The list may not be changed from a slot of this.
    void FlushDue();

private:
    [[nodiscard]] QString Text(const MessageRecord& line, int column) const;
    [[nodiscard]] QString AccessibleText(const MessageRecord& line, int column) const;
    [[nodiscard]] QIcon Icon(const QString& key) const;
    void AnnounceChanges();

    MessageStore mStore;
    bool mUnseen = false;
    bool mHexData = false;
    mutable QHash<QString, QIcon> mIcons;
};

}  // namespace fenrik
