#pragma once

#include "model/SaveStep.h"

#include <QString>

namespace fenrik {

class Boxes;
class CNode;
class Database;
class Recordset;

/// A node in a saved system: the table "Node n", n being the node's number. See PropertyRows.
///
///   row                              value
///   "Node Name"                      Name
///   "Node Type"                      typeID
///   "Node Major Version"             osMajVersion
///   "Node Minor Version"             osMinVersion
///   then, for each input:
///   "@Input 1"                       marker
///     "Input Name", "On State"
///   "@END"                           marker
///   then, for each output:
///   "@Output 1"                      marker
///     "Output Name"
///     "In Use"                       UsageCode; the row's name is older than the codes
///     "Relationships"                RPN, by RelationshipToText; no row if it is empty
///   "@END"                           marker
class NodeTable {
public:
    /// Failures are told in `boxes`; they stay untold if it is null.
    NodeTable(CNode& node, Boxes* boxes) : mNode(node), mBoxes(boxes) {}

    /// Writes the table into the database `path`. Whatever happens, that holds the old table or the new one.
    [[nodiscard]] SaveResult Make(const QString& path);

    /// The same in an open database, as a part of the transaction that runs there.
    [[nodiscard]] SaveResult Make(Database& database);

    /// Takes over what the database `path` has. A node without a table keeps what it holds; a point whose rows can't
    /// be read does, too, and the user is told once.
    void Load(const QString& path);

    /// The same from an open database.
    void Load(Database& database);

private:
    void Write(Database& database) const;
    void WriteRows(Recordset& rows) const;
    void ReadTable(Database& database);
    void ReadNode(Recordset& rows);
    void ReadPoints(Recordset& rows);
    void TellLoadFailure();

    CNode& mNode;
    Boxes* mBoxes;
};

}  // namespace fenrik
