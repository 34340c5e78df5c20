#pragma once

#include "CatalogueFiles.h"
#include "catalogue/SystemList.h"

#include <QDir>
#include <QTemporaryDir>

namespace fenrik {

/// A program's folder with a default database, and room for systems there and elsewhere.
class SystemFolder {
public:
    SystemFolder()
    {
        QDir(mRoot.path()).mkpath("program");
        QDir(mRoot.path()).mkpath("stick");
        MakeDatabase(Program("ncCommand.dav"),
                     CatalogueStatements() + QStringList{"CREATE TABLE Market (MarketID INTEGER, MarketName TEXT)",
                                                         "INSERT INTO Market VALUES (0, 'All')",
                                                         "INSERT INTO Market VALUES (3, 'Truck')",
                                                         "INSERT INTO Market VALUES (1, 'Bus')"});
    }

    [[nodiscard]] QString ProgramFolder() const { return mRoot.filePath("program"); }
    [[nodiscard]] QString Program(const QString& name = {}) const { return ProgramFolder() + '/' + name; }
    [[nodiscard]] QString Stick(const QString& name = {}) const { return mRoot.filePath("stick") + '/' + name; }

    static void Database(const QString& path, const QStringList& more = {})
    {
        MakeDatabase(path, CatalogueStatements() + more);
    }
    static void Image(const QString& path, int size = SystemList::kImageSize)
    {
        MakeFile(path, QByteArray(size, '\3'));
    }

private:
    QTemporaryDir mRoot;
};

/// The rows of the table that tells a database's version.
inline QStringList VersionStatements(const char* version)
{
    return {"CREATE TABLE SystemInfo (PropertyName TEXT, PropertyValue TEXT)",
            QString("INSERT INTO SystemInfo VALUES ('Version', '%1')").arg(version)};
}

}  // namespace fenrik
