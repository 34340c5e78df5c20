#pragma once

#include "shared/CommandTable.h"

#include <QString>

#include <array>
#include <cstdint>

namespace fenrik {

class Graphics;

/// How an analog command's value is written.
struct AnalogFormat {
    bool Decimal = false;  ///< the value holds tenths
    QString scaled;        ///< "Positive", "Pounds", "Degree", or anything else for no symbol
};

/// The view of all analog values heard since the slots were freed: one row for each command, in the order in which the
/// commands were first heard, the name on the left and the value on the right.
class Analog {
public:
    static constexpr int kSlots = 33;

    /// Both outlive it.
    Analog(CommandTable& commands, Graphics& graphics) : mCommands(commands), mGraphics(graphics) {}

    /// Takes the formats from the table AnalogSymbolMaps (Name, Decimal, scaled) of the database at `path`: a row
    /// counts for every analog command of exactly that name. Call it after the command table was filled. Throws Error.
    void GetAnalogCommands(const QString& path);

    /// Frees all slots.
    void ResetAnalogSlots() { mSlots.fill(0); }

    /// Gives the command its slot and, with `draw`, draws its row. Without a free slot nothing is kept and the row
    /// below the last slot is drawn. 0 is ignored.
    void UpdateAnalog(int command, bool draw);

    /// Draws the rows of all slots in use.
    void RedrawAnalog();

    /// No value was heard yet.
    [[nodiscard]] bool Empty() const { return mSlots[0] == 0; }

    /// `data` as it is shown, taken as 16 bits with a sign.
    [[nodiscard]] static QString ValueText(std::int32_t data, const AnalogFormat& format);

private:
    [[nodiscard]] int SlotOf(int command);
    void DrawRow(int command, int row);

    CommandTable& mCommands;
    Graphics& mGraphics;
    std::array<AnalogFormat, CommandTable::kSize> mAnalogMap;
    std::array<std::int16_t, kSlots> mSlots{};
};

}  // namespace fenrik
