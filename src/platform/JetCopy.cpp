#include "platform/JetCopy.h"

#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/JetFile.h"
#include "platform/JetProperties.h"
#include "platform/JetQueries.h"
#include "platform/SqliteStatement.h"

#include <QHash>
#include <QStringList>

#include <optional>

#include <mdbtools.h>
#include <sqlite3.h>

namespace fenrik {

namespace {

std::shared_ptr<sqlite3> OpenMemory()
{
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(":memory:", &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    std::shared_ptr<sqlite3> connection(handle, sqlite3_close_v2);
    if (code != SQLITE_OK)
        ThrowEngineError(handle, code);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // A quoted name that no column has would otherwise turn into a text.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    return connection;
}

class Copier {
public:
    explicit Copier(const JetFile& file) : mFile(file) { mCopy.connection = OpenMemory(); }

    JetCopy Copy()
    {
        Run(QStringLiteral("PRAGMA user_version = 1"));
        Run(QStringLiteral("BEGIN"));
        for (const JetObject& object : mFile.Objects())
            CopyObject(object);
        MakeViews();
        Run(QStringLiteral("COMMIT"));
        Run(QStringLiteral("PRAGMA query_only = 1"));
        LimitStatements(mCopy.connection.get());
        mCopy.kind = mFile.Kind();
        ReadVersion();
        return std::move(mCopy);
    }

private:
    void Run(const QString& sql) const
    {
        SqliteStatement statement(mCopy.connection.get(), sql);
        statement.Step();
    }

    void LeaveOut(const QString& name, const QString& reason) { mCopy.leftOut.push_back({name, reason}); }

    void CopyObject(const JetObject& object)
    {
        if (object.isSystem)
            return;
        if (object.type == JetObject::kTable)
            CopyTable(object);
        else if (object.type == JetObject::kLinked || object.type == JetObject::kLinkedOdbc)
            LeaveOut(object.name, QStringLiteral("it stands in another database"));
    }

    // A name that the engine does not allow, or has already, costs this one table.
    void CopyTable(const JetObject& object)
    {
        std::optional<SqliteStatement> insert;
        const auto makeTable = [&](const JetTable& table) {
            QStringList columns;
            for (const JetColumn& column : table.Columns())
                columns.append(QuotedName(column.name) + ' ' + SqliteTypeOf(column.type));
            const QString places = QStringList(columns.size(), QStringLiteral("?")).join(',');
            try {
                Run(QStringLiteral("CREATE TABLE %1 (%2)").arg(QuotedName(object.name), columns.join(", ")));
                insert.emplace(mCopy.connection.get(),
                               QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(QuotedName(object.name), places));
            } catch (const Error& error) {
                LeaveOut(object.name, error.Description());
            }
        };
        mFile.ReadTable(object, makeTable, [&](const JetFile::Row& row) {
            if (!insert)
                return;
            for (std::size_t i = 0; i < row.size(); ++i)
                insert->Bind(int(i) + 1, row[i]);
            insert->Step();
            insert->Reset();
        });
    }

    void MakeViews()
    {
        auto queries = ReadQueries();
        std::vector<QString> made;
        for (const JetObject& object : mFile.Objects()) {
            if (object.type == JetObject::kQuery && MakeView(object.name, queries[object.id]))
                made.push_back(object.name);
        }
        DropUselessViews(std::move(made));
    }

    bool MakeView(const QString& name, const std::vector<JetQueryPart>& parts)
    {
        try {
            const QString select = ComposeJetQuery(parts);
            Run(QStringLiteral("CREATE VIEW %1 AS %2").arg(QuotedName(name), select));
            return true;
        } catch (const Error& error) {
            LeaveOut(name, error.Description());
            return false;
        }
    }

    // A view may name a column that is not there, or another view that was left out; each round may leave more of them
    // without a ground.
    void DropUselessViews(std::vector<QString> views)
    {
        bool again = true;
        while (again) {
            again = false;
            std::vector<QString> kept;
            for (const QString& view : views) {
                if (const auto reason = FaultOf(view)) {
                    Run(QStringLiteral("DROP VIEW %1").arg(QuotedName(view)));
                    LeaveOut(view, *reason);
                    again = true;
                } else {
                    kept.push_back(view);
                }
            }
            views = std::move(kept);
        }
    }

    [[nodiscard]] std::optional<QString> FaultOf(const QString& view) const
    {
        try {
            SqliteStatement(mCopy.connection.get(), QStringLiteral("SELECT * FROM %1").arg(QuotedName(view)));
            return std::nullopt;
        } catch (const Error& error) {
            return error.Description();
        }
    }

    [[nodiscard]] QHash<qint32, std::vector<JetQueryPart>> ReadQueries() const
    {
        QHash<qint32, std::vector<JetQueryPart>> queries;
        const JetObject* table = mFile.Find(JetObject::kTable, QStringLiteral("MSysQueries"));
        if (!table)
            return queries;
        std::vector<std::size_t> places;
        const auto findColumns = [&](const JetTable& columns) {
            for (const char* name : {"ObjectId", "Attribute", "Order", "Flag", "Name1", "Name2", "Expression"})
                places.push_back(std::size_t(columns.PositionOf(QString::fromLatin1(name))));
        };
        mFile.ReadTable(*table, findColumns, [&](const JetFile::Row& row) {
            const auto value = [&](std::size_t place) { return row[places[place]]; };
            queries[value(0).toInt()].push_back({value(1).toInt(), value(2).toByteArray(), value(3).toInt(),
                                                 value(4).toString(), value(5).toString(), value(6).toString()});
        });
        return queries;
    }

    void ReadVersion()
    {
        const JetObject* database = mFile.Find(JetObject::kDatabase, QStringLiteral("MSysDb"));
        const JetText encoding = mCopy.kind == "Jet 3" ? JetText::Ansi : JetText::Unicode;
        const auto properties =
            database ? ReadJetProperties(database->properties, encoding) : QMap<QString, QVariant>();
        mCopy.accessVersion = properties.value(QStringLiteral("accessversion"), mCopy.kind).toString();
        mCopy.build = properties.value(QStringLiteral("build"), QString::fromLatin1(mdb_get_version())).toString();
    }

    const JetFile& mFile;
    JetCopy mCopy;
};

}  // namespace

JetCopy CopyJetFile(const QByteArray& bytes, const QString& name)
{
    const JetFile file(bytes, name);
    return Copier(file).Copy();
}

}  // namespace fenrik
