-- The default command database, "ncCommand.dav", which is also what every saved system starts from.
-- Rows keep their order of insertion, so numbers are plain columns and no row identifiers.
PRAGMA user_version = 1;

CREATE TABLE Commands (Command INTEGER NOT NULL, Name TEXT NOT NULL, CategoryID INTEGER NOT NULL);
CREATE TABLE Categorys (CategoryID INTEGER NOT NULL, Name TEXT NOT NULL);
CREATE TABLE Market (MarketID INTEGER NOT NULL, MarketName TEXT NOT NULL);
CREATE TABLE MarketCategorys (MarketID INTEGER NOT NULL, CategoryID INTEGER NOT NULL);
CREATE TABLE SystemInfo (PropertyName TEXT, PropertyValue TEXT);

-- A number and a name stand for one command each: the composer finds a command by its name.
CREATE UNIQUE INDEX CommandNumbers ON Commands (Command);
CREATE UNIQUE INDEX CommandNames ON Commands (Name);
CREATE UNIQUE INDEX CategoryNumbers ON Categorys (CategoryID);

-- A subset of the commands for each market, by whole categories. Market 0 is part of every subset.
CREATE VIEW MrkCatCmdJoin AS
    SELECT MarketCategorys.MarketID AS MarketID, Commands.Command AS CommandID, Commands.Name AS CommandName,
           Categorys.Name AS CategoryName, Categorys.CategoryID AS CategoryID
    FROM Commands
    JOIN Categorys ON Categorys.CategoryID = Commands.CategoryID
    JOIN MarketCategorys ON MarketCategorys.CategoryID = Commands.CategoryID;

.import --csv --skip 1 Commands.csv Commands
.import --csv --skip 1 Categorys.csv Categorys
.import --csv --skip 1 Market.csv Market
.import --csv --skip 1 MarketCategorys.csv MarketCategorys
.import --csv --skip 1 SystemInfo.csv SystemInfo
