#pragma once

#include "model/CRelation.h"

#include <QByteArray>
#include <QList>

#include <cstdint>

namespace fenrik {

class CommandTable;
class COutput;

/// One row of the list of terms: what stands in its two columns, and the command behind it.
struct TermRow {
    QString op;
    QString command;
    int number = 0;  ///< 0 for a row that is no command

    friend bool operator==(const TermRow&, const TermRow&) = default;
};

namespace RelationshipTerms {
/// The terms of one level of a relationship (see Relationship), level 0 being the part before the first opened one.
/// A binary operator is moved from behind its operands between them: "A B AND" reads "A AND B". Any bytes will do; a
/// command that is cut off is left out.
[[nodiscard]] QList<CRelation> OfLevel(const QByteArray& relationship, int level);

/// What the list shows for them.
[[nodiscard]] QList<TermRow> Rows(const QList<CRelation>& terms, const CommandTable& commands);

/// What the list shows for a level of an output: its terms, or a word where there are none.
[[nodiscard]] QList<TermRow> RowsOf(const COutput& output, int level, const CommandTable& commands);
}  // namespace RelationshipTerms

}  // namespace fenrik
