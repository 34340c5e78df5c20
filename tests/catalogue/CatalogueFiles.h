#pragma once

#include "support/DatabaseFile.h"

namespace fenrik {

/// The two tables of a command database, with the analog and the hidden category and one more.
inline QStringList CategoryStatements()
{
    return {"CREATE TABLE Commands (Command INTEGER, Name TEXT, CategoryID INTEGER)",
            "CREATE TABLE Categorys (CategoryID INTEGER, Name TEXT)", "INSERT INTO Categorys VALUES (1, 'Lamps')",
            "INSERT INTO Categorys VALUES (9, 'Gauges')", "INSERT INTO Categorys VALUES (99, 'Secret')"};
}

/// A command database whose command 12 is named `lampName`; 300 is analog.
inline QStringList CatalogueStatements(const char* lampName = "Head Lamp")
{
    return CategoryStatements() + QStringList{QString("INSERT INTO Commands VALUES (12, '%1', 1)").arg(lampName),
                                              "INSERT INTO Commands VALUES (300, 'Battery', 9)",
                                              "INSERT INTO Commands VALUES (1016, 'Probe', 99)"};
}

/// What makes a catalogue one with markets: command 21 is in market 0, 22 in market 2 and 23 in market 3.
inline QStringList MarketStatements()
{
    return {"CREATE TABLE Market (MarketID INTEGER, MarketName TEXT)",
            "CREATE TABLE MrkCatCmdJoin (MarketID INTEGER, CommandID INTEGER, CommandName TEXT, CategoryName TEXT, "
            "CategoryID INTEGER)",
            "INSERT INTO MrkCatCmdJoin VALUES (3, 23, 'Three', 'Lamps', 1)",
            "INSERT INTO MrkCatCmdJoin VALUES (0, 21, 'Always', 'Secret', 99)",
            "INSERT INTO MrkCatCmdJoin VALUES (2, 22, 'Two', 'Gauges', 9)"};
}

}  // namespace fenrik
