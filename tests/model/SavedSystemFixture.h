#pragma once

#include "OwnerRecorder.h"
#include "link/LinkFixture.h"
#include "model/CSystem.h"
#include "model/NodeImage.h"
#include "model/NodeLink.h"
#include "platform/Recordset.h"
#include "shared/Settings.h"
#include "support/BoxRecorder.h"
#include "support/DatabaseFile.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

namespace fenrik {

/// A system of three nodes with a program folder of its own, in which a small default database lies. The boxes are
/// recorded.
class SavedSystemTest : public LinkTest {
protected:
    SavedSystemTest()
    {
        settings.NodesInSystem = 3;
        MakeDatabase(File("ncCommand.dav"), kDefault);
        system.setLink(&link);
        system.LoadSystem({}, {}, false);
        owner.calls.clear();
    }

    [[nodiscard]] QString File(const QString& name) const { return folder.filePath(name); }

    CNode& Node(int number) { return *system.Node(number); }
    COutput& Output(int number) { return Node(2).COutputs()[number]; }
    CDigitalInput& Input(int number) { return Node(2).CDigitalInputs()[number]; }

    /// Node 2 is a known one with a name, two named points and a relationship.
    void LearnNode2()
    {
        Node(2).setTypeID(2);
        Node(2).setName(QStringLiteral("Rear"));
        Node(2).setOsMajVersion(3);
        Node(2).setOsMinVersion(14);
        Input(1).setName(QStringLiteral("Door"));
        Input(1).setOnState(18);
        Output(1).setName(QStringLiteral("Horn"));
        Output(1).setUsageCode(COutput::kByRelationship);
        Output(1).setRPN(QByteArray::fromHex("FE0100FF"));
    }

    /// Saves without asking whether, under that name.
    bool Save(const QString& name = QStringLiteral("Bus"))
    {
        boxes.inputs = {name};
        std::int32_t response = 6;
        return system.SaveSystem(response);
    }

    /// Loads what was saved as that name into the same system, which forgets everything before.
    void Load(const QString& name = QStringLiteral("Bus"), bool quickie = false)
    {
        system.LoadSystem(name, folder.path(), quickie);
    }

    /// The rows of a table, as "name=value" or "name" for a null.
    [[nodiscard]] QStringList Rows(const QString& table, const QString& name = QStringLiteral("Bus.dav")) const
    {
        const auto rows = Database::OpenDatabase(File(name), false, true)->OpenRecordset(table);
        QStringList texts;
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            const QVariant value = rows->Fields("PropertyValue");
            texts.append(rows->Fields("PropertyName").toString() + (value.isNull() ? "" : "=" + value.toString()));
        }
        return texts;
    }

    /// Runs statements on a saved file.
    void Change(const QStringList& statements, const QString& name = QStringLiteral("Bus.dav")) const
    {
        const auto database = Database::OpenDatabase(File(name), false, false);
        for (const QString& statement : statements)
            database->Execute(statement);
    }

    [[nodiscard]] static QByteArray BytesOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// What lies in the program's folder, hidden files too.
    [[nodiscard]] QStringList Files() const
    {
        return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    inline static const QStringList kDefault{"CREATE TABLE Commands (Command INTEGER, Name TEXT, CategoryID INTEGER)",
                                             "CREATE TABLE Categorys (CategoryID INTEGER, Name TEXT)",
                                             "INSERT INTO Commands VALUES (256, 'Horn', 1)",
                                             "INSERT INTO Categorys VALUES (1, 'Body')"};

    QTemporaryDir folder;
    BoxRecorder boxes;
    Settings settings;
    OwnerRecorder owner;
    CSystem system{settings, folder.path(), &owner};
    NodeLink link{handler, pump, commands, boxes, errors, nullptr};
};

}  // namespace fenrik
