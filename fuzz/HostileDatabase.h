#pragma once

#include "FuzzSteps.h"
#include "ScratchFile.h"
#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"

#include <QStringList>

#include <vector>

namespace fenrik {

/// Makes a database that nobody meant: a small good one on which the fuzzer's steps are carried out. A step changes one
/// value, row, column or table, puts a query of any text in a table's place, or lays bytes over the finished file.
class HostileDatabase {
public:
    /// `good`: the bytes of a database.
    HostileDatabase(const QByteArray& good, FuzzSteps& steps) : mFile(good, QStringLiteral(".dav")), mSteps(steps)
    {
        Edit();
        Overlay();
    }

    [[nodiscard]] const QString& Path() const { return mFile.Path(); }
    [[nodiscard]] QByteArray Bytes() const { return mFile.Bytes(); }

    /// A database of small pages, so that a few tables have pages of every kind.
    [[nodiscard]] static QByteArray Good(const QStringList& statements)
    {
        const ScratchFile file({});
        QFile::remove(file.Path());
        {
            const auto database = Database::CreateDatabase(file.Path());
            for (const QString& statement : statements)
                database->Execute(statement);
            database->Execute(QStringLiteral("PRAGMA page_size = 512"));
            database->Execute(QStringLiteral("VACUUM"));
        }
        return file.Bytes();
    }

private:
    struct Patch {
        qsizetype place;
        QByteArray bytes;
    };

    void Edit()
    {
        const auto database = Database::OpenDatabase(Path(), false, false);
        database->Execute(QStringLiteral("PRAGMA journal_mode = OFF"));
        database->Execute(QStringLiteral("PRAGMA synchronous = OFF"));
        database->BeginTrans();
        while (!mSteps.AtEnd())
            Try([&] { Step(*database); });
        Try([&] { database->CommitTrans(); });
    }

    void Step(Database& database)
    {
        const unsigned verb = mSteps.Byte() % 10;
        if (verb == 0) {
            const auto place = qsizetype(mSteps.Byte() << 8 | mSteps.Byte());
            mPatches.push_back({place, Bytes(mSteps.Byte())});
            return;
        }
        const QStringList tables = database.TableNames();
        if (tables.isEmpty())
            return;
        const QString table = QuotedName(tables[qsizetype(mSteps.Byte()) % tables.size()]);
        database.Execute(Statement(verb, table, database));
    }

    QString Statement(unsigned verb, const QString& table, Database& database)
    {
        const QStringList columns = database.OpenRecordset("SELECT * FROM " + table + " LIMIT 0")->FieldNames();
        switch (verb) {
        case 1:
            return QStringLiteral("DELETE FROM %1 WHERE rowid = %2").arg(table).arg(mSteps.Byte());
        case 2:
            return QStringLiteral("DROP TABLE %1").arg(table);
        case 3:
            return QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(table, QuotedName(Text()));
        case 4: {
            const QString column = Column(columns);
            return QStringLiteral("ALTER TABLE %1 RENAME COLUMN %2 TO %3").arg(table, column, QuotedName(Text()));
        }
        case 5:
            database.Execute(QStringLiteral("DROP TABLE %1").arg(table));
            return QStringLiteral("CREATE VIEW %1 AS ").arg(table) + Text();
        case 6:
            return QStringLiteral("INSERT INTO %1 VALUES (").arg(table) + Values(columns.size()) + u')';
        default:
            const QString column = Column(columns);
            const QString row = QString::number(mSteps.Byte());
            return "UPDATE " + table + " SET " + column + " = " + Value() + " WHERE rowid = " + row;
        }
    }

    QString Column(const QStringList& columns)
    {
        return QuotedName(columns[qsizetype(mSteps.Byte()) % columns.size()]);
    }

    QString Values(qsizetype count)
    {
        QStringList values;
        for (qsizetype i = 0; i < count; ++i)
            values.append(Value());
        return values.join(u',');
    }

    /// A literal of the engine.
    QString Value()
    {
        static const QStringList kOdd{"9e999",  "-9e999", "2147483648", "1e18",   "0.5",    "'1e999'",      "' 12 '",
                                      "'0x10'", "'nan'",  "'1,5'",      "'@END'", "'-0.0'", "'4294967297'", "-1"};
        switch (mSteps.Byte() % 7) {
        case 0:
            return QStringLiteral("NULL");
        case 1:
            return QString::number(int(mSteps.Byte()) - 128);
        case 2:
            return QString::number(Number());
        case 3:
            return kOdd[qsizetype(mSteps.Byte()) % kOdd.size()];
        case 4:
            return QStringLiteral("CAST(x'%1' AS TEXT)").arg(Hex(mSteps.Byte()));
        case 5:
            return QStringLiteral("x'%1'").arg(Hex(mSteps.Byte()));
        default:
            // Up to a megabyte.
            return QStringLiteral("replace(hex(zeroblob(%1)), '00', CAST(x'%2' AS TEXT))")
                .arg(1 << mSteps.Byte() % 16)
                .arg(Hex(mSteps.Byte() % 32));
        }
    }

    qint64 Number()
    {
        quint64 number = 0;
        for (int i = 0; i < 8; ++i)
            number = number << 8 | mSteps.Byte();
        return qint64(number);
    }

    QByteArray Bytes(unsigned count)
    {
        const std::string_view bytes = mSteps.Bytes(count);
        return {bytes.data(), qsizetype(bytes.size())};
    }
    QString Text() { return QString::fromUtf8(Bytes(mSteps.Byte())); }
    QString Hex(unsigned count) { return QString::fromLatin1(Bytes(count).toHex()); }

    void Overlay()
    {
        if (mPatches.empty())
            return;
        QByteArray bytes = mFile.Bytes();
        for (const Patch& patch : mPatches) {
            if (const qsizetype place = patch.place % bytes.size(); place + patch.bytes.size() <= bytes.size())
                bytes.replace(place, patch.bytes.size(), patch.bytes);
        }
        mFile.Write(bytes);
    }

    template <typename Change>
    static void Try(const Change& change)
    {
        try {
            change();
        } catch (const Error&) {
            // The engine refuses much of this, as it should.
        }
    }

    ScratchFile mFile;
    FuzzSteps& mSteps;
    std::vector<Patch> mPatches;
};

}  // namespace fenrik
