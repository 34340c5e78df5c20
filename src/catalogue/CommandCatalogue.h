#pragma once

#include "catalogue/CatalogueHost.h"
#include "catalogue/CommandDatabase.h"
#include "platform/Boxes.h"

#include <functional>

namespace fenrik {

class CommandTable;
class Recordset;
struct Settings;

/// Fills the command table from a command database, so that naming a message costs no database work.
class CommandCatalogue {
public:
    /// All references outlive the catalogue. `programFolder`, without a separator at its end, holds "ncCommand.dav".
    CommandCatalogue(CommandTable& table, const Settings& settings, Boxes& boxes, CatalogueHost& host,
                     const QString& programFolder);

    /// Reads the catalogue of the file `database`, which the system in use names, at start and whenever that file,
    /// the system or the market changes. What goes wrong is told in boxes; without any usable file the host ends
    /// the program. May be called again; the table is filled anew each time.
    void LoadCommands(const QString& database);

    /// Name of the category whose commands no list offers; empty if the database has none.
    [[nodiscard]] QString HiddenCategory() const { return mHiddenCategory; }

private:
    void ReadCatalogue(Database& database);
    void ReadRow(const Recordset& row);
    bool TellLostJoin(const Database& database);
    [[nodiscard]] QString CommandsQuery(bool hasMarkets) const;
    [[nodiscard]] static QString CategoryName(Database& database, int categoryId);

    void Step(const std::function<void()>& step);
    void ShowStatus(CatalogueStatus status);
    [[nodiscard]] QStringList WordsFor(CatalogueStatus status) const;
    void ShowUnexpectedError();
    [[nodiscard]] QString FileName() const;
    void ShowBox(const QStringList& lines, QMessageBox::Icon icon);

    CommandTable& mTable;
    const Settings& mSettings;
    Boxes& mBoxes;
    CatalogueHost& mHost;
    QString mProgramFolder;

    // Once a load ran without a system the market subset applies to every later load, also to one of a custom file.
    bool mDefaultDatabase = false;
    bool mErrorShown = false;
    QString mAnalogCategory;
    QString mHiddenCategory;
};

}  // namespace fenrik
