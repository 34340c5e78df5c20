-- What the character face and the panels need, "fxmaps.dav".
PRAGMA user_version = 1;

CREATE TABLE AnalogSymbolMaps (Name TEXT NOT NULL, Decimal INTEGER NOT NULL, scaled TEXT);
CREATE TABLE AsciiGraphicsMap (number INTEGER NOT NULL, char TEXT, xloc INTEGER NOT NULL, yloc INTEGER NOT NULL);

.import --csv --skip 1 AnalogSymbolMaps.csv AnalogSymbolMaps

-- The glyph sheets hold code page 437: 16 rows of 16 glyphs of 14 x 20 pixels without gaps. The text below is that
-- page from code 1 to 254; the codes 0 and 255 are blank and have no character.
WITH RECURSIVE
    page(characters) AS (SELECT
        '☺☻♥♦♣♠•◘○◙♂♀♪♫☼►◄↕‼¶§▬↨↑↓→←∟↔▲▼' ||
        ' !"#$%&''()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\]^_' ||
        '`abcdefghijklmnopqrstuvwxyz{|}~⌂' ||
        'ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐' ||
        '└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■'),
    code(number) AS (SELECT 0 UNION ALL SELECT number + 1 FROM code WHERE number < 255)
INSERT INTO AsciiGraphicsMap
    SELECT number, nullif(substr(characters, number, number BETWEEN 1 AND 254), ''),
           number % 16 * 14, number / 16 * 20
    FROM code, page;
