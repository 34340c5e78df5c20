#include "platform/JetPages.h"

#include "platform/Error.h"

#include <QSet>
#include <QtEndian>

namespace fenrik {

namespace {

// A field takes at least one bit of its row and a row is read once, so that no undamaged file costs more than this.
constexpr qint64 kBudgetPerByte = 16;
constexpr int kLongValueHead = 12;
constexpr quint32 kInRow = 0x80000000;
constexpr quint32 kInOneRow = 0x40000000;
constexpr quint32 kLengthMask = 0x3FFFFFFF;
constexpr int kPointerSize = 4;

}  // namespace

void ThrowJetDamaged(const QString& what)
{
    throw Error(ErrorNumber::kDatabaseBroken, what);
}

JetPages::JetPages(const QByteArray& bytes) : mBudget(kBudgetPerByte * bytes.size())
{
    // The library only reads from the buffer; its interface knows no const.
    mHandle.reset(mdb_open_buffer(const_cast<char*>(bytes.constData()), std::size_t(bytes.size()), MDB_NOFLAGS));
    if (!mHandle)
        ThrowJetDamaged(QStringLiteral("its first page can't be read"));
    // The library fills up a page that is cut off with zeros.
    if (bytes.size() % mHandle->fmt->pg_size != 0)
        ThrowJetDamaged(QStringLiteral("it is cut off"));
}

void JetPages::Read(quint32 page) const
{
    if (mdb_read_pg(mHandle.get(), page) != mHandle->fmt->pg_size)
        ThrowJetDamaged(QStringLiteral("page %1 is missing").arg(page));
}

int JetPages::RowCount() const
{
    const int head = mHandle->fmt->row_count_offset + 2;
    const int count = mdb_get_int16(mHandle->pg_buf, mHandle->fmt->row_count_offset);
    if (count > (mHandle->fmt->pg_size - head) / 2)
        ThrowJetDamaged(QStringLiteral("a page has too many rows"));
    return count;
}

JetPages::Row JetPages::FindRow(int row) const
{
    int start = 0;
    std::size_t size = 0;
    if (row >= RowCount() || mdb_find_row(mHandle.get(), row, &start, &size) != 0)
        ThrowJetDamaged(QStringLiteral("a row lies outside its page"));
    const int flags = start & (kDeleted | kElsewhere);
    start &= 0x1FFF;
    if (start + qint64(size) > mHandle->fmt->pg_size)
        ThrowJetDamaged(QStringLiteral("a row lies outside its page"));
    return {start, int(size), flags};
}

void JetPages::Charge(qint64 bytes)
{
    mBudget -= bytes;
    if (mBudget < 0)
        ThrowJetDamaged(QStringLiteral("its rows point to each other without end"));
}

// The library reads other pages into a second buffer, so that the current page stays.
QByteArrayView JetPages::FarRow(quint32 pointer)
{
    void* buffer = nullptr;
    int start = 0;
    std::size_t size = 0;
    if (mdb_find_pg_row(mHandle.get(), int(pointer), &buffer, &start, &size) != 0 ||
        start + qint64(size) > mHandle->fmt->pg_size)
        ThrowJetDamaged(QStringLiteral("a long value lies outside its page"));
    Charge(qint64(size));
    return {static_cast<const char*>(buffer) + start, qsizetype(size)};
}

QByteArray JetPages::LongValue(QByteArrayView field)
{
    if (field.size() < kLongValueHead)
        ThrowJetDamaged(QStringLiteral("a long value has no head"));
    const auto head = qFromLittleEndian<quint32>(field.data());
    const qsizetype length = head & kLengthMask;
    auto pointer = qFromLittleEndian<quint32>(field.data() + 4);
    if (head & kInRow)
        return field.sliced(kLongValueHead).toByteArray().left(length);
    if (head & kInOneRow)
        return FarRow(pointer).toByteArray().left(length);

    QByteArray value;
    QSet<quint32> seen;
    while (pointer != 0 && value.size() < length) {
        if (seen.contains(pointer))
            ThrowJetDamaged(QStringLiteral("a long value leads back to itself"));
        seen.insert(pointer);
        const QByteArrayView part = FarRow(pointer);
        if (part.size() <= kPointerSize)
            ThrowJetDamaged(QStringLiteral("a long value has an empty part"));
        value.append(part.sliced(kPointerSize));
        pointer = qFromLittleEndian<quint32>(part.data());
    }
    if (value.size() < length)
        ThrowJetDamaged(QStringLiteral("a long value is cut off"));
    value.truncate(length);
    return value;
}

}  // namespace fenrik
