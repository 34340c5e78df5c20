#include "legacy/MessageList98.h"

namespace fenrik {

namespace {

constexpr MessageLines::Column kListColumns[] = {
    {"Node", 9}, {"Name", 36}, {"Data", 9}, {"Description", 36}, {"Time Stamp", 14}};
constexpr const char* kKinds[] = {"Command", "Error", "Info"};
constexpr int kDigitsOfSingle = 7;

QString KindOf(const MessageRecord98& line)
{
    return QLatin1String(kKinds[int(line.kind)]);
}

}  // namespace

void MessageList98::Add(MessageRecord98 record, const QString& name, const QString& description)
{
    const Texts texts{name, description};
    const auto known = mNumbers.constFind(texts);
    if (known != mNumbers.constEnd()) {
        record.text = *known;
    } else {
        record.text = std::uint32_t(mTexts.size());
        mNumbers.insert(texts, record.text);
        mTexts.push_back(texts);
    }
    mLines.push_back(record);
    if (mUnseen)
        return;
    mUnseen = true;
    Q_EMIT FlushDue();
}

void MessageList98::Clear()
{
    mUnseen = false;
    const std::size_t known = mAnnounced;
    if (known > 0)
        beginRemoveRows({}, 0, int(known) - 1);
    mLines.clear();
    mAnnounced = 0;
    if (known > 0)
        endRemoveRows();
}

void MessageList98::Flush()
{
    if (!mUnseen)
        return;
    // First, so that a line that is added by a view's reaction asks for the next flush.
    mUnseen = false;
    beginInsertRows({}, int(mAnnounced), int(mLines.size()) - 1);
    mAnnounced = mLines.size();
    endInsertRows();
}

std::span<const MessageLines::Column> MessageList98::ListColumns() const
{
    return kListColumns;
}

int MessageList98::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(mAnnounced);
}

QVariant MessageList98::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const MessageRecord98& line = mLines[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return Text(line, index.column());
    case Qt::AccessibleTextRole:
        return QLatin1String(kListColumns[index.column()].title) + QLatin1Char(' ') + Text(line, index.column());
    case Qt::DecorationRole:
        return index.column() == Node ? Icon(KindOf(line)) : QVariant();
    case IconRole:
        return KindOf(line);
    default:
        return {};
    }
}

QString MessageList98::Text(const MessageRecord98& line, int column) const
{
    // Of an event the list has only the words.
    const bool hasNumbers = line.kind != Kind::Info;
    switch (column) {
    case Node:
        return line.kind == Kind::Command ? QString::number(line.node) : KindOf(line);
    case Name:
        return mTexts[line.text].name;
    case Data:
        return hasNumbers ? QString::number(line.data) : QString();
    case Description:
        return mTexts[line.text].description;
    case TimeStamp:
        return hasNumbers ? QString::number(double(line.time), 'g', kDigitsOfSingle) : QString();
    default:
        return {};
    }
}

}  // namespace fenrik
