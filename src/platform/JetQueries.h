#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace fenrik {

/// One row of the system table in which a Jet file keeps its stored queries. A query has a row for each of its parts:
///
///   attribute  part              flag                   name1         name2        expression
///   0          beginning
///   1          kind              1 select, others not
///   2          parameter
///   3          options           bits, see JetQueries   rows of TOP
///   4          foreign database
///   5          source                                   table         alias        (of a union: a select)
///   6          column                                   alias                      value
///   7          join              1 inner 2 left 3 right left source   right source condition
///   8          WHERE                                                               condition
///   9          GROUP BY                                                            value
///   10         HAVING                                                              condition
///   11         ORDER BY                                 "D" downward               value
///   255        end
struct JetQueryPart {
    int attribute;
    QByteArray order;  ///< parts of one attribute follow each other in the order of these bytes
    int flag;
    QString name1;
    QString name2;
    QString expression;
};

/// The SELECT statement, for SQLite, of the stored query with these parts. Throws Error kDatabaseStatement with the
/// reason if it is no select query or asks for something that SQLite can't do.
[[nodiscard]] QString ComposeJetQuery(std::vector<JetQueryPart> parts);

}  // namespace fenrik
