#include "model/NodeTable.h"

#include "model/CNode.h"
#include "model/PropertyRows.h"
#include "platform/Boxes.h"
#include "platform/Database.h"
#include "platform/Error.h"
#include "platform/Recordset.h"

#include <limits>

namespace fenrik {

namespace {

const QString kNodeName = QStringLiteral("Node Name");
const QString kNodeType = QStringLiteral("Node Type");
const QString kMajorVersion = QStringLiteral("Node Major Version");
const QString kMinorVersion = QStringLiteral("Node Minor Version");

SaveWords Words()
{
    return {QStringLiteral("Custom System Database"), QStringLiteral("Make Commands Database"),
            QStringLiteral("commands")};
}

std::uint8_t ReadVersion(Recordset& rows, const QString& name, std::uint8_t present)
{
    const auto text = PropertyRows::Find(rows, name);
    return text ? std::uint8_t(PropertyRows::Number(*text, 0, 255)) : present;
}

template <typename Point>
bool ReadEach(const Collection<Point>& points, Recordset& rows)
{
    bool whole = true;
    for (int number = 1; number <= points.Count(); ++number) {
        try {
            points[number].LoadSystemDatabase(rows);
        } catch (const Error&) {
            whole = false;
        }
    }
    return whole;
}

}  // namespace

SaveResult NodeTable::Make(const QString& path)
{
    return RunSaveStep(mBoxes, Words(), path, [&] { Write(*Database::OpenDatabase(path, false, false)); });
}

SaveResult NodeTable::Make(Database& database)
{
    return RunSaveStep(mBoxes, Words(), database.Name(), [&] { Write(database); });
}

void NodeTable::Write(Database& database) const
{
    PropertyRows::WriteTable(database, mNode.key(), [this](Recordset& rows) { WriteRows(rows); });
}

void NodeTable::WriteRows(Recordset& rows) const
{
    PropertyRows::Add(rows, kNodeName, mNode.Name());
    PropertyRows::Add(rows, kNodeType, QString::number(mNode.typeID()));
    PropertyRows::Add(rows, kMajorVersion, QString::number(mNode.osMajVersion()));
    PropertyRows::Add(rows, kMinorVersion, QString::number(mNode.osMinVersion()));
    for (int number = 1; number <= mNode.CDigitalInputs().Count(); ++number)
        mNode.CDigitalInputs()[number].MakeSystemDatabase(rows);
    for (int number = 1; number <= mNode.COutputs().Count(); ++number)
        mNode.COutputs()[number].MakeSystemDatabase(rows);
}

void NodeTable::Load(const QString& path)
{
    try {
        ReadTable(*Database::OpenDatabase(path, false, true));
    } catch (const Error&) {
        TellLoadFailure();
    }
}

void NodeTable::Load(Database& database)
{
    try {
        ReadTable(database);
    } catch (const Error&) {
        TellLoadFailure();
    }
}

void NodeTable::ReadTable(Database& database)
{
    if (!PropertyRows::HasTable(database, mNode.key()))
        return;
    const auto rows = database.OpenRecordset(QStringLiteral("SELECT * FROM [%1]").arg(mNode.key()));
    ReadNode(*rows);
}

void NodeTable::ReadNode(Recordset& rows)
{
    if (const auto name = PropertyRows::Find(rows, kNodeName))
        mNode.setName(*name);
    if (const auto type = PropertyRows::Find(rows, kNodeType)) {
        using Limits = std::numeric_limits<std::int16_t>;
        mNode.setTypeID(std::int16_t(PropertyRows::Number(*type, Limits::min(), Limits::max())));
    }
    if (mNode.typeID() == CNode::kUnknownType)
        return;
    mNode.TakeSavedVersion(ReadVersion(rows, kMajorVersion, mNode.osMajVersion()),
                           ReadVersion(rows, kMinorVersion, mNode.osMinVersion()));
    ReadPoints(rows);
}

void NodeTable::ReadPoints(Recordset& rows)
{
    const bool inputs = ReadEach(mNode.CDigitalInputs(), rows);
    const bool outputs = ReadEach(mNode.COutputs(), rows);
    if (!inputs || !outputs)
        TellLoadFailure();
}

void NodeTable::TellLoadFailure()
{
    if (mBoxes)
        mBoxes->MsgBox(QStringLiteral("An unexpected error has occurred while trying to load the information for "
                                      "Node %1")
                           .arg(mNode.number()),
                       QMessageBox::Warning, QMessageBox::Ok, QStringLiteral("Load System Database"));
}

}  // namespace fenrik
