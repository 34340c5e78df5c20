#include "platform/JetQueries.h"

#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/JetExpression.h"
#include "platform/JetJoins.h"

#include <QSet>

#include <algorithm>

namespace fenrik {

namespace {

enum Attribute {
    kKind = 1,
    kParameter = 2,
    kOptions = 3,
    kForeign = 4,
    kSource = 5,
    kColumn = 6,
    kJoin = 7,
    kWhere = 8,
    kGroupBy = 9,
    kHaving = 10,
    kOrderBy = 11,
};

enum Option {
    kAllColumns = 1,
    kDistinct = 2,
    kDistinctRow = 8,
    kTop = 16,
    kPercent = 32,
};

constexpr int kSelect = 1;

[[noreturn]] void ThrowUnmet(const QString& reason)
{
    throw Error(ErrorNumber::kDatabaseStatement, reason);
}

class Composer {
public:
    explicit Composer(const std::vector<JetQueryPart>& parts) : mParts(parts) {}

    QString Compose()
    {
        CheckKind();
        ReadOptions();
        const QString columns = Columns();
        QString sql = QStringLiteral("SELECT %1%2 FROM %3")
                          .arg(mDistinct ? QStringLiteral("DISTINCT ") : QString(), columns, Sources());
        sql += Conditions(kWhere, "WHERE") + Values(kGroupBy, "GROUP BY") + Conditions(kHaving, "HAVING");
        return sql + Values(kOrderBy, "ORDER BY") + mLimit;
    }

private:
    [[nodiscard]] std::vector<JetQueryPart> Of(int attribute) const
    {
        std::vector<JetQueryPart> found;
        std::copy_if(mParts.begin(), mParts.end(), std::back_inserter(found),
                     [&](const JetQueryPart& part) { return part.attribute == attribute; });
        return found;
    }

    void CheckKind() const
    {
        for (const JetQueryPart& part : Of(kKind)) {
            if (part.flag != kSelect)
                ThrowUnmet(QStringLiteral("it is no simple select query"));
        }
        if (!Of(kParameter).empty())
            ThrowUnmet(QStringLiteral("it asks for parameters"));
        for (const JetQueryPart& part : Of(kForeign)) {
            if (!part.name1.isEmpty())
                ThrowUnmet(QStringLiteral("it reads another database"));
        }
    }

    void ReadOptions()
    {
        for (const JetQueryPart& part : Of(kOptions)) {
            mAll = part.flag & kAllColumns;
            mDistinct = part.flag & kDistinct;
            mDistinctRow = part.flag & kDistinctRow;
            bool isNumber = false;
            const int rows = part.name1.toInt(&isNumber);
            if (part.flag & kPercent || (part.flag & kTop && !isNumber))
                ThrowUnmet(QStringLiteral("it takes a share of its rows"));
            if (part.flag & kTop)
                mLimit = QStringLiteral(" LIMIT %1").arg(rows);
        }
    }

    QString Columns()
    {
        std::vector<JetExpression> values;
        const std::vector<JetQueryPart> parts = Of(kColumn);
        QStringList names;
        for (const JetQueryPart& part : parts) {
            values.push_back(JetExpression::Parse(part.expression));
            names.append(values.back().column.isEmpty() ? QString() : values.back().column.last());
            for (const QString& table : values.back().tables)
                mRead.insert(table.toLower());
        }
        mAll = mAll || parts.empty();
        QStringList columns;
        if (mAll)
            columns.append(QStringLiteral("*"));
        for (std::size_t i = 0; i < parts.size(); ++i)
            columns.append(NamedColumn(values[i], parts[i].name1, names, int(i)));
        return columns.join(QStringLiteral(", "));
    }

    static auto CountOf(const QString& name, const QStringList& names)
    {
        return std::count_if(names.begin(), names.end(),
                             [&](const QString& other) { return name.compare(other, Qt::CaseInsensitive) == 0; });
    }

    // Without an alias a column has its own name, with the table's before it if another column has that name too.
    static QString NamedColumn(const JetExpression& value, const QString& alias, const QStringList& names, int position)
    {
        const QString& own = names[position];
        if (own == "*")
            return value.sql;
        QString name = alias;
        if (name.isEmpty())
            name = own.isEmpty()             ? QStringLiteral("Expr%1").arg(1000 + position)
                   : CountOf(own, names) > 1 ? value.column.join('.')
                                             : own;
        return QStringLiteral("%1 AS %2").arg(value.value, QuotedName(name));
    }

    QString Sources()
    {
        JetJoins joins;
        QSet<QString> names;
        for (const JetQueryPart& part : Of(kSource)) {
            if (part.name1.isEmpty() || !part.expression.isEmpty())
                ThrowUnmet(QStringLiteral("it holds another query"));
            joins.AddSource(part.name1, part.name2);
            names.insert((part.name2.isEmpty() ? part.name1 : part.name2).toLower());
        }
        // Rows of a source that gives no column would come once for each of its own rows.
        if (mDistinctRow && names.size() > 1 && !mAll && !mRead.contains(names))
            ThrowUnmet(QStringLiteral("it tells rows apart by a table that it shows no column of"));
        for (const JetQueryPart& part : Of(kJoin))
            joins.Join(part.name1, part.name2, part.flag, JetExpression::Parse(part.expression).sql);
        return joins.Sql();
    }

    [[nodiscard]] QString Conditions(int attribute, const char* word) const
    {
        QStringList conditions;
        for (const JetQueryPart& part : Of(attribute))
            conditions.append(JetExpression::Parse(part.expression).sql);
        return conditions.isEmpty()
                   ? QString()
                   : QStringLiteral(" %1 %2").arg(QString::fromLatin1(word), conditions.join(QStringLiteral(" AND ")));
    }

    [[nodiscard]] QString Values(int attribute, const char* words) const
    {
        QStringList values;
        for (const JetQueryPart& part : Of(attribute)) {
            const bool downward = attribute == kOrderBy && part.name1.startsWith('D', Qt::CaseInsensitive);
            values.append(JetExpression::Parse(part.expression).value +
                          (downward ? QStringLiteral(" DESC") : QString()));
        }
        return values.isEmpty()
                   ? QString()
                   : QStringLiteral(" %1 %2").arg(QString::fromLatin1(words), values.join(QStringLiteral(", ")));
    }

    const std::vector<JetQueryPart>& mParts;
    bool mAll = false;
    bool mDistinct = false;
    bool mDistinctRow = false;
    QString mLimit;
    QSet<QString> mRead;  // in lower case: the tables that columns are read of
};

}  // namespace

QString ComposeJetQuery(std::vector<JetQueryPart> parts)
{
    std::stable_sort(parts.begin(), parts.end(),
                     [](const JetQueryPart& a, const JetQueryPart& b) { return a.order < b.order; });
    return Composer(parts).Compose();
}

}  // namespace fenrik
