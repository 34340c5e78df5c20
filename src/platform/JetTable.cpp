#include "platform/JetTable.h"

#include "platform/JetPages.h"

#include <QtEndian>

namespace fenrik {

namespace {

constexpr unsigned kMostColumns = 255;
constexpr int kOwnerOffset = 4;  // on a data page: the page of its table's definition

struct TableCloser {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};

}  // namespace

struct JetTable::Definition {
    MdbCatalogEntry entry{};
    std::unique_ptr<MdbTableDef, TableCloser> table;
    std::vector<MdbColumn*> columns;
    std::vector<MdbField> fields;
};

JetTable::JetTable(JetPages& pages, quint32 page) : mPages(pages), mDefinition(std::make_unique<Definition>())
{
    MdbCatalogEntry& entry = mDefinition->entry;
    entry.mdb = pages.Handle();
    entry.object_type = MDB_TABLE;
    entry.table_pg = page;
    mDefinition->table.reset(mdb_read_table(&entry));
    if (!mDefinition->table)
        ThrowJetDamaged(QStringLiteral("a table's definition on page %1 can't be read").arg(page));
    constexpr std::size_t kSmallestMap = 5;
    if (!mDefinition->table->usage_map || mDefinition->table->map_sz < kSmallestMap)
        ThrowJetDamaged(QStringLiteral("the list of a table's pages can't be read"));
    ReadColumns();
}

JetTable::~JetTable() = default;

void JetTable::ReadColumns()
{
    MdbTableDef* table = mDefinition->table.get();
    const unsigned count = table->num_cols;
    // The library would go through pages without end for numbers of columns or indexes that no file has.
    if (count == 0 || count > kMostColumns || table->num_real_idxs > kMostColumns || !mdb_read_columns(table) ||
        table->columns->len != count)
        ThrowJetDamaged(
            QStringLiteral("the columns of the table on page %1 can't be read").arg(mDefinition->entry.table_pg));

    for (unsigned i = 0; i < count; ++i) {
        auto* column = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
        mDefinition->columns.push_back(column);
        mColumns.push_back({QString::fromUtf8(column->name), column->col_type});
    }
    mDefinition->fields.resize(count);
    mWanted.assign(count, true);
}

void JetTable::ReadOnly(const std::vector<int>& positions)
{
    mWanted.assign(mColumns.size(), false);
    for (const int position : positions)
        mWanted[std::size_t(position)] = true;
}

int JetTable::PositionOf(const QString& name) const
{
    for (std::size_t i = 0; i < mColumns.size(); ++i) {
        if (mColumns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    ThrowJetDamaged(QStringLiteral("a system table has no column %1").arg(name));
}

// The map of a damaged file may name a page twice or lead back; the pages of a good one go up.
bool JetTable::NextPage()
{
    const MdbTableDef* table = mDefinition->table.get();
    while (true) {
        const int next = mdb_map_find_next(mPages.Handle(), table->usage_map, unsigned(table->map_sz), mPage);
        if (next == 0)
            return false;
        if (next < 0 || quint32(next) <= mPage)
            ThrowJetDamaged(QStringLiteral("the list of a table's pages can't be read"));
        mPage = quint32(next);
        mPages.Read(mPage);
        const auto* bytes = mPages.Handle()->pg_buf;
        const bool mine = bytes[0] == MDB_PAGE_DATA &&
                          qFromLittleEndian<quint32>(bytes + kOwnerOffset) == mDefinition->entry.table_pg;
        if (!mine)
            continue;
        mRow = 0;
        mRowCount = mPages.RowCount();
        return true;
    }
}

bool JetTable::Next(std::vector<QVariant>& row)
{
    while (true) {
        if (mRow >= mRowCount && !NextPage())
            return false;
        if (mRow >= mRowCount)
            continue;
        mPages.Read(mPage);
        const JetPages::Row place = mPages.FindRow(mRow++);
        // A row that has outgrown its page stands on another, marked as deleted there so that nobody meets it twice.
        if (place.size == 0 || (place.flags & JetPages::kDeleted))
            continue;
        if (place.flags & JetPages::kElsewhere)
            ReadFarRow(place.start, place.size, row);
        else
            ReadRow(place.start, place.size, row);
        return true;
    }
}

void JetTable::ReadFarRow(int start, int size, std::vector<QVariant>& row)
{
    if (size < 4)
        ThrowJetDamaged(QStringLiteral("a row's pointer is cut off"));
    const auto pointer = qFromLittleEndian<quint32>(mPages.Handle()->pg_buf + start);
    mPages.Read(pointer >> 8);
    const JetPages::Row place = mPages.FindRow(int(pointer & 0xFF));
    ReadRow(place.start, place.size, row);
}

void JetTable::ReadRow(int start, int size, std::vector<QVariant>& row)
{
    mPages.Charge(size + qint64(mColumns.size()));
    MdbField* fields = mDefinition->fields.data();
    if (mdb_crack_row(mDefinition->table.get(), start, std::size_t(size), fields) < 0)
        ThrowJetDamaged(QStringLiteral("a row on page %1 can't be read").arg(mPage));
    row.resize(mColumns.size());
    for (std::size_t i = 0; i < mColumns.size(); ++i)
        row[i] = mWanted[i] ? ReadField(i, fields[i].start, fields[i].siz, fields[i].is_null) : QVariant();
}

QVariant JetTable::ReadField(std::size_t column, int start, int size, bool isNull)
{
    const int type = mColumns[column].type;
    if (type == JetType::kBoolean)  // its value is the bit that elsewhere says null
        return isNull ? 0LL : -1LL;
    if (isNull)
        return {};
    if (start < 0 || size < 0 || start + size > mPages.Handle()->fmt->pg_size)
        ThrowJetDamaged(QStringLiteral("a field on page %1 lies outside its row").arg(mPage));

    const QByteArrayView field(mPages.Handle()->pg_buf + start, size);
    const JetText encoding = mPages.IsJet3() ? JetText::Ansi : JetText::Unicode;
    // The library's versions do not agree on which of the two numbers is which; the scale is never the larger one.
    const MdbColumn* definition = mDefinition->columns[column];
    if (!IsLongType(type))
        return DecodeJetValue(type, field, encoding, qMin(definition->col_scale, definition->col_prec));
    const QByteArray value = mPages.LongValue(field);
    return DecodeJetValue(type, value, encoding, 0);
}

}  // namespace fenrik
