#include "app/messages/MessageListModel.h"

#include "shared/TextFormat.h"

namespace fenrik {

namespace {

constexpr MessageLines::Column kListColumns[MessageListModel::kColumns] = {
    {"Message", 36}, {"State", 8}, {"Three-Way", 11},  {"Data", 11},
    {"CS", 5, true}, {"Raw", 20},  {"Time Stamp", 14}, {"Count", 8}};

}  // namespace

void MessageListModel::Flush()
{
    if (!mUnseen)
        return;
    // First, so that a line that is added by a view's reaction asks for the next flush.
    mUnseen = false;
    AnnounceChanges();
    if (mStore.Announced() == mStore.Size())
        return;
    beginInsertRows({}, int(mStore.Announced()), int(mStore.Size()) - 1);
    mStore.AnnounceAll();
    endInsertRows();
}

void MessageListModel::AnnounceChanges()
{
    for (const auto& [first, last, columns] : mStore.TakeChanges()) {
        for (int left = 0; left < kColumns; ++left) {
            if (!(columns >> left & 1))
                continue;
            int right = left;
            while (columns >> (right + 1) & 1)
                ++right;
            Q_EMIT dataChanged(index(int(first), left), index(int(last), right));
            left = right;
        }
    }
}

void MessageListModel::Clear()
{
    mUnseen = false;
    if (mStore.Announced() == 0) {
        mStore.Clear();
        return;
    }
    beginRemoveRows({}, 0, int(mStore.Announced()) - 1);
    mStore.Clear();
    endRemoveRows();
}

void MessageListModel::SetCompactList(bool compact)
{
    if (compact && !CompactList())
        Clear();
    mStore.SetKeyed(compact);
}

void MessageListModel::SetHexData(bool hex)
{
    if (hex == mHexData)
        return;
    mHexData = hex;
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, Data), index(rowCount() - 1, Data), {Qt::DisplayRole, Qt::AccessibleTextRole});
}

int MessageListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(mStore.Announced());
}

std::span<const MessageLines::Column> MessageListModel::ListColumns() const
{
    return kListColumns;
}

QVariant MessageListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const MessageRecord& line = Line(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return Text(line, index.column());
    case Qt::AccessibleTextRole:
        return AccessibleText(line, index.column());
    case Qt::DecorationRole:
        return index.column() == Message ? Icon(mStore.Names()[line.name].icon) : QVariant();
    case TagRole:
        return int(line.command);
    case IconRole:
        return mStore.Names()[line.name].icon;
    case LineKeyRole: {
        const QString key = mStore.KeyText(MessageStore::Row(index.row()));
        return key.isEmpty() ? QVariant() : key;
    }
    default:
        return {};
    }
}

QString MessageListModel::Text(const MessageRecord& line, int column) const
{
    switch (column) {
    case Message:
        return mStore.Names()[line.name].text;
    case State:
        return line.On() ? QStringLiteral("On") : QStringLiteral("Off");
    case ThreeWay:
        return BooleanText(line.ThreeWay());
    case Data:
        return mHexData ? fenrik::HexData(line.data) : QString::number(line.data);
    case CS:
        return QString::number(line.checkSum);
    case Raw:
        return CMessage::RawText(line.Form(), line.Bytes());
    case TimeStamp:
        return line.Form() == CMessage::RawForm::None ? QString() : Moment{line.time}.TimeStamp();
    case Count:
        return QString::number(line.count);
    default:
        return {};
    }
}

QString MessageListModel::AccessibleText(const MessageRecord& line, int column) const
{
    const QString text = Text(line, column);
    return column == Message ? text : QLatin1String(kListColumns[column].title) + QLatin1Char(' ') + text;
}

}  // namespace fenrik
