#include "platform/Recordset.h"

#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/SqliteStatement.h"

#include <QRegularExpression>

namespace fenrik {

namespace {

struct Criterion {
    QString column;
    QString text;
};

Criterion ParseCriterion(const QString& criterion)
{
    static const QRegularExpression form(QStringLiteral(R"(^\s*(?:\[([^\]]+)\]|(\w+))\s*=\s*'((?:[^']|'')*)'\s*$)"));
    const QRegularExpressionMatch match = form.match(criterion);
    if (!match.hasMatch())
        throw Error(ErrorNumber::kDatabaseStatement, QStringLiteral("Unknown form of criterion: %1").arg(criterion));
    const QString column = match.captured(1).isEmpty() ? match.captured(2) : match.captured(1);
    return {column, match.captured(3).replace(QLatin1String("''"), QLatin1String("'"))};
}

qsizetype SizeOf(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString().size() * qsizetype(sizeof(QChar));
    case QMetaType::QByteArray:
        return value.toByteArray().size();
    default:
        return 0;
    }
}

}  // namespace

Recordset::Recordset(std::shared_ptr<sqlite3> connection, const QString& sql, const QString& table, bool readOnly)
    : mConnection(std::move(connection)), mTable(table), mReadOnly(readOnly)
{
    SqliteStatement statement(mConnection.get(), sql);
    ReadNames(statement);
    ReadRows(statement);
}

void Recordset::ReadRows(SqliteStatement& statement)
{
    qsizetype bytes = 0;
    while (statement.Step()) {
        mRows.push_back(ReadRow(statement));
        for (const QVariant& value : mRows.back())
            bytes += SizeOf(value);
        if (mRows.size() > kMostRows || bytes > kMostBytes)
            throw Error(ErrorNumber::kDatabaseBroken, QStringLiteral("A table or query is too large."));
    }
}

void Recordset::ReadNames(const SqliteStatement& statement)
{
    for (int column = 0; column < statement.ColumnCount(); ++column) {
        mNames.append(statement.ColumnName(column));
        const QString key = mNames.last().toLower();
        if (!mPositions.contains(key))
            mPositions.insert(key, column);
    }
}

Recordset::Row Recordset::ReadRow(const SqliteStatement& statement) const
{
    Row row;
    row.reserve(std::size_t(mNames.size()));
    for (int column = 0; column < int(mNames.size()); ++column)
        row.push_back(statement.Value(column));
    return row;
}

void Recordset::MoveFirst()
{
    mCurrent = 0;
}

void Recordset::MoveNext()
{
    if (!EndOfFile())
        ++mCurrent;
}

void Recordset::FindFirst(const QString& criterion)
{
    const Criterion wanted = ParseCriterion(criterion);
    const auto column = std::size_t(PositionOf(wanted.column));
    for (std::size_t row = 0; row < mRows.size(); ++row) {
        const QVariant& value = mRows[row][column];
        if (value.isValid() && value.toString().compare(wanted.text, Qt::CaseInsensitive) == 0) {
            mCurrent = row;
            mNoMatch = false;
            return;
        }
    }
    mNoMatch = true;
}

QVariant Recordset::Fields(const QString& name) const
{
    return Fields(PositionOf(name));
}

QVariant Recordset::Fields(int position) const
{
    if (EndOfFile())
        throw Error(ErrorNumber::kNoCurrentRecord, QStringLiteral("There is no current record."));
    if (position < 0 || position >= mNames.size())
        throw Error(ErrorNumber::kItemNotFound, QStringLiteral("There is no column %1.").arg(position));
    return mRows[mCurrent][std::size_t(position)];
}

int Recordset::PositionOf(const QString& name) const
{
    const int position = mPositions.value(name.toLower(), -1);
    if (position < 0)
        throw Error(ErrorNumber::kItemNotFound, QStringLiteral("There is no column %1.").arg(name));
    return position;
}

void Recordset::AddNew()
{
    if (mReadOnly || mTable.isEmpty() || !mConnection)
        throw Error(ErrorNumber::kDatabaseReadOnly, QStringLiteral("This recordset can't be changed."));
    mNewRow.assign(std::size_t(mNames.size()), QVariant());
}

void Recordset::SetField(const QString& name, const QVariant& value)
{
    CheckAdding();
    mNewRow[std::size_t(PositionOf(name))] = value;
}

void Recordset::Update()
{
    CheckAdding();
    const QString places = QStringList(mNames.size(), QStringLiteral("?")).join(',');
    SqliteStatement insert(mConnection.get(),
                           QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(QuotedName(mTable), places));
    for (std::size_t column = 0; column < mNewRow.size(); ++column)
        insert.Bind(int(column) + 1, mNewRow[column]);
    insert.Step();
    mNewRow.clear();
}

void Recordset::CheckAdding() const
{
    if (mNewRow.empty())
        throw Error(ErrorNumber::kNoCurrentRecord, QStringLiteral("No record is being added."));
}

void Recordset::Close()
{
    mConnection.reset();
    mRows.clear();
    mNewRow.clear();
    mCurrent = 0;
}

}  // namespace fenrik
