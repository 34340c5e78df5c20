-- A system database of the older network, for the simulated vehicle of fenrik-vehicle --legacy.
-- Every number has its row, those of the tokens too: the tool warns of a table that is shorter.
PRAGMA user_version = 1;

CREATE TABLE System (message INTEGER NOT NULL, name TEXT, description TEXT, "Ignore" INTEGER, Divisor INTEGER);
CREATE TABLE Info (SystemName TEXT, DateCreated TEXT, CreatedBy TEXT);

.import --csv --skip 1 System.csv System
.import --csv --skip 1 Info.csv Info
