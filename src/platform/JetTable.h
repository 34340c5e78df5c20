#pragma once

#include "platform/JetTypes.h"

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace fenrik {

class JetPages;

struct JetColumn {
    QString name;
    int type;  ///< of JetType
};

/// One table of a Jet file, read from its first row to its last. Rows come in the order of their pages, and that is
/// the order in which they were added until rows are deleted.
class JetTable {
public:
    /// Reads the definition, which stands on `page`. `pages` outlives the table. Throws kDatabaseBroken.
    JetTable(JetPages& pages, quint32 page);
    ~JetTable();
    JetTable(const JetTable&) = delete;
    JetTable& operator=(const JetTable&) = delete;

    [[nodiscard]] const std::vector<JetColumn>& Columns() const { return mColumns; }

    /// Position of the column of that name, in any case. Throws kDatabaseBroken if there is none.
    [[nodiscard]] int PositionOf(const QString& name) const;

    /// From now on only these columns are read; all others are null in every row.
    void ReadOnly(const std::vector<int>& positions);

    /// Fills `row` with one value for each column, an invalid one for null; booleans are -1 and 0. False at the end.
    bool Next(std::vector<QVariant>& row);

private:
    struct Definition;

    void ReadColumns();
    bool NextPage();
    void ReadRow(int start, int size, std::vector<QVariant>& row);
    void ReadFarRow(int start, int size, std::vector<QVariant>& row);
    [[nodiscard]] QVariant ReadField(std::size_t column, int start, int size, bool isNull);

    JetPages& mPages;
    std::unique_ptr<Definition> mDefinition;
    std::vector<JetColumn> mColumns;
    std::vector<bool> mWanted;
    quint32 mPage = 0;
    int mRow = 0;
    int mRowCount = 0;
};

}  // namespace fenrik
