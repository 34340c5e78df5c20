#pragma once

#include "widgets/MessageLines.h"

#include <cstdint>
#include <deque>
#include <vector>

namespace fenrik {

/// One line of the list of the older network as it is kept: numbers only, 16 bytes. Texts are made when it is painted.
struct MessageRecord98 {
    enum class Kind : std::uint8_t { Command, Error, Info };

    float time = 0;          ///< seconds since midnight
    std::int32_t data = 0;   ///< message number, value, count or token
    std::uint32_t text = 0;  ///< number of the name and the description
    std::int16_t node = 0;   ///< of a command
    Kind kind = Kind::Command;
};

static_assert(sizeof(MessageRecord98) == 16);

/// The lines of ListView98. A command tells its node in the first column, the other kinds tell what they are.
class MessageList98 : public MessageLines {
    Q_OBJECT

public:
    using Kind = MessageRecord98::Kind;
    enum Columns { Node, Name, Data, Description, TimeStamp };

    enum Roles {
        IconRole = Qt::UserRole + 1,  ///< "Command", "Error" or "Info"
    };

    using MessageLines::MessageLines;

    /// `record.text` is filled in here. Nothing is allocated for texts that were there before.
    void Add(MessageRecord98 record, const QString& name, const QString& description);

    /// No lines; what was not flushed is gone too.
    void Clear();

    [[nodiscard]] bool HasUnseen() const override { return mUnseen; }
    void Flush() override;
    [[nodiscard]] int NewestRow() const override { return int(mLines.size()) - 1; }

    [[nodiscard]] std::span<const Column> ListColumns() const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    struct Texts {
        QString name;
        QString description;

        friend bool operator==(const Texts&, const Texts&) = default;
        friend std::size_t qHash(const Texts& texts, std::size_t seed)
        {
            return qHashMulti(seed, texts.name, texts.description);
        }
    };

    [[nodiscard]] QString Text(const MessageRecord98& line, int column) const;

    std::deque<MessageRecord98> mLines;
    std::size_t mAnnounced = 0;  // the first ones, which the views know
    bool mUnseen = false;
    std::vector<Texts> mTexts;
    QHash<Texts, std::uint32_t> mNumbers;
};

}  // namespace fenrik
