#include "dav/Dump.h"

#include "platform/Database.h"
#include "platform/Recordset.h"

#include <QIODevice>
#include <QStringList>

namespace fenrik {

namespace {

// As many digits as the number is good for. Singles and money are doubles in the database, and only the column still
// knows; a column of money has no type.
int DigitsOf(const QString& columnType)
{
    if (columnType == QLatin1String("FLOAT"))
        return 8;
    return columnType.isEmpty() ? 15 : 16;
}

QString Quoted(const QString& text)
{
    QString inner = text;
    return '"' + inner.replace('"', QLatin1String("\"\"")) + '"';
}

QString NameForm(const QString& name)
{
    static const QString kNeedQuotes = QStringLiteral(",\"\r\n");
    for (const QChar character : kNeedQuotes) {
        if (name.contains(character))
            return Quoted(name);
    }
    return name;
}

QString Form(const QVariant& value, const QString& columnType)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return {};
    case QMetaType::QByteArray:
        return Quoted(QString::fromLatin1(value.toByteArray().toHex()));
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', DigitsOf(columnType));
    case QMetaType::QString:
        return Quoted(value.toString());
    default:
        return value.toString();
    }
}

QStringList ColumnTypes(Database& database, const QString& table)
{
    QString name = table;
    const auto rows = database.OpenRecordset(
        QStringLiteral("SELECT type FROM pragma_table_info('%1')").arg(name.replace('\'', QLatin1String("''"))));
    QStringList types;
    for (; !rows->EndOfFile(); rows->MoveNext())
        types.append(rows->Fields(0).toString());
    return types;
}

}  // namespace

void DumpTable(Database& database, const QString& table, QIODevice& output)
{
    const auto rows = database.OpenRecordset(QStringLiteral("SELECT * FROM %1").arg(QuotedName(table)));
    const QStringList types = ColumnTypes(database, table);
    QStringList line;
    for (const QString& name : rows->FieldNames())
        line.append(NameForm(name));
    output.write(line.join(',').toUtf8() + '\n');

    for (; !rows->EndOfFile(); rows->MoveNext()) {
        line.clear();
        for (int column = 0; column < int(rows->FieldNames().size()); ++column)
            line.append(Form(rows->Fields(column), types.value(column)));
        output.write(line.join(',').toUtf8() + '\n');
    }
}

}  // namespace fenrik
