#pragma once

#include <QString>

#include <array>
#include <cstdint>

namespace fenrik {

/// Where the glyph of each character code lies in the two sheets, in pixels at scale 1.
struct AsciiMap {
    struct Entry {
        QString character = QStringLiteral(" ");
        std::int32_t xloc = 0;
        std::int32_t yloc = 0;
    };

    std::array<Entry, 256> entries;
};

/// Fills `map` from the table AsciiGraphicsMap of the database at `path`; a code without a row keeps its entry.
/// Throws Error: what the database reports, 9 for a number outside 0 to 255, 13 for a field that is no whole number, 6
/// for a place that is too large.
void PopulateAsciiMaps(AsciiMap& map, const QString& path);

}  // namespace fenrik
