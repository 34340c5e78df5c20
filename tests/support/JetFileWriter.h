#pragma once

#include "platform/JetQueries.h"
#include "platform/JetTypes.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

#include <vector>

namespace fenrik {

/// Makes Jet 3 and Jet 4 files for tests: a header, the system tables of objects and stored queries, tables without
/// indexes, long values in rows of their own. What it makes is good enough for mdbtools' own commands, and that is
/// tested; it is not meant for the engine itself.
class JetFileWriter {
public:
    enum class Version : std::uint8_t { kJet3, kJet4 };

    struct Column {
        QString name;
        int type;  ///< of JetType
        int scale = 0;
    };
    using Row = std::vector<QVariant>;  ///< a value for each column, an invalid one for null; dates are doubles

    explicit JetFileWriter(Version version);

    /// Gives the page of the table's definition.
    quint32 AddTable(const QString& name, const std::vector<Column>& columns, const std::vector<Row>& rows);
    void AddQuery(const QString& name, const std::vector<JetQueryPart>& parts);

    /// A row of the table of objects that has nothing behind it, as a linked table.
    void AddObject(const QString& name, int type, qint32 id, qint32 flags = 0, const QByteArray& properties = {});

    /// What the file says of itself and of its maker.
    void SetVersionProperties(const QString& accessVersion, qint32 build);

    /// Bytes of the password as they stand in the header, before any mask.
    void SetPassword(const QByteArray& password) { mPassword = password; }

    /// From now on a row of a table is put on another page than its own, behind a pointer.
    void PutRowsElsewhere() { mElsewhere = true; }

    /// The finished file; nothing can be added after that.
    [[nodiscard]] QByteArray Bytes();

    [[nodiscard]] int PageSize() const { return IsJet3() ? 2048 : 4096; }

private:
    struct Layout;  // where the columns of a table stand in its rows

    [[nodiscard]] bool IsJet3() const { return mVersion == Version::kJet3; }
    quint32 NewPage(char type, quint32 owner);
    QByteArray& Page(quint32 page) { return mPages[page]; }
    quint32 AddRow(quint32 page, const QByteArray& row, int flags = 0);
    [[nodiscard]] bool HasRoom(quint32 page, qsizetype size) const;
    [[nodiscard]] int RowCount(quint32 page) const;

    void WriteTable(quint32 definition, const std::vector<Column>& columns, const std::vector<Row>& rows, char kind);
    std::vector<quint32> WriteRows(quint32 definition, const std::vector<Column>& columns,
                                   const std::vector<Row>& rows);
    QByteArray PackRow(const std::vector<Column>& columns, const Row& row);
    [[nodiscard]] QByteArray PackTail(const std::vector<int>& offsets, int bodySize, int columns) const;
    QByteArray PackValue(const Column& column, const QVariant& value);
    QByteArray PackLongValue(const QByteArray& value);
    [[nodiscard]] QByteArray PackText(const QString& text) const;
    [[nodiscard]] QByteArray PackMap(const std::vector<quint32>& pages);
    QByteArray PackDefinition(const std::vector<Column>& columns, std::size_t rows, char kind, quint32 maps) const;
    [[nodiscard]] QByteArray PackColumn(const Column& column, quint16 number, quint16 fixedOffset,
                                        quint16 variables) const;
    [[nodiscard]] QByteArray PackName(const QString& name) const;
    void WriteDefinition(quint32 page, const QByteArray& body);
    void WriteHeader();

    Version mVersion;
    std::vector<QByteArray> mPages;
    std::vector<Row> mObjects;
    std::vector<Row> mQueries;
    quint32 mLongPage = 0;
    qint32 mNextQuery = -2000000000;
    QByteArray mPassword;
    bool mElsewhere = false;
};

}  // namespace fenrik
