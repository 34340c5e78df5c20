-- The structure of the special commands, "SpecialCommands.dav".
PRAGMA user_version = 1;

CREATE TABLE Version (Version TEXT NOT NULL);
CREATE TABLE General (Command INTEGER NOT NULL, CodeMask INTEGER NOT NULL, CodeShift INTEGER NOT NULL,
                      NodeMask INTEGER, NodeShift INTEGER, "Text Seperator" TEXT, "Requires Mount" INTEGER NOT NULL);
CREATE TABLE Defaults (Command INTEGER NOT NULL, State INTEGER, extended INTEGER, Extra TEXT, Icon TEXT);
CREATE TABLE Details (Command INTEGER NOT NULL, Name TEXT NOT NULL, Code INTEGER NOT NULL, State INTEGER,
                      extended INTEGER, Extra TEXT, Icon TEXT);

INSERT INTO Version VALUES ('1.1');
.import --csv --skip 1 General.csv General
.import --csv --skip 1 Defaults.csv Defaults
.import --csv --skip 1 Details.csv Details

-- What the lists leave empty is null, which stands for the default of the command.
UPDATE General SET NodeMask = nullif(NodeMask, ''), NodeShift = nullif(NodeShift, '');
UPDATE Details SET State = nullif(State, ''), extended = nullif(extended, ''), Extra = nullif(Extra, ''),
                   Icon = nullif(Icon, '');
